// Area.h - rectangles as X11 takes them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <parchlet/Platform.h>

inline bool IsEmptyArea(const RECT& area) {
  return area.left >= area.right || area.top >= area.bottom;
}

inline RECT Intersect(const RECT& a, const RECT& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

// Returns whether the corners fit X11's 16 bits; the sides then do too.
inline bool FitsX11(const RECT& area) {
  const auto fits = [](LONG low, LONG high) { return low >= INT16_MIN && high <= INT16_MAX; };
  return fits(area.left, area.right) && fits(area.top, area.bottom);
}

// Sides and pixels of an area that is not empty and fits X11.
inline std::uint16_t WidthOf(const RECT& area) {
  return static_cast<std::uint16_t>(area.right - area.left);
}

inline std::uint16_t HeightOf(const RECT& area) {
  return static_cast<std::uint16_t>(area.bottom - area.top);
}

inline std::size_t PixelsOf(const RECT& area) {
  return std::size_t{WidthOf(area)} * HeightOf(area);
}
