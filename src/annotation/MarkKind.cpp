#include "annotation/MarkKind.h"

#include <algorithm>
#include <cstdint>

#include <parchlet/Utils.h>

#include "annotation/HitShapes.h"

namespace {

using Gdiplus::Graphics;

int CalcPenWidth(int width) {
  return std::clamp(width, kMinPenWidth, kMaxPenWidth);
}

int HalfWidth(const AnnotationPen& pen) {
  return static_cast<int>(static_cast<float>(CalcPenWidth(pen.width)) * 0.5F);
}

Gdiplus::Pen StrokePen(const AnnotationPen& pen) {
  return Gdiplus::Pen(Gdiplus::Color(pen.color),
                      static_cast<Gdiplus::REAL>(CalcPenWidth(pen.width)));
}

// --- Paths ---

void DrawShapePath(MarkPoints& points, const MarkLook& look, Graphics& graphics,
                   CurrentAnnotPageSize size) {
  points.ConvertPath(size);
  const Gdiplus::Pen stroke = StrokePen(look.pen);
  points.EachPolyline([&](const std::vector<Gdiplus::Point>& pixels) {
    graphics.DrawLines(&stroke, pixels.data(), static_cast<INT>(pixels.size()));
  });
}

bool IsPathCrossed(const MarkPoints& points, const AnnotationPen& /*pen*/, POINT from, POINT to) {
  const RECT box = points.PixelBox();
  const RECT area = CrossableArea(BoxOf(from, to), Farthest(box), Extents(box));
  return points.AnySegment(area, [&](POINT a, POINT b) {
    return DoMeet(area, BoxOf(a, b)) && Utils::IsLineIntersect(from, to, a, b);
  });
}

bool PathHolds(const MarkPoints& points, const AnnotationPen& pen, POINT at) {
  const int width = CalcPenWidth(pen.width);
  const RECT area = Widened(BoxOf(at, at), HalfWidth(pen));
  return points.AnySegment(area,
                           [&](POINT a, POINT b) { return Utils::IsPointOnLine(at, a, b, width); });
}

// --- Lines ---

void DrawShapeLine(MarkPoints& points, const MarkLook& look, Graphics& graphics,
                   CurrentAnnotPageSize size) {
  const Gdiplus::Pen stroke = StrokePen(look.pen);
  points.ConvertFirstTwo(size);
  const POINT from = points.PixelAt(0);
  const POINT to = points.PixelAt(1);
  const auto number = [](LONG pixel) { return static_cast<INT>(pixel); };
  graphics.DrawLine(&stroke, number(from.x), number(from.y), number(to.x), number(to.y));
}

bool IsLineCrossed(const MarkPoints& points, const AnnotationPen& /*pen*/, POINT from, POINT to) {
  return Utils::IsLineIntersect(from, to, points.PixelAt(0), points.PixelAt(1));
}

bool LineHolds(const MarkPoints& points, const AnnotationPen& pen, POINT at) {
  return Utils::IsPointOnLine(at, points.PixelAt(0), points.PixelAt(1), CalcPenWidth(pen.width));
}

// --- Ellipses ---

void DrawShapeEllipse(MarkPoints& points, const MarkLook& look, Graphics& graphics,
                      CurrentAnnotPageSize size) {
  const Gdiplus::Pen stroke = StrokePen(look.pen);
  const Gdiplus::Rect box = PaintableRect(points.ConvertFirstTwo(size));
  graphics.DrawEllipse(&stroke, box.X, box.Y, box.Width, box.Height);
}

bool EllipseHolds(const MarkPoints& points, const AnnotationPen& pen, POINT at) {
  return IsInEllipse(at, points.FirstTwoBox(), HalfWidth(pen));
}

bool IsEllipseCrossed(const MarkPoints& points, const AnnotationPen& pen, POINT from, POINT to) {
  return CrossesDiamond(from, to, points.PixelAt(0), points.PixelAt(1)) ||
         EllipseHolds(points, pen, to) || EllipseHolds(points, pen, from);
}

// --- Rectangles ---

void DrawShapeRectangle(MarkPoints& points, const MarkLook& look, Graphics& graphics,
                        CurrentAnnotPageSize size) {
  const Gdiplus::Rect box = PaintableRect(points.ConvertFirstTwo(size));
  if (look.pen.fill != 0) {
    const Gdiplus::SolidBrush brush{Gdiplus::Color(look.pen.color)};
    graphics.FillRectangle(&brush, box.X, box.Y, box.Width, box.Height);
    return;
  }
  const Gdiplus::Pen stroke = StrokePen(look.pen);
  graphics.DrawRectangle(&stroke, box.X, box.Y, box.Width, box.Height);
}

bool IsBoxCrossed(const MarkPoints& points, const AnnotationPen& /*pen*/, POINT from, POINT to) {
  return CrossesBox(from, to, points.PixelAt(0), points.PixelAt(1));
}

bool RectangleHolds(const MarkPoints& points, const AnnotationPen& pen, POINT at) {
  return IsInBox(at, points.FirstTwoBox(), HalfWidth(pen));
}

// --- Triangles ---

template <bool isRight>
void DrawShapeTriangle(MarkPoints& points, const MarkLook& look, Graphics& graphics,
                       CurrentAnnotPageSize size) {
  const RECT box = points.ConvertFirstTwo(size);
  const LONG apex = isRight ? box.left : Middle(box.left, box.right);
  const Gdiplus::Point corners[] = {
      {apex, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
  const Gdiplus::Pen stroke = StrokePen(look.pen);
  graphics.DrawPolygon(&stroke, corners, 3);
}

template <bool isRight>
bool IsTriangleCrossed(const MarkPoints& points, const AnnotationPen& /*pen*/, POINT from,
                       POINT to) {
  return CrossesTriangle(from, to, points.FirstTwoBox(), isRight);
}

template <bool isRight>
bool TriangleHolds(const MarkPoints& points, const AnnotationPen& pen, POINT at) {
  return IsInTriangle(at, points.FirstTwoBox(), HalfWidth(pen), isRight);
}

// --- Pictures ---

void DrawPictureAnnotation(MarkPoints& points, const MarkLook& look, Graphics& graphics,
                           CurrentAnnotPageSize size) {
  if (look.picture == nullptr) {
    return;
  }
  const Gdiplus::Rect box = PaintableRect(points.ConvertFirstTwo(size));
  const INT height = static_cast<INT>(look.picture->GetHeight());
  const INT width = static_cast<INT>(look.picture->GetWidth());
  graphics.DrawImage(look.picture, box, 0, 0, width, height, Gdiplus::UnitPixel);
}

bool PictureHolds(const MarkPoints& points, const AnnotationPen& /*pen*/, POINT at) {
  return IsInBox(at, points.FirstTwoBox(), 0);
}

// --- The table ---

struct Row {
  AnnotationSubType subType;
  MarkKind kind;
};

//   keeps two points, frames all points, is hit anywhere; draws, is crossed, holds
constexpr Row kShapes[] = {
    {AnnotationSubTypePath, {false, true, false, DrawShapePath, IsPathCrossed, PathHolds}},
    {AnnotationSubTypeLine, {true, false, false, DrawShapeLine, IsLineCrossed, LineHolds}},
    {AnnotationSubTypeEllipse,
     {true, false, false, DrawShapeEllipse, IsEllipseCrossed, EllipseHolds}},
    {AnnotationSubTypeRectangle,
     {true, false, false, DrawShapeRectangle, IsBoxCrossed, RectangleHolds}},
    // All but flat, a triangle holds points without bounds.
    {AnnotationSubTypeTriangle,
     {true, false, true, DrawShapeTriangle<false>, IsTriangleCrossed<false>, TriangleHolds<false>}},
    {AnnotationSubTypeRightTriangle,
     {true, false, true, DrawShapeTriangle<true>, IsTriangleCrossed<true>, TriangleHolds<true>}},
};
constexpr MarkKind kPicture = {true,         false,       false, DrawPictureAnnotation,
                               IsBoxCrossed, PictureHolds};
constexpr MarkKind kReserved = {false, false, false, DrawShapePath, IsPathCrossed, PathHolds};

}  // namespace

Gdiplus::Rect PaintableRect(const RECT& box) {
  static constexpr LONG kFarthestPainted = 0x3FFFFFFF;
  const auto limit = [](LONG value) {
    return static_cast<int>(std::clamp<LONG>(value, -kFarthestPainted, kFarthestPainted));
  };
  const int left = limit(box.left);
  const int top = limit(box.top);
  return {left, top, limit(box.right) - left, limit(box.bottom) - top};
}

const MarkKind& ShapeOf(AnnotationSubType subType) {
  for (const Row& row : kShapes) {
    if (row.subType == subType) {
      return row.kind;
    }
  }
  return kReserved;
}

const MarkKind& KindOf(AnnotationType type, AnnotationSubType subType) {
  return type == AnnotationTypePicture ? kPicture : ShapeOf(subType);
}
