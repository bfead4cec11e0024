#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include <parchlet/Annotation.h>

#include "annotation/PixelMath.h"
#include "annotation/ReachTable.h"

namespace {

constexpr std::size_t kLatest = 1;

}  // namespace

bool Annotation::IsTwoPointKind() const {
  if (type == AnnotationTypePicture) {
    return true;
  }
  switch (subType) {
    case AnnotationSubTypeLine:
    case AnnotationSubTypeEllipse:
    case AnnotationSubTypeRectangle:
    case AnnotationSubTypeTriangle:
    case AnnotationSubTypeRightTriangle:
      return true;
    default:
      return false;
  }
}

void Annotation::AddPoint(AnnotationPoint point) {
  MutexLock lock(mutex);
  std::vector<AnnotationPoint>& list = points[0];
  if (IsTwoPointKind() && list.size() > kLatest) {
    list[kLatest] = point;
    PointsReplaced();
  } else {
    list.push_back(point);
    ExtendSpan(point);
    segmentBoxes.clear();
    PublishReach();
  }
}

void Annotation::InsertPoints(unsigned int subModel, std::vector<AnnotationPoint> newPoints) {
  MutexLock lock(mutex);
  const auto [entry, isNew] = points.try_emplace(subModel);
  entry->second.swap(newPoints);
  if (isNew) {
    PointsAdded(entry->second);
  } else {
    PointsReplaced();
  }
}

void Annotation::ClearPoints() {
  MutexLock lock(mutex);
  points.clear();
  PointsReplaced();
}

Annotation::SubModels Annotation::GetPoints() const {
  MutexLock lock(mutex);
  return points;
}

int Annotation::IsSubModelExist(unsigned int subModel) const {
  MutexLock lock(mutex);
  return points.contains(subModel) ? 1 : 0;
}

void Annotation::StartMoving(AnnotationPoint point) {
  MutexLock lock(mutex);
  moveOrigin = point;
}

void Annotation::Moving(AnnotationPoint point) {
  MutexLock lock(mutex);
  const double dx = point.xRatio - moveOrigin.xRatio;
  const double dy = point.yRatio - moveOrigin.yRatio;
  moveOrigin = point;
  convertedSize = {0, 0};
  unsigned int next = 0;
  for (auto& [number, list] : points) {
    if (number != next) {
      break;
    }
    ++next;
    for (AnnotationPoint& moved : list) {
      moved.xRatio += dx;
      moved.yRatio += dy;
    }
  }
  RecomputeSpan();
}

std::vector<AnnotationPoint> Annotation::FirstSubModel() const {
  MutexLock lock(mutex);
  const auto first = points.find(0);
  return first != points.end() ? first->second : std::vector<AnnotationPoint>();
}

POINT Annotation::AnchorPixel() const {
  MutexLock lock(mutex);
  return FirstPixel();
}

void Annotation::MoveFirstSubModelTo(unsigned int subModel) {
  MutexLock lock(mutex);
  auto first = points.extract(0);
  if (first.empty()) {
    try {
      points.try_emplace(subModel);
    } catch (const std::bad_alloc&) {
      return;  // no list and an empty one mean the same
    }
    return;
  }
  first.key() = subModel;
  points.erase(subModel);
  points.insert(std::move(first));
  PointsReplaced();
}

void Annotation::ReplaceSubModels(SubModels& fresh) {
  MutexLock lock(mutex);
  bool isReplaced = false;
  for (auto& [number, list] : fresh) {
    const auto known = points.find(number);
    if (known == points.end()) {
      PointsAdded(list);
    } else {
      points.erase(known);
      isReplaced = true;
    }
  }
  points.merge(fresh);
  if (isReplaced) {
    PointsReplaced();
  }
}

void Annotation::PointsReplaced() {
  convertedSize = {0, 0};
  RecomputeSpan();
}

void Annotation::PointsAdded(const std::vector<AnnotationPoint>& list) {
  convertedSize = {0, 0};
  segmentBoxes.clear();
  for (const AnnotationPoint& point : list) {
    ExtendSpan(point);
  }
  PublishReach();
}

void Annotation::ExtendSpan(const AnnotationPoint& point) {
  const auto extend = [](auto& low, auto& high, auto value) {
    low = std::min(low, value);
    high = std::max(high, value);
  };
  const auto number = [](double ratio) { return std::isnan(ratio) ? 0.0 : ratio; };
  extend(span.low.x, span.high.x, point.x);
  extend(span.low.y, span.high.y, point.y);
  extend(span.low.xRatio, span.high.xRatio, number(point.xRatio));
  extend(span.low.yRatio, span.high.yRatio, number(point.yRatio));
  ++span.count;
}

void Annotation::RecomputeSpan() {
  const RECT before = PixelBox();
  segmentBoxes.clear();
  span = {};
  for (const auto& [number, list] : points) {
    for (const AnnotationPoint& point : list) {
      ExtendSpan(point);
    }
  }
  if (!IsSameBox(before, PixelBox())) {
    PublishReach();
  }
}

void Annotation::ReportReach(ReachTable& table, std::size_t slot) {
  MutexLock lock(mutex);
  reachTable = &table;
  reachSlot = slot;
  PublishReach();
}

std::size_t Annotation::ReachSlot() const {
  MutexLock lock(mutex);
  return reachSlot;
}

void Annotation::PublishReach() {
  if (reachTable == nullptr) {
    return;
  }
  // A stroke is hit half of the widest pen away from its centre line, give or take a rounding; the
  // test of a point in a triangle knows no bounds when the triangle is all but flat.
  constexpr LONG kHalfPen = 17;
  const bool isTriangle =
      subType == AnnotationSubTypeTriangle || subType == AnnotationSubTypeRightTriangle;
  // The widened box must lie within the table's range too, or the margin would not know of it.
  constexpr LONG kFarthest = kFarthestTabled - kHalfPen;
  const RECT pixelBox = PixelBox();
  const bool isFar = pixelBox.left < -kFarthest || pixelBox.top < -kFarthest ||
                     pixelBox.right > kFarthest || pixelBox.bottom > kFarthest;
  RECT hit = pixelBox;
  if (!IsEmptyBox(pixelBox)) {
    hit = isTriangle || isFar ? ReachTable::kEverywhere
                              : RECT{pixelBox.left - kHalfPen, pixelBox.top - kHalfPen,
                                     pixelBox.right + kHalfPen, pixelBox.bottom + kHalfPen};
  }
  reachTable->Set(reachSlot, {hit, frame});
}
