// Fragments.h - a mark as the messages that carry it to another participant.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <parchlet/Annotation.h>

namespace replay {

// What one message carries; shared by the copies of a message, and never handed to an engine
// itself.
using Fragment = std::shared_ptr<const Annotation>;

inline constexpr std::size_t kMaxFragmentPoints = 256;

// Takes a mark, which has at least one point, apart: fragment k has the mark's identity and style,
// `order`, the sub-model index k, and its share of the points in its own sub-model 0. Only a path
// becomes more than one. A mark that came in fragments itself, all of them, gives the same again.
std::vector<Fragment> Split(const Annotation& mark, int order);

}  // namespace replay
