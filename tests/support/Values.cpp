#include "support/Values.h"

bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

void PrintTo(const RECT& rect, std::ostream* out) {
  *out << "{" << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom << "}";
}

bool operator==(const AnnotationPoint& a, const AnnotationPoint& b) {
  return a.x == b.x && a.y == b.y && a.xRatio == b.xRatio && a.yRatio == b.yRatio;
}

void PrintTo(const AnnotationPoint& point, std::ostream* out) {
  *out << "(" << point.x << ", " << point.y << " = " << point.xRatio << ", " << point.yRatio << ")";
}
