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

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
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
