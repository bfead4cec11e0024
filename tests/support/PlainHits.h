// Hit tests without any short cut, for comparison: every question is put to every point.
#pragma once

#include <parchlet/Annotation.h>

// By single-precision arithmetic on the lines y = k x + d, or x = m y + d when one is vertical.
bool PlainlyCross(POINT a1, POINT a2, POINT b1, POINT b2);
// By the sum of the distances to both ends.
bool PlainlyOnLine(POINT p, POINT a, POINT b, int width);

// What Annotation's functions of the like names answer for a mark with the stored pixels, the kind
// and the pen of `mark`.
bool PlainlyTouches(const Annotation& mark, POINT from, POINT to);
bool PlainlyHits(const Annotation& mark, POINT at);
bool PlainlyFramed(const Annotation& mark, POINT at);
bool PlainlyInside(const Annotation& mark, const RECT& rect);
