#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include <parchlet/Annotation.h>
#include <parchlet/Utils.h>

#include "annotation/HitShapes.h"
#include "annotation/PixelMath.h"
#include "annotation/ReachTable.h"

namespace {

constexpr int kMaxPenWidth = 30;

int ClampedWidth(const AnnotationPen& pen) {
  return std::clamp(pen.width, 1, kMaxPenWidth);
}

int HalfWidth(const AnnotationPen& pen) {
  return static_cast<int>(static_cast<float>(ClampedWidth(pen)) * 0.5F);
}

POINT PixelAt(const AnnotationPoint& point) {
  return {point.x, point.y};
}

std::int64_t Farthest(const RECT& box) {
  const auto distance = [](LONG value) { return std::abs(std::int64_t{value}); };
  return std::max(
      {distance(box.left), distance(box.top), distance(box.right), distance(box.bottom)});
}

// Whether segments in these two boxes are too far apart to be found crossing.
bool CannotCross(const RECT& a, const RECT& b) {
  const std::int64_t farthest = std::max(Farthest(a), Farthest(b));
  if (farthest > kFarthestTabled) {
    return false;
  }
  const std::int64_t extents =
      std::int64_t{a.right} - a.left + a.bottom - a.top + b.right - b.left + b.bottom - b.top;
  const std::int64_t margin = CrossingMargin(farthest, extents);
  return a.left - margin > b.right || b.left - margin > a.right || a.top - margin > b.bottom ||
         b.top - margin > a.bottom;
}

// Asks `hits` about every two neighbours of every connected sub-model; the joins between sub-models
// are not part of it.
template <class Hits>
int AnySegment(const Annotation::SubModels& points, const Hits& hits) {
  unsigned int next = 0;
  for (const auto& [number, list] : points) {
    if (number != next) {
      break;
    }
    ++next;
    for (std::size_t i = 1; i < list.size(); ++i) {
      if (hits(PixelAt(list[i - 1]), PixelAt(list[i]))) {
        return 1;
      }
    }
  }
  return 0;
}

}  // namespace

int Annotation::FindAnnotation(const AnnotationPoint& p1, const AnnotationPoint& p2) const {
  MutexLock lock(mutex);
  if (!HasTwoPoints()) {
    return 0;
  }
  return type == AnnotationTypePicture ? FindPictureAnnotation(PixelAt(p1), PixelAt(p2))
                                       : FindShapeAnnotation(PixelAt(p1), PixelAt(p2));
}

int Annotation::FindAnnotation(const AnnotationPoint& p, bool useFrame) const {
  MutexLock lock(mutex);
  if (!HasTwoPoints()) {
    return 0;
  }
  return type == AnnotationTypePicture ? FindPictureAnnotation(PixelAt(p), useFrame)
                                       : FindShapeAnnotation(PixelAt(p), useFrame);
}

POINT Annotation::FirstPixel() const {
  return PixelAt(points.find(0)->second[0]);
}

POINT Annotation::SecondPixel() const {
  return PixelAt(points.find(0)->second[1]);
}

int Annotation::IsPointInRectEx(POINT point) const {
  return IsInBox(point, frame, 0) ? 1 : 0;
}

int Annotation::FindShapeAnnotation(POINT from, POINT to) const {
  switch (subType) {
    case AnnotationSubTypeLine:
      return FindLine(from, to);
    case AnnotationSubTypeEllipse:
      return FindEllipse(from, to);
    case AnnotationSubTypeRectangle:
      return FindRectangle(from, to);
    case AnnotationSubTypeTriangle:
    case AnnotationSubTypeRightTriangle:
      return FindTriangle(from, to);
    default:
      return FindPath(from, to);
  }
}

int Annotation::FindShapeAnnotation(POINT at, bool useFrame) const {
  if (useFrame) {
    return IsPointInRectEx(at);
  }
  switch (subType) {
    case AnnotationSubTypeLine:
      return FindLine(at);
    case AnnotationSubTypeEllipse:
      return FindEllipse(at);
    case AnnotationSubTypeRectangle:
      return FindRectangle(at);
    case AnnotationSubTypeTriangle:
    case AnnotationSubTypeRightTriangle:
      return FindTriangle(at);
    default:
      return FindPath(at);
  }
}

