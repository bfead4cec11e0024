// Paints solid strokes, rectangles, dots and pictures on a surface, within a clip.
//
// A pixel does not depend on the clip: painting a page in any set of bands or tiles paints the same
// pixels as painting it at once.
#pragma once

#include <cstdint>
#include <span>

#include "platform/raster/CoverageMask.h"
#include "platform/raster/Geometry.h"
#include "platform/raster/Stroker.h"

namespace raster {

// Keeps its scratch memory between shapes. One thread at a time; several rasterizers may paint on
// one surface when their clips do not overlap.
class Rasterizer {
 public:
  // Paints on `surface` within `clip` from now on. The surface must outlive the painting.
  void SetTarget(const PixelSurface& surface, const PixelRect& clip);

  // Strokes a polyline with flat caps and mitred joins, closed or open. Without points, nothing;
  // when all of them fall on one pixel, a disc of the pen's width. A stroke never blends over
  // itself. `parts`: for an open line that lies within the guard band, what every kPartSegments of
  // its segments may touch, so that the stroke passes over those outside the clip; empty when that
  // is not known.
  void Stroke(std::span<const GridPoint> points, bool closed, float penWidth, std::uint32_t argb,
              std::span<const PixelRect> parts = {});

  // Outlines the ellipse inscribed in the box. A box without width or height is a line, a negative
  // one nothing.
  void StrokeEllipse(const PixelRect& box, float penWidth, std::uint32_t argb);

  void Fill(const PixelRect& rect, std::uint32_t argb);

  // Stretches `source`, a rectangle of the picture, into `destination` and blends it. Draws nothing
  // if `source` is empty or reaches over the picture's edge.
  void DrawPicture(const PixelSource& picture, const PixelRect& source,
                   const PixelRect& destination);

  // Sets every pixel of the clip, alpha included.
  void Clear(std::uint32_t argb);

 private:
  PixelSurface surface;
  PixelRect clip;
  CoverageMask mask;
  Stroker stroker{mask};
};

}  // namespace raster
