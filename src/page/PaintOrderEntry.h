#pragma once

#include <cstdint>
#include <string>

// One place in a page's painting order. It names its annotation instead of pointing at it: painting
// and hit-testing look it up anew and skip what they do not find.
struct PaintOrderEntry {
  std::int32_t order;  // the annotation's `order` when the entry was made
  std::string userId;
  std::string userSubId;
  std::string annotationId;
};
