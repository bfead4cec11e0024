#include <algorithm>
#include <cstdlib>
#include <utility>

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

// The box that a segment's box must meet to be found crossing a segment within `eraser`; the
// segment itself lies within `mark`.
RECT CrossableArea(const RECT& eraser, const RECT& mark) {
  const std::int64_t farthest = std::max(Farthest(eraser), Farthest(mark));
  if (farthest > kFarthestTabled) {
    return ReachTable::kEverywhere;
  }
  const std::int64_t extents = std::int64_t{eraser.right} - eraser.left + eraser.bottom -
                               eraser.top + mark.right - mark.left + mark.bottom - mark.top;
  const auto margin = static_cast<LONG>(CrossingMargin(farthest, extents));
  return {eraser.left - margin, eraser.top - margin, eraser.right + margin, eraser.bottom + margin};
}

bool DoMeet(const RECT& a, const RECT& b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

constexpr std::size_t kSegmentsABox = 16;

// Calls `visit` with every connected sub-model's points until it gives true.
template <class Visit>
bool AnyConnected(const Annotation::SubModels& points, const Visit& visit) {
  unsigned int next = 0;
  for (const auto& [number, list] : points) {
    if (number != next) {
      return false;
    }
    ++next;
    if (visit(list)) {
      return true;
    }
  }
  return false;
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

void Annotation::FillSegmentBoxes() const {
  std::vector<RECT> boxes;
  AnyConnected(points, [&boxes](const std::vector<AnnotationPoint>& list) {
    for (std::size_t start = 0; start + 1 < list.size(); start += kSegmentsABox) {
      const std::size_t last = std::min(start + kSegmentsABox, list.size() - 1);
      RECT box = kNoBox;
      for (std::size_t i = start; i <= last; ++i) {
        Extend(box, PixelAt(list[i]));
      }
      boxes.push_back(box);
    }
    return false;
  });
  segmentBoxes = std::move(boxes);
}

// The joins between sub-models are no segments.
template <class Hits>
int Annotation::AnySegment(const RECT& area, const Hits& hits) const {
  if (!DoMeet(area, PixelBox())) {
    return 0;
  }
  if (segmentBoxes.empty()) {
    FillSegmentBoxes();
  }
  auto box = segmentBoxes.begin();
  const bool isHit = AnyConnected(points, [&](const std::vector<AnnotationPoint>& list) {
    for (std::size_t start = 0; start + 1 < list.size(); start += kSegmentsABox) {
      if (!DoMeet(area, *box++)) {
        continue;
      }
      const std::size_t last = std::min(start + kSegmentsABox, list.size() - 1);
      for (std::size_t i = start; i < last; ++i) {
        if (hits(PixelAt(list[i]), PixelAt(list[i + 1]))) {
          return true;
        }
      }
    }
    return false;
  });
  return isHit ? 1 : 0;
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
  const RECT area = CrossableArea(BoxOf(from, to), PixelBox());
  return AnySegment(area, [&](POINT a, POINT b) {
    return DoMeet(area, BoxOf(a, b)) && Utils::IsLineIntersect(from, to, a, b);
  });
}

int Annotation::FindPath(POINT at) const {
  const int width = ClampedWidth(pen);
  const int half = HalfWidth(pen);
  const RECT area = {
      SaturatingPixel(std::int64_t{at.x} - half), SaturatingPixel(std::int64_t{at.y} - half),
      SaturatingPixel(std::int64_t{at.x} + half), SaturatingPixel(std::int64_t{at.y} + half)};
  return AnySegment(area, [&](POINT a, POINT b) { return Utils::IsPointOnLine(at, a, b, width); });
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
  const RECT box =
      subType == AnnotationSubTypePath ? PixelBox() : BoxOf(FirstPixel(), SecondPixel());
  return Contains(rect, box) ? 1 : 0;
}

int Annotation::IsPictureInSelectRect(const RECT& rect) const {
  return Contains(rect, BoxOf(FirstPixel(), SecondPixel())) ? 1 : 0;
}
