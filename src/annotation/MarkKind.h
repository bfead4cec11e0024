#pragma once

#include <parchlet/AnnotationTypes.h>

#include "annotation/MarkPoints.h"
#include "platform/Platform.h"

// Pen widths are brought into this range wherever they count.
inline constexpr int kMinPenWidth = 1;
inline constexpr int kMaxPenWidth = 30;

// How a mark looks, beside its points.
struct MarkLook {
  AnnotationPen pen;
  Gdiplus::Image* picture;  // null when it has none
};

// What one kind of mark is: a row of the table in MarkKind.cpp. A new shape is one more row.
//
// The functions ask for two points in sub-model 0 at least. Hit tests look at stored pixels.
struct MarkKind {
  // AddPoint replaces the second point: a shape is dragged out from its first one.
  bool keepsTwoPoints;
  // Selection frame and rectangle selection take the box of all points, not of the first two.
  bool framesAllPoints;
  // Searches ask the mark wherever it lies: a point far off its box may hit it.
  bool isHitAnywhere;
  // Brings stored pixels up to date with `size` and paints the mark.
  void (*draw)(MarkPoints& points, const MarkLook& look, Gdiplus::Graphics& graphics,
               CurrentAnnotPageSize size);
  // Whether an eraser that moves straight between two pixels touches the mark.
  bool (*isCrossed)(const MarkPoints& points, const AnnotationPen& pen, POINT from, POINT to);
  // Whether a pixel hits the mark.
  bool (*holds)(const MarkPoints& points, const AnnotationPen& pen, POINT at);
};

// The box as the painter takes it. Far out it is clamped so that its extent fits an int; past that
// distance the clamped box paints the same pixels.
Gdiplus::Rect PaintableRect(const RECT& box);

// The row of a drawing of that sub-type; values without a row are paths that frame two points.
const MarkKind& ShapeOf(AnnotationSubType subType);
// The row of a mark: a picture's for AnnotationTypePicture, whatever the sub-type.
const MarkKind& KindOf(AnnotationType type, AnnotationSubType subType);
