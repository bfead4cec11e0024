// Workload.h - pages full of marks to measure with, the same on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/AnnotationTypes.h>
#include <parchlet/Platform.h>

#include "platform/image/Picture.h"

struct BenchMark {
  AnnotationSubType kind;
  std::uint32_t color;  // 0xAARRGGBB
  int width;            // pixels
  std::vector<POINT> points;
  std::shared_ptr<const Picture> picture = nullptr;  // instead of ink; the points are its corners
};

struct Workload {
  std::string name;
  int width;  // pixels of the page
  int height;
  std::vector<BenchMark> marks;

  std::size_t PointCount() const;
};

// What a page of free-hand paths is made of.
struct PathStyle {
  std::size_t pathCount;
  std::size_t pointCount;  // of each path
  int penWidth;
  std::uint32_t alpha;  // 0 to 255
};

// Free-hand paths all over the page: steps of 2 to 6 pixels, a smoothly turning heading, a few
// sharp turns. Colours and places depend on nothing but the arguments.
Workload MakePaths(const std::string& name, int width, int height, const PathStyle& style);

// `count` lines, ellipses, rectangles and triangles in turn, in boxes of 50 to 400 pixels a side.
Workload MakeShapes(const std::string& name, int width, int height, std::size_t count,
                    int penWidth);

// Paths that no hand draws: zigzags, U-turns and gentle bends in turn, steps of 0.4 to 45 pixels,
// pens of 1 to 30.
Workload MakeTorture(const std::string& name, int width, int height, std::size_t pathCount);

// `count` half-transparent pictures of 400 x 300 pixels, stretched to 600 x 400.
Workload MakePictures(const std::string& name, int width, int height, std::size_t count);
