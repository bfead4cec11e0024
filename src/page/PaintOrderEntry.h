#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class Annotation;

// One place in a page's painting order, for as long as the page lives. A mark that lost its points
// and got a first fragment again has one more.
struct PaintOrderEntry {
  std::int32_t order;  // the annotation's `order` when the entry was made
  std::string userId;
  std::string userSubId;
  std::string annotationId;
  // The confirmed mark of that author and id, which its page never lets go.
  Annotation* annotation;
  // What the page that owns the entry says of it: how many there were before it, and the mark's own
  // entry before it, or null.
  std::size_t number = 0;
  const PaintOrderEntry* earlier = nullptr;

  bool IsAbove(const PaintOrderEntry& other) const {
    return order != other.order ? order > other.order : number > other.number;
  }
};
