// AnnotationTypes.h - the records and enumerations of Parchlet's interface.
//
// Coordinates: the origin is the page's top left corner; x grows to the right, y downwards.
// Colours: 0xAARRGGBB, not premultiplied.
#pragma once

#include <cstdint>

#include <parchlet/Platform.h>

// One point of a mark. The fractions are authoritative, so marks follow their page when it is
// resized. The pixels are a cache: drawing on a surface of W x H pixels sets x to
// (int)(W * xRatio + 0.5), truncated toward zero, and y likewise. A pointer position p becomes
// {p.x, p.y, (double)p.x / W, (double)p.y / H}.
struct AnnotationPoint {
  std::int32_t x;  // pixels
  std::int32_t y;
  double xRatio;  // fraction of the surface width: 0.0 left edge, 1.0 right edge; not clamped
  double yRatio;  // fraction of the surface height: 0.0 top edge, 1.0 bottom edge; not clamped
};

// How a mark is stroked.
struct AnnotationPen {
  std::uint32_t color;
  std::int32_t width;  // pixels, whatever the surface size; drawing clamps it to 1..30
  std::int32_t fill;   // non-zero: a rectangle is filled with `color` and not outlined
};

// What an annotation is. The reserved values have no meaning: StartDrawing refuses them, and a mark
// that arrives with one is painted by its sub-type.
enum AnnotationType : std::int32_t {
  AnnotationTypeDrawing = 1,
  AnnotationTypeReserved2 = 2,
  AnnotationTypePicture = 3,
  AnnotationTypeReserved4 = 4,
};

// The shape of a drawing, or the format of a picture. Unlisted values are drawn as paths.
enum AnnotationSubType : std::int32_t {
  AnnotationSubTypePath = 0,            // free-hand: a line through all points
  AnnotationSubTypeLine = 10,           // this and the next four: the first and the latest point
  AnnotationSubTypeEllipse = 14,        // inscribed in the box that the two points span
  AnnotationSubTypeRectangle = 15,      // outlined, or filled when the pen says so
  AnnotationSubTypeTriangle = 19,       // isosceles: apex at the middle of the box's top edge
  AnnotationSubTypeRightTriangle = 20,  // right angle at the box's bottom left corner
  AnnotationSubTypeJpeg = 21,           // this and the next two: type AnnotationTypePicture
  AnnotationSubTypePng = 22,
  AnnotationSubTypeBmp = 23,
  AnnotationSubTypeUnknown = -1,  // not loaded yet, or of any other format
};

// The surface size that drawing scales by, in pixels.
struct CurrentAnnotPageSize {
  std::int32_t width;
  std::int32_t height;
};

// Geometry and background of a page.
struct AnnotationPageInfo {
  std::int32_t userValue1;  // kept for the host; the engine does not use it
  std::int32_t userValue2;
  std::int32_t width;  // surface size in pixels, at least 1
  std::int32_t height;
  bool transparent;  // the background is 0x0A000000 and ignores SetPageBackgroundColor
  // Kept for the host, with one effect: if it is empty at creation, the surface is one pixel wide
  // (or high) until the first resize. A host that does not use it sets the whole page.
  RECT viewRect;
  std::uint32_t backgroundColor;  // Parchlet::NewPage replaces it by the engine's background colour
};
