// Arithmetic of screen areas. They come from hosts, so any four numbers are legal.
#pragma once

#include <algorithm>
#include <cstdint>

#include <parchlet/Platform.h>

inline std::int64_t WidthOf(const RECT& area) {
  return std::int64_t{area.right} - area.left;
}

inline std::int64_t HeightOf(const RECT& area) {
  return std::int64_t{area.bottom} - area.top;
}

inline bool IsEmptyArea(const RECT& area) {
  return area.left >= area.right || area.top >= area.bottom;
}

// Returns the common part; empty if there is none.
inline RECT Intersect(const RECT& a, const RECT& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

// Returns the index of the screen's pixel (x, y) among the pixels of `area`, row by row.
inline std::size_t OffsetIn(const RECT& area, LONG x, LONG y) {
  return static_cast<std::size_t>((std::int64_t{y} - area.top) * WidthOf(area) +
                                  (std::int64_t{x} - area.left));
}
