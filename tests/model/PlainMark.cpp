#include "model/PlainMark.h"

#include <algorithm>
#include <limits>

#include <parchlet/Utils.h>

#include "annotation/PixelMath.h"

namespace {

void Convert(AnnotationPoint& point, CurrentAnnotPageSize size) {
  const POINT pixel = PixelOf(point, size);
  point.x = pixel.x;
  point.y = pixel.y;
}

void Widen(LONG& low, LONG& high) {
  if (std::int64_t{high} - low < 2) {
    low = low == std::numeric_limits<LONG>::min() ? low : low - 1;
    high = high == std::numeric_limits<LONG>::max() ? high : high + 1;
  }
}

// Whether `isHit` says yes to a connected segment.
template <class IsHit>
bool AnySegment(const PlainMark& mark, const IsHit& isHit) {
  for (unsigned number = 0; number < mark.ConnectedCount(); ++number) {
    const std::vector<AnnotationPoint>& list = mark.points.at(number);
    for (std::size_t i = 1; i < list.size(); ++i) {
      if (isHit(POINT{list[i - 1].x, list[i - 1].y}, POINT{list[i].x, list[i].y})) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

unsigned PlainMark::ConnectedCount() const {
  unsigned count = 0;
  while (points.contains(count)) {
    ++count;
  }
  return count;
}

bool PlainMark::IsPath() const {
  static constexpr int kShapes[] = {AnnotationSubTypeLine, AnnotationSubTypeEllipse,
                                    AnnotationSubTypeRectangle, AnnotationSubTypeTriangle,
                                    AnnotationSubTypeRightTriangle};
  return !IsPicture() &&
         std::find(std::begin(kShapes), std::end(kShapes), subType) == std::end(kShapes);
}

bool PlainMark::HasTwoPoints() const {
  return points.contains(0) && points.at(0).size() >= 2;
}

void PlainMark::AddPoint(const AnnotationPoint& point) {
  std::vector<AnnotationPoint>& list = points[0];
  if (!IsPath() && list.size() >= 2) {
    list[1] = point;
  } else {
    list.push_back(point);
  }
}

void PlainMark::Move(const AnnotationPoint& to) {
  const double dx = to.xRatio - origin.xRatio;
  const double dy = to.yRatio - origin.yRatio;
  origin = to;
  for (unsigned number = 0; number < ConnectedCount(); ++number) {
    for (AnnotationPoint& point : points.at(number)) {
      point.xRatio += dx;
      point.yRatio += dy;
    }
  }
}

void PlainMark::Renumber(unsigned subModel) {
  const std::vector<AnnotationPoint> list =
      points.contains(0) ? points.at(0) : std::vector<AnnotationPoint>();
  const bool hadNone = !points.contains(0);
  points.erase(0);
  if (!hadNone || !points.contains(subModel)) {
    points[subModel] = list;
  }
}

void PlainMark::TakeOver(const PlainMark& source) {
  PlainMark copy = source;
  copy.pictureProperty = pictureProperty;
  copy.tempStartTick = tempStartTick;
  copy.object = object;
  copy.isOwned = isOwned;
  for (auto& [number, list] : source.points) {
    if (number >= source.ConnectedCount() || list.empty()) {
      copy.points.erase(number);
    }
  }
  *this = copy;
}

void PlainMark::Draw(CurrentAnnotPageSize size) {
  if (!HasTwoPoints() || (IsPicture() && !hasPicture)) {
    return;
  }
  if (!IsPath()) {
    Convert(points.at(0)[0], size);
    Convert(points.at(0)[1], size);
    return;
  }
  for (unsigned number = 0; number < ConnectedCount(); ++number) {
    std::vector<AnnotationPoint>& list = points.at(number);
    if (list.size() == 1) {
      list.push_back(list[0]);
    }
    for (AnnotationPoint& point : list) {
      Convert(point, size);
    }
  }
}

bool PlainMark::UpdateFrame(CurrentAnnotPageSize size) {
  if (points.empty() || points[0].size() < 2) {
    return false;
  }
  std::vector<AnnotationPoint> counted(points[0].begin(), points[0].begin() + 2);
  if (subType == AnnotationSubTypePath) {
    for (const auto& [number, list] : points) {
      counted.insert(counted.end(), list.begin(), list.end());
    }
  }
  const POINT first = PixelOf(counted[0], size);
  frame = {first.x, first.y, first.x, first.y};
  for (const AnnotationPoint& point : counted) {
    const POINT pixel = PixelOf(point, size);
    frame = {std::min(frame.left, pixel.x), std::min(frame.top, pixel.y),
             std::max(frame.right, pixel.x), std::max(frame.bottom, pixel.y)};
  }
  Widen(frame.left, frame.right);
  Widen(frame.top, frame.bottom);
  return true;
}

bool PlainMark::IsTouched(POINT from, POINT to) const {
  if (!HasTwoPoints() || !IsPath()) {
    return object->FindAnnotation({from.x, from.y, 0, 0}, {to.x, to.y, 0, 0}) != 0;
  }
  return AnySegment(*this,
                    [&](POINT a, POINT b) { return Utils::IsLineIntersect(from, to, a, b); });
}

bool PlainMark::IsHit(POINT at) const {
  if (!HasTwoPoints() || !IsPath()) {
    return object->FindAnnotation({at.x, at.y, 0, 0}, false) != 0;
  }
  const int width = std::clamp(pen.width, 1, 30);
  return AnySegment(*this, [&](POINT a, POINT b) { return Utils::IsPointOnLine(at, a, b, width); });
}

bool PlainMark::IsDot() const {
  if (!points.contains(0)) {
    return false;
  }
  const std::vector<AnnotationPoint>& list = points.at(0);
  return std::all_of(list.begin(), list.end(), [&](const AnnotationPoint& point) {
    return point.x == list[0].x && point.y == list[0].y;
  });
}

bool IsWithinBox(POINT at, const RECT& box) {
  return box.left <= at.x && at.x <= box.right && box.top <= at.y && at.y <= box.bottom;
}
