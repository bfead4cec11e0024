#include "platform/graphics/raster/Stroker.h"

#include <algorithm>

#include "platform/graphics/raster/Cover.h"
#include "platform/graphics/raster/LoosePieces.h"

namespace raster {
namespace {

// Nothing further from the surface than this matters, the longest mitre of the widest pen included.
constexpr int kGuard = 512;

// Cuts the parameter range `low` .. `high` of from + t delta to `least` .. `most` along one axis.
void CutRange(double from, double delta, double least, double most, double& low, double& high) {
  if (delta == 0) {
    if (from < least || from > most) {
      high = -1;
    }
    return;
  }
  const double t0 = (least - from) / delta;
  const double t1 = (most - from) / delta;
  low = std::max(low, std::min(t0, t1));
  high = std::min(high, std::max(t0, t1));
}

}  // namespace

void Stroker::Begin(const PixelRect& bounds, float width) {
  halfWidth = width / 2;
  guard = {bounds.left - kGuard, bounds.top - kGuard, bounds.right + kGuard,
           bounds.bottom + kGuard};
  count = 0;
}

bool Stroker::Cover(std::span<const GridPoint> line, bool closed) {
  const auto differs = [&](const GridPoint& point) { return point != line.front(); };
  if (std::none_of(line.begin(), line.end(), differs)) {
    return false;
  }
  if (closed) {
    CoverClosed(line);
  } else {
    CoverOpen(line);
  }
  return true;
}

void Stroker::CoverOpen(std::span<const GridPoint> line) {
  GridPoint last = line.front();
  bool lastInside = InGuard(last.x, last.y);
  if (lastInside) {
    MoveTo(static_cast<float>(last.x), static_cast<float>(last.y));
  }
  for (const GridPoint& point : line.subspan(1)) {
    if (point == last) {
      continue;
    }
    const bool inside = InGuard(point.x, point.y);
    if (inside && lastInside) {
      LineTo(static_cast<float>(point.x), static_cast<float>(point.y));
    } else {
      Walk({static_cast<double>(last.x), static_cast<double>(last.y)},
           {static_cast<double>(point.x), static_cast<double>(point.y)});
    }
    last = point;
    lastInside = inside;
  }
  LiftPen();
}

void Stroker::CoverClosed(std::span<const GridPoint> line) {
  const auto vertex = [](const GridPoint& point) {
    return Vertex{static_cast<double>(point.x), static_cast<double>(point.y)};
  };
  const auto outside = std::find_if(
      line.begin(), line.end(), [&](const GridPoint& point) { return !InGuard(point.x, point.y); });
  const auto next = [&](std::span<const GridPoint>::iterator at) {
    return at + 1 == line.end() ? line.begin() : at + 1;
  };
  if (outside != line.end()) {
    // It may as well start where nobody sees whether the ends meet.
    auto at = outside;
    do {
      Walk(vertex(*at), vertex(*next(at)));
      at = next(at);
    } while (at != outside);
    LiftPen();
    return;
  }
  const GridPoint first = line.front();
  auto last = line.end() - 1;
  while (*last == first) {
    --last;
  }
  MoveToFrom(vertex(*last), vertex(first));
  for (const GridPoint& point : line.subspan(1)) {
    LineTo(static_cast<float>(point.x), static_cast<float>(point.y));
  }
  LineTo(static_cast<float>(first.x), static_cast<float>(first.y));
  const auto second = std::find_if(line.begin(), line.end(),
                                   [&](const GridPoint& point) { return point != first; });
  LiftPenTowards(vertex(*second));
}

void Stroker::Walk(Vertex from, Vertex to) {
  double low = 0;
  double high = 1;
  CutRange(from.x, to.x - from.x, guard.left, guard.right, low, high);
  CutRange(from.y, to.y - from.y, guard.top, guard.bottom, low, high);
  if (low >= high) {
    LiftPen();
    return;
  }
  const auto at = [&](double t) {
    return Vertex{from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)};
  };
  if (low > 0) {
    LiftPen();
  }
  if (count == 0) {
    const Vertex start = low > 0 ? at(low) : from;
    MoveTo(static_cast<float>(start.x), static_cast<float>(start.y));
  }
  const Vertex end = high < 1 ? at(high) : to;
  LineTo(static_cast<float>(end.x), static_cast<float>(end.y));
  if (high < 1) {
    LiftPen();
  }
}

void Stroker::MoveTo(float x, float y) {
  points.x[1] = x;
  points.y[1] = y;
  count = 1;
  startKnown = false;
}

void Stroker::MoveToFrom(Vertex before, Vertex first) {
  MoveTo(static_cast<float>(first.x), static_cast<float>(first.y));
  points.x[0] = static_cast<float>(before.x);
  points.y[0] = static_cast<float>(before.y);
  startKnown = true;
}

void Stroker::LineTo(float x, float y) {
  if (x == points.x[count] && y == points.y[count]) {
    return;
  }
  ++count;
  points.x[count] = x;
  points.y[count] = y;
  if (count == kChunkSegments + 2) {
    Flush(kChunkSegments);
    for (int i = 0; i < 3; ++i) {
      points.x[i] = points.x[kChunkSegments + i];
      points.y[i] = points.y[kChunkSegments + i];
    }
    count = 2;
    startKnown = true;
  }
}

// A flat cap is the seam to a segment that goes straight on.
void Stroker::LiftPen() {
  if (count >= 2) {
    const int last = count;
    LiftPenTowards(
        {2.0 * points.x[last] - points.x[last - 1], 2.0 * points.y[last] - points.y[last - 1]});
  }
  count = 0;
}

void Stroker::LiftPenTowards(Vertex next) {
  points.x[count + 1] = static_cast<float>(next.x);
  points.y[count + 1] = static_cast<float>(next.y);
  Flush(count - 1);
  count = 0;
}

// Whether anything of the chunk can touch the clip, the longest mitre included.
bool Stroker::IsInSight() const {
  const float margin = 10 * halfWidth + 2;
  const auto reaches = [&](const float* values, int low, int high) {
    float least = values[1];
    float most = values[1];
    for (int i = 2; i <= points.segments + 1; ++i) {
      least = std::min(least, values[i]);
      most = std::max(most, values[i]);
    }
    return least - margin <= static_cast<float>(high) && most + margin >= static_cast<float>(low);
  };
  const PixelRect& clip = plane.Clip();
  return reaches(points.x, clip.left, clip.right) && reaches(points.y, clip.top, clip.bottom);
}

void Stroker::Flush(int segments) {
  if (!startKnown) {
    points.x[0] = 2 * points.x[1] - points.x[2];
    points.y[0] = 2 * points.y[1] - points.y[2];
  }
  points.segments = segments;
  if (!IsInSight()) {
    return;
  }
  MeasureChunk(points, halfWidth, plane.Clip(), geometry);
  CoverChunk(geometry, halfWidth < kThickHalfWidth, plane);
  for (int i = 1; i <= segments; ++i) {
    if (geometry.narrow[i] == 0 && geometry.columns[i] > 0 && geometry.blocks[i] > 0) {
      CoverLoosePiece(MakeLongPiece(points, geometry, i, halfWidth), plane);
    }
    if (geometry.good[i] == 0) {
      CoverCorner(points, geometry, i, halfWidth, plane);
    }
  }
}

}  // namespace raster
