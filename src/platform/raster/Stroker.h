// Turns lines and ellipses into coverage. Leaves out what lies outside the guard band, so that any
// coordinate is legal and what cannot be seen costs little.
#pragma once

#include <span>
#include <vector>

#include "platform/raster/CoverageMask.h"
#include "platform/raster/StrokePen.h"

namespace raster {

// Owned by one Rasterizer; used by one thread at a time.
class Stroker {
 public:
  explicit Stroker(CoverageMask& mask) : mask(mask), pen(mask) {}

  // Starts a stroke on a surface of `bounds`; points may lie anywhere.
  void Begin(const PixelRect& bounds, float width);

  // Covers the polyline through `points`; a closed one returns to its first point. Returns false
  // and covers nothing when all points fall on one pixel. `parts` as for Rasterizer::Stroke.
  bool Cover(std::span<const GridPoint> points, bool closed, std::span<const PixelRect> parts);

  // Covers the outline of the ellipse inscribed in the box.
  void CoverEllipse(const PixelRect& box);

 private:
  struct Vertex {
    double x, y;
  };

  static Vertex ToVertex(const GridPoint& point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
  }
  static StrokeContext ContextAt(const Vertex& end) {
    return {static_cast<float>(end.x), static_cast<float>(end.y)};
  }
  static void Take(StrokeContext& context, const Vertex& next) {
    context.Take(static_cast<float>(next.x), static_cast<float>(next.y));
  }
  static StrokeContext Before(std::span<const GridPoint> line, std::size_t first);
  static StrokeContext After(std::span<const GridPoint> line, std::size_t last);

  void CoverOpen(std::span<const GridPoint> line);
  void CoverParts(std::span<const GridPoint> line, std::span<const PixelRect> parts);
  void CoverClosed(std::span<const GridPoint> line);
  void CoverLoopFrom(std::span<const GridPoint> line, std::size_t start);
  void CoverVisibleLoop(std::span<const GridPoint> line);
  void CoverArc(const Vertex& center, const Vertex& radius, int first, int last, int steps);
  void Walk(Vertex from, Vertex to);

  CoverageMask& mask;
  StrokePen pen;
  float halfWidth = 0.5F;
  PixelRect guard;             // the surface and its guard band
  std::vector<double> angles;  // of an ellipse's vertices
};

}  // namespace raster
