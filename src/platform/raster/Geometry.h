// Points, rectangles and pixel memory, as the canvas and the rasterizer use them. Coordinates are
// pixels; integer coordinates name pixel centres.
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

// The pixels left .. right-1, top .. bottom-1; of a shape that is stroked, its edges. May lie
// anywhere.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  // The pixels x .. x+width-1, y .. y+height-1. A far edge outside the range of int is moved to the
  // end of that range, far past any surface.
  static PixelRect OfSize(int x, int y, int width, int height) {
    const auto edge = [](int start, int extent) {
      return static_cast<int>(
          std::clamp<std::int64_t>(std::int64_t{start} + extent, INT32_MIN, INT32_MAX));
    };
    return {x, y, edge(x, width), edge(y, height)};
  }

  bool IsEmpty() const { return left >= right || top >= bottom; }
  std::int64_t Width() const { return std::int64_t{right} - left; }
  std::int64_t Height() const { return std::int64_t{bottom} - top; }

  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

inline PixelRect Unite(const PixelRect& a, const PixelRect& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

// Pixels to paint on: premultiplied 0xAARRGGBB, top row first; at most 32767 pixels a side.
struct PixelSurface {
  std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t stride = 0;  // pixels from one row to the next

  PixelRect Bounds() const { return {0, 0, width, height}; }
  std::uint32_t* Row(int y) const { return pixels + y * stride; }
};

// Pixels to draw from: premultiplied 0xAARRGGBB, top row first, no gap between rows.
struct PixelSource {
  const std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;

  PixelRect Bounds() const { return {0, 0, width, height}; }
};

}  // namespace raster
