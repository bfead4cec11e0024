// Hit tests of plain shapes, in pixels, defined for every coordinate.
#pragma once

#include <cstdint>

#include <parchlet/Platform.h>

// The farthest coordinate of a box from 0, and the sum of its extents.
std::int64_t Farthest(const RECT& box);
std::int64_t Extents(const RECT& box);

// Crossings of segments are computed in single precision (e = 2^-24). For coordinates up to C and
// slopes up to k1 and k2 the error of a crossing, seen across the lines, stays below 9 e C (k1 + k2
// + 1), and a slope between integer points is at most the segment's extent. Two segments whose
// boxes lie farther apart than this cannot be found crossing: nothing is lost by not asking.
// `extents` is the sum of both boxes' extents. Holds where coordinates are exact in single
// precision: up to kFarthestExact.
inline std::int64_t CrossingMargin(std::int64_t farthest, std::int64_t extents) {
  return 1 + ((farthest * (extents + 1)) >> 20);
}
inline constexpr LONG kFarthestExact = 1 << 20;

inline constexpr RECT kEverywhere = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};

// The box that a segment's box must meet to be found crossing an eraser segment with the box
// `eraser`. `farthest` and `extents` are the greatest of all the segments that are asked about.
RECT CrossableArea(const RECT& eraser, std::int64_t farthest, std::int64_t extents);

// Whether the point lies in the box, ends included, widened by `margin` on every side.
bool IsInBox(POINT point, const RECT& box, int margin);
// Whether the second box lies in the first one, ends included.
bool Contains(const RECT& outer, const RECT& inner);

// Whether the segment from-to crosses a side: of the box with these opposite corners; of the
// diamond between the middles of its sides; of the triangle drawn in a box (apex at the middle of
// the top edge, or, with a right angle, at its left end).
bool CrossesBox(POINT from, POINT to, POINT corner, POINT opposite);
bool CrossesDiamond(POINT from, POINT to, POINT corner, POINT opposite);
bool CrossesTriangle(POINT from, POINT to, const RECT& box, bool isRight);

// Whether the point lies in the ellipse inscribed in the box widened by `half` on every side. With
// whole semi-axes a >= b: dx^2 / a^2 + dy^2 / b^2 <= 1. One without a height or width holds no
// point.
bool IsInEllipse(POINT point, const RECT& box, int half);
// Whether the point lies in the triangle drawn in the box widened by `half`, by its barycentric
// weights, in single precision. One without an area holds no point.
bool IsInTriangle(POINT point, const RECT& box, int half, bool isRight);
