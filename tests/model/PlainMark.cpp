#include "model/PlainMark.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/PlainShapes.h"

namespace {

// Truncated toward zero; no number is pixel 0, and what lies past all pixels is the last of them.
LONG Truncated(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  if (value <= std::numeric_limits<LONG>::min()) {
    return std::numeric_limits<LONG>::min();
  }
  if (value >= std::numeric_limits<LONG>::max()) {
    return std::numeric_limits<LONG>::max();
  }
  return static_cast<LONG>(value);
}

POINT Converted(const AnnotationPoint& point, CurrentAnnotPageSize size) {
  return {Truncated(size.width * point.xRatio + 0.5), Truncated(size.height * point.yRatio + 0.5)};
}

void Convert(AnnotationPoint& point, CurrentAnnotPageSize size) {
  const POINT pixel = Converted(point, size);
  point.x = pixel.x;
  point.y = pixel.y;
}

void Widen(LONG& low, LONG& high) {
  if (std::int64_t{high} - low < 2) {
    low = low == std::numeric_limits<LONG>::min() ? low : low - 1;
    high = high == std::numeric_limits<LONG>::max() ? high : high + 1;
  }
}

bool IsShape(AnnotationSubType subType) {
  return subType == AnnotationSubTypeLine || subType == AnnotationSubTypeEllipse ||
         subType == AnnotationSubTypeRectangle || subType == AnnotationSubTypeTriangle ||
         subType == AnnotationSubTypeRightTriangle;
}

}  // namespace

unsigned PlainMark::ConnectedCount() const {
  unsigned count = 0;
  while (points.contains(count)) {
    ++count;
  }
  return count;
}

bool PlainMark::HasTwoPoints() const {
  return points.contains(0) && points.at(0).size() >= 2;
}

void PlainMark::AddPoint(const AnnotationPoint& point) {
  std::vector<AnnotationPoint>& list = points[0];
  if ((IsPicture() || IsShape(subType)) && list.size() >= 2) {
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
  if (IsPicture() || IsShape(subType)) {
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
  const POINT first = Converted(counted[0], size);
  frame = {first.x, first.y, first.x, first.y};
  for (const AnnotationPoint& point : counted) {
    const POINT pixel = Converted(point, size);
    frame = {std::min(frame.left, pixel.x), std::min(frame.top, pixel.y),
             std::max(frame.right, pixel.x), std::max(frame.bottom, pixel.y)};
  }
  Widen(frame.left, frame.right);
  Widen(frame.top, frame.bottom);
  return true;
}

bool PlainMark::IsTouched(POINT from, POINT to) const {
  return HasTwoPoints() && IsPlainlyTouched(*this, from, to);
}

bool PlainMark::IsHit(POINT at, bool useFrame) const {
  if (!HasTwoPoints()) {
    return false;
  }
  return useFrame ? IsWithinBox(at, frame) : IsPlainlyHit(*this, at);
}

bool PlainMark::IsWithin(const RECT& rect) const {
  if (erased == 1 || !HasTwoPoints()) {
    return false;
  }
  const RECT normal = {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
                       std::max(rect.left, rect.right), std::max(rect.top, rect.bottom)};
  bool isWithin = IsWithinBox(PixelAt(points.at(0)[0]), normal) &&
                  IsWithinBox(PixelAt(points.at(0)[1]), normal);
  if (!IsPicture() && subType == AnnotationSubTypePath) {
    for (const auto& [number, list] : points) {
      for (const AnnotationPoint& point : list) {
        isWithin = isWithin && IsWithinBox(PixelAt(point), normal);
      }
    }
  }
  return isWithin;
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
