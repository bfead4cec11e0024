// Turns the points of a stroke into coverage, chunk by chunk: no outline, no copy of the stroke.
#pragma once

#include <span>
#include <vector>

#include "platform/graphics/raster/CoveragePlane.h"
#include "platform/graphics/raster/StrokeChunk.h"

namespace raster {

// Owned by one Rasterizer; used by one thread at a time.
class Stroker {
 public:
  explicit Stroker(CoveragePlane& plane) : plane(plane) {}

  // Starts a stroke on a surface of `bounds`; points may lie anywhere.
  void Begin(const PixelRect& bounds, float width);

  // Covers the polyline through `points`; a closed one returns to its first point. Gives false and
  // covers nothing when all points fall on one pixel. `parts` as for Rasterizer::Stroke.
  bool Cover(std::span<const GridPoint> points, bool closed, std::span<const PixelRect> parts);

  // Covers the outline of the ellipse inscribed in the box from (x, y), `width` x `height` pixels
  // further.
  void CoverEllipse(double x, double y, double width, double height);

 private:
  static constexpr int kNoRun = 0;
  // A run is covered when it has so many points: the next chunk begins with the last ones.
  static constexpr int kFull = kContext + kChunkSegments + 1 + kContext;

  struct Vertex {
    double x, y;
  };

  static Vertex ToVertex(const GridPoint& point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
  }

  template <class T>
  bool InGuard(T x, T y) const {
    return x >= guard.left && x <= guard.right && y >= guard.top && y <= guard.bottom;
  }
  // The stroke's points next to a stretch of it, the nearest first, none like the one before: where
  // it comes from or goes to.
  class Context {
   public:
    explicit Context(Vertex from) : x{static_cast<float>(from.x)}, y{static_cast<float>(from.y)} {}
    bool IsFull() const { return count == kContext; }
    void Take(Vertex next);

    int count = 0;
    float x[1 + kContext];  // from 1 on
    float y[1 + kContext];
  };

  static Context Before(std::span<const GridPoint> line, std::size_t first);
  static Context Behind(std::span<const GridPoint> line, std::size_t last);
  void CoverOpen(std::span<const GridPoint> points);
  void CoverParts(std::span<const GridPoint> points, std::span<const PixelRect> parts);
  void CoverStretch(std::span<const GridPoint> points, std::size_t first, std::size_t last);
  void FollowNear(std::span<const GridPoint> points);
  void CoverClosed(std::span<const GridPoint> points);
  void FollowArc(const Vertex& center, const Vertex& radius, int first, int last, int steps);

  // The pen that walks from vertex to vertex; what lies outside the guard is left out.
  void Walk(Vertex from, Vertex to);
  void MoveTo(float x, float y);
  void LineTo(float x, float y);
  void LiftPen();

  // Of a run that is not the whole of an open stroke.
  void MoveToFrom(const Context& before);
  void LiftPenTowards(const Context& behind);
  void GoOn(int i, int back);
  void Flush(int segments, int madeUpBehind);
  void FlushFull();
  bool IsInSight() const;

  CoveragePlane& plane;
  float halfWidth = 0.5F;
  PixelRect guard;  // the surface and what lies so near that it may matter
  ChunkPoints points = {};
  ChunkGeometry geometry;
  std::vector<double> angles;  // of an ellipse's vertices
  int filled = kNoRun;         // points in the chunk, those before its first one counted
  int known = 0;               // how many of the points before the chunk are the stroke's own
  bool knownInSight = false;   // whoever feeds the points passes over those out of sight
};

}  // namespace raster
