// Comparing and printing the interface's plain records.
#pragma once

#include <ostream>

#include <parchlet/AnnotationTypes.h>

bool operator==(const RECT& a, const RECT& b);
void PrintTo(const RECT& rect, std::ostream* out);
bool operator==(const AnnotationPoint& a, const AnnotationPoint& b);
void PrintTo(const AnnotationPoint& point, std::ostream* out);
