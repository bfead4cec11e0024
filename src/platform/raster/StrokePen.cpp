#include "platform/raster/StrokePen.h"

#include <algorithm>
#include <bit>

#include "platform/raster/CellPieces.h"
#include "platform/raster/Cover.h"
#include "platform/raster/StrokeRules.h"

namespace raster {

void StrokePen::Begin(float newHalfWidth, bool newIsCulled) {
  halfWidth = newHalfWidth;
  isCulled = newIsCulled;
  filled = kLifted;
}

void StrokePen::MoveTo(const StrokeContext& before) {
  known = before.count;
  for (int i = 0; i <= known; ++i) {
    points.x[kContext - i] = before.x[i];
    points.y[kContext - i] = before.y[i];
  }
  filled = kContext + 1;
}

// Takes as many points at a time as the chunk has room for.
void StrokePen::LineThrough(std::span<const GridPoint> line) {
  std::size_t next = 1;
  while (next < line.size()) {
    const std::size_t room = static_cast<std::size_t>(kFull - filled);
    const std::size_t taken = TakePoints(&line[next - 1], std::min(line.size() - next, room),
                                         points.x + filled, points.y + filled);
    filled += static_cast<int>(taken);
    next += taken;
    if (filled == kFull) {
      FlushFull();
    } else {
      ++next;  // past a repeated point, or the end
    }
  }
}

void StrokePen::Lift() {
  if (IsDown()) {
    Lift(StrokeContext(points.x[filled - 1], points.y[filled - 1]));
  }
}

void StrokePen::Lift(const StrokeContext& after) {
  const int segments = filled - kContext - 1;
  if (segments > 0) {
    for (int i = 1; i <= kContext; ++i, ++filled) {
      if (i <= after.count) {
        points.x[filled] = after.x[i];
        points.y[filled] = after.y[i];
      } else {
        Extrapolate(filled, -1);
      }
    }
    Flush(segments, kContext - after.count);
  }
  filled = kLifted;
}

// Sets the point `i` straight on from its two neighbours in the direction `back`: a flat cap is the
// seam to a segment that goes straight on.
void StrokePen::Extrapolate(int i, int back) {
  points.x[i] = 2 * points.x[i + back] - points.x[i + 2 * back];
  points.y[i] = 2 * points.y[i + back] - points.y[i + 2 * back];
}

// Covers a full chunk and starts the next one with its last points.
void StrokePen::FlushFull() {
  Flush(kChunkSegments, 0);
  for (int i = 0; i <= 2 * kContext; ++i) {
    points.x[i] = points.x[kChunkSegments + i];
    points.y[i] = points.y[kChunkSegments + i];
  }
  known = kContext;
  filled = 2 * kContext + 1;
}

// Whether anything of the chunk can touch the clip, the longest mitre included.
bool StrokePen::MayTouchClip() const {
  const float margin = kMitreLimit * halfWidth + kFringePixels;
  const auto reaches = [&](const float* values, int low, int high) {
    float least = values[kContext];
    float most = values[kContext];
    for (int i = kContext + 1; i <= points.segments + kContext; ++i) {
      least = std::min(least, values[i]);
      most = std::max(most, values[i]);
    }
    return least - margin <= static_cast<float>(high) && most + margin >= static_cast<float>(low);
  };
  const PixelRect& clip = mask.Clip();
  return reaches(points.x, clip.left, clip.right) && reaches(points.y, clip.top, clip.bottom);
}

void StrokePen::Flush(int segments, int syntheticAfter) {
  for (int i = kContext - 1 - known; i >= 0; --i) {
    Extrapolate(i, 1);
  }
  points.segments = segments;
  points.syntheticBefore = kContext - known;
  points.syntheticAfter = syntheticAfter;
  if (isCulled || MayTouchClip()) {
    MeasureChunk(points, halfWidth, mask.Clip(), geometry);
    CoverChunk(geometry, halfWidth < kThickHalfWidth, mask);
    CoverUnfinished();
  }
}

void StrokePen::CoverUnfinished() {
  for (std::uint64_t rest = geometry.unfinished; rest != 0; rest &= rest - 1) {
    const int i = kContext + std::countr_zero(rest);
    if (geometry.fitsLanes[i] == 0 && geometry.columns[i] > 0 && geometry.blocks[i] > 0) {
      CoverCellPiece(MakeCellPiece(points, geometry, i, halfWidth), mask);
    }
    if (geometry.seamed[i] == 0) {
      CoverCorner(points, geometry, i, halfWidth, mask);
    }
  }
}

}  // namespace raster
