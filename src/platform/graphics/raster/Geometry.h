// What the rasterizer measures in: pixels, whose centres lie on the integer grid.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace raster {

struct GridPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;

  friend bool operator==(const GridPoint&, const GridPoint&) = default;
};

// The pixels left .. right-1, top .. bottom-1.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  bool IsEmpty() const { return left >= right || top >= bottom; }
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }

  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// A long line is looked at in parts of this many segments.
inline constexpr std::size_t kPartSegments = 16;

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

inline PixelRect Unite(const PixelRect& a, const PixelRect& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

// The nearest whole number, halves to even, as vectors round; below 2^51.
inline double Rounded(double value) {
  constexpr double kWhole = 6755399441055744.0;  // 1.5 * 2^52: a sum with it has no fraction left
  return (value + kWhole) - kWhole;
}

// Nothing further from the surface than this matters, the longest mitre of the widest pen included.
inline constexpr int kGuard = 512;

// Whether all of a box lies on the surface or so near that it may matter.
inline bool IsNear(const GridPoint& low, const GridPoint& high, const PixelRect& bounds) {
  return low.x >= bounds.left - kGuard && low.y >= bounds.top - kGuard &&
         high.x <= bounds.right + kGuard && high.y <= bounds.bottom + kGuard;
}

// Premultiplied 0xAARRGGBB, top row first; at most 32767 pixels a side.
struct PixelSurface {
  std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t stride = 0;  // pixels from one row to the next

  PixelRect Bounds() const { return {0, 0, width, height}; }
  std::uint32_t* Row(int y) const { return pixels + y * stride; }
};

}  // namespace raster
