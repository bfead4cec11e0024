// The truth that painted strokes are measured against: the union of every segment's rectangle and
// every joint's mitre or bevel, measured along 16 lines a pixel. Slow and obvious.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/graphics/raster/Geometry.h"

namespace exact {

struct Corner {
  double x = 0;
  double y = 0;

  bool operator==(const Corner&) const = default;
};

using Polygon = std::vector<Corner>;  // convex

// What a stroke with flat caps, mitred joins up to 10 times the pen's width and bevels past that
// covers.
std::vector<Polygon> StrokePolygons(const std::vector<Corner>& points, bool closed, double width);

// The share of every pixel that the union of `polygons` covers, 0 to 1, row by row.
std::vector<double> Coverage(std::span<const Polygon> polygons, int width, int height);

// A page in exact colours: channels blue, green, red, alpha, premultiplied, 0 to 255.
class Canvas {
 public:
  Canvas(int width, int height, std::uint32_t argb);

  // Blends a colour that is not premultiplied over the page.
  void Blend(std::span<const double> coverage, std::uint32_t argb);

  int Width() const { return width; }
  int Height() const { return height; }
  const std::array<double, 4>& At(int x, int y) const { return pixels[Index(x, y)]; }
  bool IsTouched(int x, int y) const { return touched[Index(x, y)] != 0; }

 private:
  std::size_t Index(int x, int y) const { return static_cast<std::size_t>(y) * width + x; }

  int width, height;
  std::vector<std::array<double, 4>> pixels;
  std::vector<char> touched;
};

// How far painted pixels are from the truth, over the pixels that any mark covers.
struct Error {
  double mean = 0;      // levels a colour channel
  double farShare = 0;  // of the pixels, with a channel off by more than 32 levels
  double worst = 0;
};

Error Compare(const Canvas& truth, const raster::PixelSurface& painted);

}  // namespace exact
