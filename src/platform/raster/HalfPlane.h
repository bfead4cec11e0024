// Half-planes in integers: the edges that pieces of strokes are cut by.
//
// A half-plane is a X + b Y + c, in 1/256 px along its steeper axis: the larger of |a|, |b| is 256,
// so that one pixel along that axis is a step of 256. The value at a pixel's centre, brought to
// 0 .. 255, is the pixel's coverage by the half-plane.
#pragma once

#include <cstdint>

namespace raster {

inline constexpr int kHalfPlaneUnit = 256;
inline constexpr int kOnEdge = kHalfPlaneUnit / 2;  // the value where half of a pixel is covered

// `Int` is one number or a vector of them.
template <class Int>
struct BasicHalfPlane {
  Int a, b, c;
};
using HalfPlane = BasicHalfPlane<std::int32_t>;

}  // namespace raster
