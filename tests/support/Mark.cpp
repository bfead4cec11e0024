#include "support/Mark.h"

#include "annotation/PixelMath.h"

std::vector<AnnotationPoint> PointsOn(CurrentAnnotPageSize size, const std::vector<POINT>& pixels) {
  std::vector<AnnotationPoint> points;
  points.reserve(pixels.size());
  for (const POINT& pixel : pixels) {
    points.push_back(PagePoint(pixel, size));
  }
  return points;
}
