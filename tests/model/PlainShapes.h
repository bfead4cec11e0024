// Where a mark with two points or more is hit: every question is put to every segment.
#pragma once

#include "model/PlainMark.h"

struct PlainLine {
  POINT a, b;
};

// By single-precision arithmetic on the lines y = k x + d, or x = m y + d when one is vertical.
bool DoCross(const PlainLine& p, const PlainLine& q);
// By the sum of the distances to both ends.
bool IsOnLine(POINT at, const PlainLine& line, int width);

POINT PixelAt(const AnnotationPoint& point);
// Edges included.
bool IsWithinBox(POINT at, const RECT& box);
bool IsPlainlyTouched(const PlainMark& mark, POINT from, POINT to);
bool IsPlainlyHit(const PlainMark& mark, POINT at);
