// AnnotationTypes.h - the plain records and enumerations that cross Parchlet's interface.
//
// Coordinates: the origin is the page's top left corner, x grows to the right, y downwards.
// Colours: 0xAARRGGBB, not premultiplied.
#pragma once

#include <cstdint>

#include <parchlet/Platform.h>

// One sampled point. The fractions are authoritative; the pixels are a cache that drawing refreshes
// for the surface size W x H then in use, as (int)(W * xRatio + 0.5), truncated toward zero, so
// marks follow their page when it is resized. A point made from a pointer position p is {p.x, p.y,
// (double)p.x / W, (double)p.y / H}.
struct AnnotationPoint {
  std::int32_t x;  // pixels
  std::int32_t y;
  double xRatio;  // fraction of the surface width: 0.0 left edge, 1.0 right edge, not clamped
  double yRatio;
};

// How a mark is stroked.
struct AnnotationPen {
  std::uint32_t color;
  std::int32_t width;  // pixels on any surface size; drawing clamps it to 1..30
  std::int32_t fill;   // non-zero: a rectangle is filled with `color` and not outlined
};

// What an annotation is. The engine draws marks of type 1 and pictures of type 3; it accepts the
// two reserved values and gives them no meaning.
enum AnnotationType : std::int32_t {
  AnnotationTypeDrawing = 1,
  AnnotationTypeReserved2 = 2,
  AnnotationTypePicture = 3,
  AnnotationTypeReserved4 = 4,
};

// The shape of a drawing, or the format of a picture. Other values from 0 to 23 are drawn as paths.
enum AnnotationSubType : std::int32_t {
  AnnotationSubTypePath = 0,            // free-hand: every point counts
  AnnotationSubTypeLine = 10,           // this and the following: first and latest point
  AnnotationSubTypeEllipse = 14,        // inscribed in the box that the two points span
  AnnotationSubTypeRectangle = 15,      // outlined, or filled when the pen says so
  AnnotationSubTypeTriangle = 19,       // isosceles: apex at the middle of the box's top edge
  AnnotationSubTypeRightTriangle = 20,  // right angle at the box's bottom left corner
  AnnotationSubTypeJpeg = 21,           // this and the following: type AnnotationTypePicture
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
  std::int32_t userValue1;  // kept for the host, no meaning to the engine
  std::int32_t userValue2;
  std::int32_t width;  // surface size in pixels, at least 1
  std::int32_t height;
  bool transparent;  // the background is 0x0A000000 and ignores SetPageBackgroundColor
  // Kept for the host; but an empty extent at creation makes the surface one pixel wide (or high)
  // until the first resize, so a host without a use for it gives the whole page.
  RECT viewRect;
  std::uint32_t backgroundColor;  // as reported; Parchlet::NewPage puts the engine's colour here
};
