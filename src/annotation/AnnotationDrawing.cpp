#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

#include <parchlet/Annotation.h>

#include "annotation/PixelMath.h"
#include "platform/Platform.h"

namespace {

constexpr Gdiplus::ARGB kFrameColor = 0xFF939393;
constexpr int kMaxPenWidth = 30;
// A box this far out keeps an extent that fits an int; nothing so far away can be told from the
// truth.
constexpr std::int32_t kFarthest = 0x3FFFFFFF;

Gdiplus::Point Convert(AnnotationPoint& point, CurrentAnnotPageSize size) {
  const POINT pixel = PixelOf(point, size);
  point.x = pixel.x;
  point.y = pixel.y;
  return {pixel.x, pixel.y};
}

void CopyPixels(const std::vector<AnnotationPoint>& points, std::vector<Gdiplus::Point>& pixels) {
  pixels.resize(points.size());
  std::transform(points.begin(), points.end(), pixels.begin(),
                 [](const AnnotationPoint& point) { return Gdiplus::Point(point.x, point.y); });
}

// Calls `visit` with the points of every sub-model of the unbroken run from 0.
template <class Visit>
void EachConnected(Annotation::SubModels& points, const Visit& visit) {
  unsigned int next = 0;
  for (auto& [number, list] : points) {
    if (number != next) {
      return;
    }
    ++next;
    visit(list);
  }
}

Gdiplus::Pen StrokePen(std::uint32_t color, int width) {
  return Gdiplus::Pen(Gdiplus::Color(color), static_cast<Gdiplus::REAL>(width));
}

// Widens an extent of less than two pixels by one on each side.
void GiveExtent(LONG& low, LONG& high) {
  if (std::int64_t{high} - low < 2) {
    low = SaturatingPixel(std::int64_t{low} - 1);
    high = SaturatingPixel(std::int64_t{high} + 1);
  }
}

Gdiplus::Rect Within(const RECT& box) {
  const auto limit = [](LONG value) {
    return static_cast<int>(std::clamp<LONG>(value, -kFarthest, kFarthest));
  };
  const int left = limit(box.left);
  const int top = limit(box.top);
  return {left, top, limit(box.right) - left, limit(box.bottom) - top};
}

}  // namespace

int Annotation::CalcPenWidth(int width) const {
  return std::clamp(width, 1, kMaxPenWidth);
}

int Annotation::Draw(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size, bool /*lock*/) {
  if (graphics == nullptr) {
    return 0;
  }
  MutexLock guard(mutex);
  if (type == AnnotationTypePicture) {
    DrawPictureAnnotation(graphics, size);
  } else {
    DrawShapeAnnotation(graphics, size);
  }
  return 1;
}

bool Annotation::HasTwoPoints() const {
  const auto first = points.find(0);
  return first != points.end() && first->second.size() >= 2;
}

void Annotation::DrawShapeAnnotation(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  if (!HasTwoPoints()) {
    return;
  }
  switch (subType) {
    case AnnotationSubTypeLine:
      DrawShapeLine(graphics, size);
      break;
    case AnnotationSubTypeEllipse:
      DrawShapeEllipse(graphics, size);
      break;
    case AnnotationSubTypeRectangle:
      DrawShapeRectangle(graphics, size);
      break;
    case AnnotationSubTypeTriangle:
    case AnnotationSubTypeRightTriangle:
      DrawShapeTriangle(graphics, size);
      break;
    default:
      DrawShapePath(graphics, size);
      break;
  }
}

RECT Annotation::ConvertTwoPoints(CurrentAnnotPageSize size) {
  std::vector<AnnotationPoint>& list = points.find(0)->second;
  const RECT before = {list[0].x, list[0].y, list[1].x, list[1].y};
  const Gdiplus::Point a = Convert(list[0], size);
  const Gdiplus::Point b = Convert(list[1], size);
  if (!IsSameBox(before, {a.X, a.Y, b.X, b.Y})) {
    // A path's record of converted pixels, should the mark become one, does not cover these two.
    PointsReplaced();
  }
  return BoxOf({a.X, a.Y}, {b.X, b.Y});
}

void Annotation::DrawShapeLine(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  const Gdiplus::Pen stroke = StrokePen(pen.color, CalcPenWidth(pen.width));
  ConvertTwoPoints(size);
  const std::vector<AnnotationPoint>& list = points.find(0)->second;
  graphics->DrawLine(&stroke, list[0].x, list[0].y, list[1].x, list[1].y);
}

void Annotation::DrawShapeEllipse(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  const Gdiplus::Pen stroke = StrokePen(pen.color, CalcPenWidth(pen.width));
  const Gdiplus::Rect box = Within(ConvertTwoPoints(size));
  graphics->DrawEllipse(&stroke, box.X, box.Y, box.Width, box.Height);
}

void Annotation::DrawShapeRectangle(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  const Gdiplus::Rect box = Within(ConvertTwoPoints(size));
  if (pen.fill != 0) {
    const Gdiplus::SolidBrush brush{Gdiplus::Color(pen.color)};
    graphics->FillRectangle(&brush, box.X, box.Y, box.Width, box.Height);
    return;
  }
  const Gdiplus::Pen stroke = StrokePen(pen.color, CalcPenWidth(pen.width));
  graphics->DrawRectangle(&stroke, box.X, box.Y, box.Width, box.Height);
}

