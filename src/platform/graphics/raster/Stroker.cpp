#include "platform/graphics/raster/Stroker.h"

#include <algorithm>

#include "platform/graphics/raster/Cover.h"
#include "platform/graphics/raster/LoosePieces.h"

namespace raster {
namespace {

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
  knownInSight = false;
}

bool Stroker::Cover(std::span<const GridPoint> line, bool closed,
                    std::span<const PixelRect> parts) {
  const auto differs = [&](const GridPoint& point) { return point != line.front(); };
  if (std::none_of(line.begin(), line.end(), differs)) {
    return false;
  }
  if (closed) {
    CoverClosed(line);
  } else if (parts.empty()) {
    CoverOpen(line);
  } else {
    CoverParts(line, parts);
  }
  return true;
}

// Neighbouring parts in sight are covered in one go.
void Stroker::CoverParts(std::span<const GridPoint> line, std::span<const PixelRect> parts) {
  knownInSight = true;
  const auto isInSight = [&](std::size_t part) {
    return !Intersect(parts[part], plane.Clip()).IsEmpty();
  };
  for (std::size_t part = 0; part < parts.size(); ++part) {
    if (!isInSight(part)) {
      continue;
    }
    const std::size_t first = part;
    while (part + 1 < parts.size() && isInSight(part + 1)) {
      ++part;
    }
    CoverStretch(line, first * kPartSegments,
                 std::min((part + 1) * kPartSegments, line.size() - 1));
  }
}

// Where the line comes from and goes to counts for the joints at either end.
void Stroker::CoverStretch(std::span<const GridPoint> line, std::size_t first, std::size_t last) {
  std::size_t before = first;
  while (before > 0 && line[before] == line[first]) {
    --before;
  }
  std::size_t after = last;
  while (after + 1 < line.size() && line[after] == line[last]) {
    ++after;
  }
  if (line[before] == line[first]) {
    MoveTo(static_cast<float>(line[first].x), static_cast<float>(line[first].y));
  } else {
    MoveToFrom(ToVertex(line[before]), ToVertex(line[first]));
  }
  FollowNear(line.subspan(first, last - first + 1));
  if (line[after] == line[last]) {
    LiftPen();
  } else if (count >= 2) {
    LiftPenTowards(ToVertex(line[after]));
  }
  count = 0;
}

// LineTo for every point but the first, where the pen is, as many at a time as the chunk has room
// for.
void Stroker::FollowNear(std::span<const GridPoint> line) {
  std::size_t next = 1;
  while (next < line.size()) {
    const std::size_t room = static_cast<std::size_t>(kChunkSegments + 2 - count);
    const std::size_t taken = TakePoints(&line[next - 1], std::min(line.size() - next, room),
                                         points.x + count + 1, points.y + count + 1);
    count += static_cast<int>(taken);
    next += taken;
    if (count == kChunkSegments + 2) {
      FlushFull();
    } else {
      ++next;  // past a repeated point, or the end
    }
  }
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
      Walk(ToVertex(last), ToVertex(point));
    }
    last = point;
    lastInside = inside;
  }
  LiftPen();
}

void Stroker::CoverClosed(std::span<const GridPoint> line) {
  const auto outside = std::find_if(
      line.begin(), line.end(), [&](const GridPoint& point) { return !InGuard(point.x, point.y); });
  const auto next = [&](std::span<const GridPoint>::iterator at) {
    return at + 1 == line.end() ? line.begin() : at + 1;
  };
  if (outside != line.end()) {
    // It may as well start where nobody sees whether the ends meet.
    auto at = outside;
    do {
      Walk(ToVertex(*at), ToVertex(*next(at)));
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
  MoveToFrom(ToVertex(*last), ToVertex(first));
  for (const GridPoint& point : line.subspan(1)) {
    LineTo(static_cast<float>(point.x), static_cast<float>(point.y));
  }
  LineTo(static_cast<float>(first.x), static_cast<float>(first.y));
  const auto second = std::find_if(line.begin(), line.end(),
                                   [&](const GridPoint& point) { return point != first; });
  LiftPenTowards(ToVertex(*second));
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
    FlushFull();
  }
}

// Covers a full chunk and starts the next one with its last points.
void Stroker::FlushFull() {
  Flush(kChunkSegments);
  for (int i = 0; i < 3; ++i) {
    points.x[i] = points.x[kChunkSegments + i];
    points.y[i] = points.y[kChunkSegments + i];
  }
  count = 2;
  startKnown = true;
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
  if (!knownInSight && !IsInSight()) {
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
