// Where a mark with two points or more is hit: every question is put to every segment.
#pragma once

#include "model/PlainMark.h"

POINT PixelAt(const AnnotationPoint& point);
// Edges included.
bool IsWithinBox(POINT at, const RECT& box);
bool IsPlainlyTouched(const PlainMark& mark, POINT from, POINT to);
bool IsPlainlyHit(const PlainMark& mark, POINT at);
