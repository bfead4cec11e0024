// Hit tests of plain shapes, in pixels, defined for every coordinate.
#pragma once

#include <parchlet/Platform.h>

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
