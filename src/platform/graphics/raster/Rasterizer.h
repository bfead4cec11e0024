// Paints solid strokes, rectangles, dots and pictures on a surface, within a clip.
//
// What a pixel gets does not depend on the clip: painting a page in any set of bands or tiles gives
// the pixels of painting it at once.
#pragma once

#include <cstdint>
#include <span>

#include "platform/graphics/raster/CoveragePlane.h"
#include "platform/graphics/raster/Geometry.h"
#include "platform/graphics/raster/Ink.h"
#include "platform/graphics/raster/Stroker.h"

namespace raster {

// The pens that can be told apart on a page; others are brought within.
inline constexpr float kThinnestPen = 1;
inline constexpr float kWidestPen = 30;
float UsableWidth(float penWidth);

// Keeps its scratch memory between marks. One thread at a time; several rasterizers may paint on
// one surface when their clips do not overlap.
class Rasterizer {
 public:
  // Paints on `surface` within `clip` from now on. The surface must outlive the painting.
  void SetTarget(const PixelSurface& surface, const PixelRect& clip);

  // Strokes a polyline with flat caps and mitred joins, closed or open; a disc of the pen's width
  // when all points fall on one pixel. A stroke never blends over itself. No points: nothing.
  // `parts`: of an open line that lies near the surface, what every kPartSegments of its segments
  // may touch, so that the stroke passes over those outside the clip; empty when that is not known.
  void Stroke(std::span<const GridPoint> points, bool closed, float penWidth, std::uint32_t argb,
              std::span<const PixelRect> parts = {});

  // Outlines the ellipse inscribed in the box.
  void StrokeEllipse(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                     float penWidth, std::uint32_t argb);

  // Fills the pixels x .. x+width-1, y .. y+height-1. A box without pixels: nothing.
  void Fill(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
            std::uint32_t argb);

  // Sets every pixel of the clip, alpha included.
  void Clear(std::uint32_t argb);

 private:
  PixelSurface surface;
  PixelRect clip;
  CoveragePlane plane;
  Stroker stroker{plane};
};

}  // namespace raster