int Annotation::FindPictureAnnotation(POINT from, POINT to) const {
  return CrossesBox(from, to, FirstPixel(), SecondPixel()) ? 1 : 0;
}

int Annotation::FindPictureAnnotation(POINT at, bool useFrame) const {
  if (useFrame) {
    return IsPointInRectEx(at);
  }
  return IsInBox(at, BoxOf(FirstPixel(), SecondPixel()), 0) ? 1 : 0;
}

int Annotation::FindLine(POINT from, POINT to) const {
  return Utils::IsLineIntersect(from, to, FirstPixel(), SecondPixel()) ? 1 : 0;
}

int Annotation::FindLine(POINT at) const {
  return Utils::IsPointOnLine(at, FirstPixel(), SecondPixel(), ClampedWidth(pen)) ? 1 : 0;
}

int Annotation::FindEllipse(POINT from, POINT to) const {
  return CrossesDiamond(from, to, FirstPixel(), SecondPixel()) || FindEllipse(to) != 0 ||
                 FindEllipse(from) != 0
             ? 1
             : 0;
}

int Annotation::FindEllipse(POINT at) const {
  return IsInEllipse(at, BoxOf(FirstPixel(), SecondPixel()), HalfWidth(pen)) ? 1 : 0;
}

int Annotation::FindRectangle(POINT from, POINT to) const {
  return CrossesBox(from, to, FirstPixel(), SecondPixel()) ? 1 : 0;
}

int Annotation::FindRectangle(POINT at) const {
  return IsInBox(at, BoxOf(FirstPixel(), SecondPixel()), HalfWidth(pen)) ? 1 : 0;
}

int Annotation::FindTriangle(POINT from, POINT to) const {
  const RECT box = BoxOf(FirstPixel(), SecondPixel());
  return CrossesTriangle(from, to, box, subType == AnnotationSubTypeRightTriangle) ? 1 : 0;
}

int Annotation::FindTriangle(POINT at) const {
  const RECT box = BoxOf(FirstPixel(), SecondPixel());
  const bool isRight = subType == AnnotationSubTypeRightTriangle;
  return IsInTriangle(at, box, HalfWidth(pen), isRight) ? 1 : 0;
}

int Annotation::FindPath(POINT from, POINT to) const {
  if (CannotCross(BoxOf(from, to), pixelBox)) {
    return 0;
  }
  return AnySegment(points,
                    [&](POINT a, POINT b) { return Utils::IsLineIntersect(from, to, a, b); });
}

int Annotation::FindPath(POINT at) const {
  const int width = ClampedWidth(pen);
  if (!IsInBox(at, pixelBox, HalfWidth(pen))) {
    return 0;
  }
  return AnySegment(points,
                    [&](POINT a, POINT b) { return Utils::IsPointOnLine(at, a, b, width); });
}

int Annotation::IsInSelectRect(const RECT& rect) const {
  if (IsErased() == 1) {
    return 0;
  }
  MutexLock lock(mutex);
  if (!HasTwoPoints()) {
    return 0;
  }
  const RECT normal = BoxOf({rect.left, rect.top}, {rect.right, rect.bottom});
  return type == AnnotationTypePicture ? IsPictureInSelectRect(normal)
                                       : IsShapeInSelectRect(normal);
}

int Annotation::IsShapeInSelectRect(const RECT& rect) const {
  const RECT box = subType == AnnotationSubTypePath ? pixelBox : BoxOf(FirstPixel(), SecondPixel());
  return Contains(rect, box) ? 1 : 0;
}

int Annotation::IsPictureInSelectRect(const RECT& rect) const {
  return Contains(rect, BoxOf(FirstPixel(), SecondPixel())) ? 1 : 0;
}
