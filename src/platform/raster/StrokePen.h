// The pen of a stroke: walks from point to point and covers what it walked, chunk by chunk.
#pragma once

#include <span>

#include "platform/raster/CoverageMask.h"
#include "platform/raster/StrokeChunk.h"

namespace raster {

// Up to kContext points before or after a run, the nearest first, no two neighbours equal: where
// the stroke comes from or goes on to.
struct StrokeContext {
  StrokeContext(float x, float y) : x{x}, y{y} {}

  bool IsFull() const { return count == kContext; }
  // Adds the next point unless it repeats the last one.
  void Take(float nextX, float nextY) {
    if (nextX != x[count] || nextY != y[count]) {
      ++count;
      x[count] = nextX;
      y[count] = nextY;
    }
  }

  int count = 0;
  // The end of the run itself at 0, the context at 1 .. count.
  float x[1 + kContext];
  float y[1 + kContext];
};

// Owned by one Stroker; used by one thread at a time.
//
// A run goes from a MoveTo to the next Lift. Its points gather in a chunk; a full one is measured
// and covered, and the next one starts with its last points.
class StrokePen {
 public:
  explicit StrokePen(CoverageMask& mask) : mask(mask) {}

  // Starts a stroke. `isCulled`: the caller leaves out what lies outside the clip.
  void Begin(float halfWidth, bool isCulled);

  // Starts a run in the middle of a stroke.
  void MoveTo(const StrokeContext& before);
  // Starts a run where the stroke begins, with a flat cap.
  void MoveTo(float x, float y) { MoveTo(StrokeContext(x, y)); }
  void LineTo(float x, float y) {
    if (x == points.x[filled - 1] && y == points.y[filled - 1]) {
      return;
    }
    points.x[filled] = x;
    points.y[filled] = y;
    ++filled;
    if (filled == kFull) {
      FlushFull();
    }
  }
  // Does LineTo for every point but the first, where the pen is.
  void LineThrough(std::span<const GridPoint> line);
  // Ends the run in the middle of a stroke.
  void Lift(const StrokeContext& after);
  // Ends the run with a flat cap, if there is one.
  void Lift();

  bool IsDown() const { return filled != kLifted; }

 private:
  static constexpr int kLifted = 0;
  // A chunk with so many points is covered.
  static constexpr int kFull = kContext + kChunkSegments + 1 + kContext;

  void Extrapolate(int i, int back);
  bool MayTouchClip() const;
  void Flush(int segments, int syntheticAfter);
  void FlushFull();
  void CoverUnfinished();

  CoverageMask& mask;
  float halfWidth = 0.5F;
  bool isCulled = false;
  ChunkPoints points = {};
  ChunkGeometry geometry;
  int filled = kLifted;  // points in the chunk, those before its first one counted
  int known = 0;         // how many of the points before the chunk are the stroke's own
};

}  // namespace raster