void Annotation::DrawShapeTriangle(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  const RECT box = ConvertTwoPoints(size);
  const auto middle = static_cast<LONG>((std::int64_t{box.left} + box.right) / 2);
  const LONG apex = subType == AnnotationSubTypeTriangle ? middle : box.left;
  const Gdiplus::Point corners[] = {
      {apex, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
  const Gdiplus::Pen stroke = StrokePen(pen.color, CalcPenWidth(pen.width));
  graphics->DrawPolygon(&stroke, corners, 3);
}

void Annotation::ConvertPathTail(CurrentAnnotPageSize size) {
  std::vector<AnnotationPoint>& list = points.find(0)->second;
  bool hasMoved = false;
  convertedPixels.resize(list.size());  // all that takes memory, before anything changes
  for (std::size_t i = convertedPoints; i < list.size(); ++i) {
    const POINT before = {list[i].x, list[i].y};
    const Gdiplus::Point now = Convert(list[i], size);
    convertedPixels[i] = now;
    hasMoved = hasMoved || now.X != before.x || now.Y != before.y;
  }
  convertedPoints = list.size();
  if (hasMoved) {
    RecomputeSpan();
  }
}

void Annotation::ConvertPath(CurrentAnnotPageSize size) {
  const bool isNoSize = size.width == 0 && size.height == 0;  // stands for nothing converted
  if (!isNoSize && convertedSize.width == size.width && convertedSize.height == size.height) {
    ConvertPathTail(size);
    return;
  }
  convertedSize = {0, 0};
  // Memory may run out before the pixels change and after their span follows, never in between.
  segmentBoxes.clear();
  EachConnected(points, [](std::vector<AnnotationPoint>& list) {
    if (list.size() == 1) {
      list.push_back(list.front());
    }
  });
  EachConnected(points, [size](std::vector<AnnotationPoint>& list) {
    for (AnnotationPoint& point : list) {
      Convert(point, size);
    }
  });
  RecomputeSpan();
  CopyPixels(points.find(0)->second, convertedPixels);
  convertedPoints = convertedPixels.size();
  convertedSize = size;
}

void Annotation::DrawShapePath(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  ConvertPath(size);
  const Gdiplus::Pen stroke = StrokePen(pen.color, CalcPenWidth(pen.width));
  const auto draw = [&](const std::vector<Gdiplus::Point>& pixels) {
    if (!pixels.empty()) {
      graphics->DrawLines(&stroke, pixels.data(), static_cast<INT>(pixels.size()));
    }
  };
  draw(convertedPixels);
  // One array a thread, grown to the longest sub-model, instead of one a path and frame.
  thread_local std::vector<Gdiplus::Point> pixels;
  const std::vector<AnnotationPoint>* before = &points.find(0)->second;
  unsigned int next = 1;
  for (auto at = points.find(1); at != points.end() && at->first == next; ++at, ++next) {
    const std::vector<AnnotationPoint>& list = at->second;
    CopyPixels(list, pixels);
    if (!before->empty() && !list.empty()) {
      const Gdiplus::Point join[] = {{before->back().x, before->back().y}, pixels.front()};
      graphics->DrawLines(&stroke, join, 2);
    }
    draw(pixels);
    before = &list;
  }
}

void Annotation::DrawPictureAnnotation(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  if (picture == nullptr || !HasTwoPoints()) {
    return;
  }
  const Gdiplus::Rect box = Within(ConvertTwoPoints(size));
  const INT height = static_cast<INT>(picture->GetHeight());
  const INT width = static_cast<INT>(picture->GetWidth());
  graphics->DrawImage(picture.get(), box, 0, 0, width, height, Gdiplus::UnitPixel);
}

int Annotation::SetRectEx(CurrentAnnotPageSize size) {
  MutexLock lock(mutex);
  return UpdateFrame(size);
}

bool Annotation::EnsureFirstSubModel() {
  try {
    points.try_emplace(0);
    return true;
  } catch (const std::bad_alloc&) {
    return false;  // the frame of an empty list is none either
  }
}

int Annotation::UpdateFrame(CurrentAnnotPageSize size) {
  if (points.empty() || !EnsureFirstSubModel() || !HasTwoPoints()) {
    return 0;
  }
  const std::vector<AnnotationPoint>& first = points.find(0)->second;
  // A path's farthest points have the farthest pixels, whatever the size: conversion keeps order.
  const bool isPath = subType == AnnotationSubTypePath;
  RECT box = isPath ? BoxOf(PixelOf(span.low, size), PixelOf(span.high, size))
                    : BoxOf(PixelOf(first[0], size), PixelOf(first[1], size));
  GiveExtent(box.left, box.right);
  GiveExtent(box.top, box.bottom);
  if (!IsSameBox(frame, box)) {
    frame = box;
    PublishReach();
  }
  return 1;
}

int Annotation::DrawRectEx(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size) {
  if (graphics == nullptr || IsErased() == 1) {
    return 0;
  }
  MutexLock lock(mutex);
  if (UpdateFrame(size) == 0) {
    return 0;
  }
  const Gdiplus::Rect box = Within(frame);
  const Gdiplus::Pen outline(Gdiplus::Color(kFrameColor), 1.0F);
  graphics->DrawRectangle(&outline, box.X, box.Y, box.Width, box.Height);
  return 1;
}
