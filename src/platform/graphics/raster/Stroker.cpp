#include "platform/graphics/raster/Stroker.h"

#include <algorithm>
#include <bit>

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
  filled = kNoRun;
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

void Stroker::Context::Take(Vertex next) {
  const auto nextX = static_cast<float>(next.x);
  const auto nextY = static_cast<float>(next.y);
  if (nextX != x[count] || nextY != y[count]) {
    ++count;
    x[count] = nextX;
    y[count] = nextY;
  }
}

Stroker::Context Stroker::Before(std::span<const GridPoint> line, std::size_t first) {
  Context context(ToVertex(line[first]));
  while (first > 0 && !context.IsFull()) {
    context.Take(ToVertex(line[--first]));
  }
  return context;
}

Stroker::Context Stroker::Behind(std::span<const GridPoint> line, std::size_t last) {
  Context context(ToVertex(line[last]));
  while (last + 1 < line.size() && !context.IsFull()) {
    context.Take(ToVertex(line[++last]));
  }
  return context;
}

void Stroker::CoverStretch(std::span<const GridPoint> line, std::size_t first, std::size_t last) {
  MoveToFrom(Before(line, first));
  FollowNear(line.subspan(first, last - first + 1));
  LiftPenTowards(Behind(line, last));
}

// LineTo for every point but the first, where the pen is, as many at a time as the chunk has room
// for.
void Stroker::FollowNear(std::span<const GridPoint> line) {
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
    // There is no run yet where the line did no more than touch the guard's edge from outside.
    if (inside && lastInside && filled != kNoRun) {
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
  const Vertex first = ToVertex(line.front());
  Context before(first);
  Context behind(first);
  for (auto at = line.end(); !before.IsFull(); at = at == line.begin() ? line.end() : at) {
    before.Take(ToVertex(*--at));
  }
  for (auto at = next(line.begin()); !behind.IsFull(); at = next(at)) {
    behind.Take(ToVertex(*at));
  }
  MoveToFrom(before);
  for (const GridPoint& point : line.subspan(1)) {
    LineTo(static_cast<float>(point.x), static_cast<float>(point.y));
  }
  LineTo(static_cast<float>(first.x), static_cast<float>(first.y));
  LiftPenTowards(behind);
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
  if (filled == kNoRun) {
    const Vertex start = low > 0 ? at(low) : from;
    MoveTo(static_cast<float>(start.x), static_cast<float>(start.y));
  }
  const Vertex stop = high < 1 ? at(high) : to;
  LineTo(static_cast<float>(stop.x), static_cast<float>(stop.y));
  if (high < 1) {
    LiftPen();
  }
}

void Stroker::MoveTo(float x, float y) {
  MoveToFrom(Context({x, y}));
}

// Where the stroke itself begins, it has a flat cap.
void Stroker::MoveToFrom(const Context& before) {
  known = before.count;
  for (int i = 0; i <= known; ++i) {
    points.x[kContext - i] = before.x[i];
    points.y[kContext - i] = before.y[i];
  }
  filled = kContext + 1;
}

void Stroker::LineTo(float x, float y) {
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

// Covers a full chunk and starts the next one with its last points.
void Stroker::FlushFull() {
  Flush(kChunkSegments, 0);
  for (int i = 0; i <= 2 * kContext; ++i) {
    points.x[i] = points.x[kChunkSegments + i];
    points.y[i] = points.y[kChunkSegments + i];
  }
  known = kContext;
  filled = 2 * kContext + 1;
}

void Stroker::LiftPen() {
  if (filled != kNoRun) {
    LiftPenTowards(Context({points.x[filled - 1], points.y[filled - 1]}));
  }
}

void Stroker::LiftPenTowards(const Context& behind) {
  const int segments = filled - kContext - 1;
  if (segments > 0) {
    for (int i = 1; i <= kContext; ++i, ++filled) {
      if (i <= behind.count) {
        points.x[filled] = behind.x[i];
        points.y[filled] = behind.y[i];
      } else {
        GoOn(filled, -1);
      }
    }
    Flush(segments, kContext - behind.count);
  }
  filled = kNoRun;
}

// Makes up the point `i` straight on from its two neighbours in the direction `back`. A flat cap is
// the seam to a segment that goes straight on.
void Stroker::GoOn(int i, int back) {
  points.x[i] = 2 * points.x[i + back] - points.x[i + 2 * back];
  points.y[i] = 2 * points.y[i + back] - points.y[i + 2 * back];
}

// Whether anything of the chunk can touch the clip, the longest mitre included.
bool Stroker::IsInSight() const {
  const float margin = 10 * halfWidth + 2;
  const auto reaches = [&](const float* values, int low, int high) {
    float least = values[kContext];
    float most = values[kContext];
    for (int i = kContext + 1; i <= points.segments + kContext; ++i) {
      least = std::min(least, values[i]);
      most = std::max(most, values[i]);
    }
    return least - margin <= static_cast<float>(high) && most + margin >= static_cast<float>(low);
  };
  const PixelRect& clip = plane.Clip();
  return reaches(points.x, clip.left, clip.right) && reaches(points.y, clip.top, clip.bottom);
}

void Stroker::Flush(int segments, int madeUpBehind) {
  for (int i = kContext - 1 - known; i >= 0; --i) {
    GoOn(i, 1);
  }
  points.segments = segments;
  points.madeUpBefore = kContext - known;
  points.madeUpBehind = madeUpBehind;
  if (!knownInSight && !IsInSight()) {
    return;
  }
  MeasureChunk(points, halfWidth, plane.Clip(), geometry);
  CoverChunk(geometry, halfWidth < kThickHalfWidth, plane);
  for (std::uint64_t rest = geometry.rough; rest != 0; rest &= rest - 1) {
    const int i = kContext + std::countr_zero(rest);
    if (geometry.narrow[i] == 0 && geometry.columns[i] > 0 && geometry.blocks[i] > 0) {
      CoverLoosePiece(MakeLongPiece(points, geometry, i, halfWidth), plane);
    }
    if (geometry.good[i] == 0) {
      CoverCorner(points, geometry, i, halfWidth, plane);
    }
  }
}

}  // namespace raster
