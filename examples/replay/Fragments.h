// Fragments.h - a mark as the messages that carry it to another participant.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Parchlet.h>

#include "PictureFile.h"

namespace replay {

// A mark or a part of it; shared by the copies of a message, and never handed to an engine itself.
using Fragment = std::shared_ptr<const Annotation>;

inline constexpr std::size_t kMaxFragmentPoints = 256;

// What goes from one participant to another.
struct Message {
  Fragment fragment;
  PictureBytes picture;  // of a picture that is new to the page, else null
};

// Takes a mark, which has at least one point, apart: fragment k has the mark's identity and style,
// `order`, the sub-model index k, and its share of the points in its own sub-model 0. Only a path
// becomes more than one. A mark that came in fragments itself, all of them, gives the same again.
std::vector<Fragment> Split(const Annotation& mark, int order);

// Whether the page has the mark, or a part of it, already, be it pending or confirmed.
bool IsKnown(Parchlet& engine, const std::string& docId, const std::string& pageId,
             const Annotation& mark);

// Hands a mark that arrived to the page, which owns it from then on when it is new there. False
// when the engine refuses it.
bool HandOver(Parchlet& engine, const std::string& docId, const std::string& pageId,
              std::unique_ptr<Annotation> mark);

}  // namespace replay
