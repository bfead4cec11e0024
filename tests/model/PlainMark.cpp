#include <algorithm>
#include <tuple>

#include <parchlet/Utils.h>

#include "model/PlainPage.h"

namespace {

void Convert(AnnotationPoint& point, CurrentAnnotPageSize size) {
  const POINT pixel = PixelOf(point, size);
  point.x = pixel.x;
  point.y = pixel.y;
}

}  // namespace

bool PlainMark::IsPath() const {
  constexpr int kShapes[] = {AnnotationSubTypeLine, AnnotationSubTypeEllipse,
                             AnnotationSubTypeRectangle, AnnotationSubTypeTriangle,
                             AnnotationSubTypeRightTriangle};
  return type != AnnotationTypePicture &&
         std::find(std::begin(kShapes), std::end(kShapes), subType) == std::end(kShapes);
}

std::vector<PlainMark::PointList*> PlainMark::Connected() {
  std::vector<PointList*> lists;
  while (points.contains(static_cast<unsigned>(lists.size()))) {
    lists.push_back(&points.at(static_cast<unsigned>(lists.size())));
  }
  return lists;
}

void PlainMark::AddPoint(const AnnotationPoint& point) {
  PointList& list = points[0];
  if (!IsPath() && list.size() >= 2) {
    list[1] = point;
  } else {
    list.push_back(point);
  }
}

void PlainMark::Moving(const AnnotationPoint& to) {
  const double dx = to.xRatio - origin.xRatio;
  const double dy = to.yRatio - origin.yRatio;
  origin = to;
  for (PointList* list : Connected()) {
    for (AnnotationPoint& point : *list) {
      point.xRatio += dx;
      point.yRatio += dy;
    }
  }
}

void PlainMark::Renumber(unsigned subModel) {
  const auto first = points.extract(0);
  PointList& list = points[subModel];
  list = first.empty() ? list : first.mapped();
}

void PlainMark::TakeOver(const PlainMark& source) {
  PlainMark copy = source;
  copy.pictureProperty = pictureProperty;
  copy.tempStartTick = tempStartTick;
  copy.object = object;
  copy.isOwned = isOwned;
  const std::size_t connected = copy.Connected().size();
  std::erase_if(copy.points, [&](const auto& subModel) {
    return subModel.first >= connected || subModel.second.empty();
  });
  *this = copy;
}

void PlainMark::Draw(CurrentAnnotPageSize size) {
  if (!HasTwoPoints() || (type == AnnotationTypePicture && !hasPicture)) {
    return;
  }
  if (!IsPath()) {
    Convert(points.at(0)[0], size);
    Convert(points.at(0)[1], size);
    return;
  }
  for (PointList* list : Connected()) {
    if (list->size() == 1) {
      list->push_back(list->front());
    }
    for (AnnotationPoint& point : *list) {
      Convert(point, size);
    }
  }
}

int PlainMark::SetRectEx(CurrentAnnotPageSize size) {
  if (points.empty() || points[0].size() < 2) {
    return 0;
  }
  PointList counted(points[0].begin(), points[0].begin() + 2);
  if (subType == AnnotationSubTypePath) {
    for (const auto& [number, list] : points) {
      counted.insert(counted.end(), list.begin(), list.end());
    }
  }
  frame = kNoBox;
  for (const AnnotationPoint& point : counted) {
    Extend(frame, PixelOf(point, size));
  }
  // To two pixels at least.
  const RECT wider = Widened(frame, 1);
  if (std::int64_t{frame.right} - frame.left < 2) {
    std::tie(frame.left, frame.right) = std::tie(wider.left, wider.right);
  }
  if (std::int64_t{frame.bottom} - frame.top < 2) {
    std::tie(frame.top, frame.bottom) = std::tie(wider.top, wider.bottom);
  }
  return 1;
}

bool PlainMark::IsTouched(const std::vector<POINT>& path) {
  const bool isPress = path.size() == 1;
  const POINT from = path.front();
  const POINT to = path.back();
  if (!HasTwoPoints() || !IsPath()) {
    const AnnotationPoint start = {from.x, from.y, 0, 0};
    return (isPress ? object->FindAnnotation(start, false)
                    : object->FindAnnotation(start, {to.x, to.y, 0, 0})) != 0;
  }
  const int width = std::clamp(pen.width, 1, 30);
  for (const PointList* list : Connected()) {
    for (std::size_t i = 1; i < list->size(); ++i) {
      const POINT a = StoredPixel(list->at(i - 1));
      const POINT b = StoredPixel(list->at(i));
      if (isPress ? Utils::IsPointOnLine(from, a, b, width)
                  : Utils::IsLineIntersect(from, to, a, b)) {
        return true;
      }
    }
  }
  return false;
}

bool PlainMark::IsDot() const {
  RECT box = kNoBox;
  for (const AnnotationPoint& point : ValueAt(points, 0U)) {
    Extend(box, StoredPixel(point));
  }
  return points.contains(0) && box.right <= box.left && box.bottom <= box.top;
}
