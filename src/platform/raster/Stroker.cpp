#include "platform/raster/Stroker.h"

#include <algorithm>

#include "platform/raster/StrokeRules.h"

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
  guard = GuardBand(bounds);
}

bool Stroker::Cover(std::span<const GridPoint> line, bool closed,
                    std::span<const PixelRect> parts) {
  const auto differs = [&](const GridPoint& point) { return point != line.front(); };
  if (std::none_of(line.begin(), line.end(), differs)) {
    return false;
  }
  const bool byParts = !closed && !parts.empty();
  pen.Begin(halfWidth, byParts);
  if (closed) {
    CoverClosed(line);
  } else if (byParts) {
    CoverParts(line, parts);
  } else {
    CoverOpen(line);
  }
  return true;
}

StrokeContext Stroker::Before(std::span<const GridPoint> line, std::size_t first) {
  StrokeContext context = ContextAt(ToVertex(line[first]));
  while (first > 0 && !context.IsFull()) {
    Take(context, ToVertex(line[--first]));
  }
  return context;
}

StrokeContext Stroker::After(std::span<const GridPoint> line, std::size_t last) {
  StrokeContext context = ContextAt(ToVertex(line[last]));
  while (last + 1 < line.size() && !context.IsFull()) {
    Take(context, ToVertex(line[++last]));
  }
  return context;
}

// Covers neighbouring parts that touch the clip as one run.
void Stroker::CoverParts(std::span<const GridPoint> line, std::span<const PixelRect> parts) {
  const auto touchesClip = [&](std::size_t part) {
    return !Intersect(parts[part], mask.Clip()).IsEmpty();
  };
  for (std::size_t part = 0; part < parts.size(); ++part) {
    if (!touchesClip(part)) {
      continue;
    }
    const std::size_t first = part * kPartSegments;
    while (part + 1 < parts.size() && touchesClip(part + 1)) {
      ++part;
    }
    const std::size_t last = std::min((part + 1) * kPartSegments, line.size() - 1);
    pen.MoveTo(Before(line, first));
    pen.LineThrough(line.subspan(first, last - first + 1));
    pen.Lift(After(line, last));
  }
}

void Stroker::CoverOpen(std::span<const GridPoint> line) {
  GridPoint last = line.front();
  bool lastInside = IsWithin(guard, last.x, last.y);
  if (lastInside) {
    pen.MoveTo(static_cast<float>(last.x), static_cast<float>(last.y));
  }
  for (const GridPoint& point : line.subspan(1)) {
    if (point == last) {
      continue;
    }
    const bool inside = IsWithin(guard, point.x, point.y);
    // There is no run yet if the line only touched the guard band's edge from outside.
    if (inside && lastInside && pen.IsDown()) {
      pen.LineTo(static_cast<float>(point.x), static_cast<float>(point.y));
    } else {
      Walk(ToVertex(last), ToVertex(point));
    }
    last = point;
    lastInside = inside;
  }
  pen.Lift();
}

void Stroker::CoverClosed(std::span<const GridPoint> line) {
  const auto outside = std::find_if(line.begin(), line.end(), [&](const GridPoint& point) {
    return !IsWithin(guard, point.x, point.y);
  });
  if (outside != line.end()) {
    CoverLoopFrom(line, static_cast<std::size_t>(outside - line.begin()));
  } else {
    CoverVisibleLoop(line);
  }
}

// Starts and ends at a point outside the guard band, where the ends need not meet.
void Stroker::CoverLoopFrom(std::span<const GridPoint> line, std::size_t start) {
  std::size_t at = start;
  do {
    const std::size_t next = at + 1 == line.size() ? 0 : at + 1;
    Walk(ToVertex(line[at]), ToVertex(line[next]));
    at = next;
  } while (at != start);
  pen.Lift();
}

void Stroker::CoverVisibleLoop(std::span<const GridPoint> line) {
  const Vertex first = ToVertex(line.front());
  StrokeContext before = ContextAt(first);
  StrokeContext after = before;
  for (std::size_t i = line.size(); !before.IsFull(); i = i == 0 ? line.size() : i) {
    Take(before, ToVertex(line[--i]));
  }
  for (std::size_t i = 1 % line.size(); !after.IsFull(); i = (i + 1) % line.size()) {
    Take(after, ToVertex(line[i]));
  }
  pen.MoveTo(before);
  for (const GridPoint& point : line.subspan(1)) {
    pen.LineTo(static_cast<float>(point.x), static_cast<float>(point.y));
  }
  pen.LineTo(static_cast<float>(first.x), static_cast<float>(first.y));
  pen.Lift(after);
}

// Moves the pen along a segment, cut to the guard band.
void Stroker::Walk(Vertex from, Vertex to) {
  double low = 0;
  double high = 1;
  CutRange(from.x, to.x - from.x, guard.left, guard.right, low, high);
  CutRange(from.y, to.y - from.y, guard.top, guard.bottom, low, high);
  if (low >= high) {
    pen.Lift();
    return;
  }
  const auto at = [&](double t) {
    return Vertex{from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)};
  };
  if (low > 0) {
    pen.Lift();
  }
  if (!pen.IsDown()) {
    const Vertex start = low > 0 ? at(low) : from;
    pen.MoveTo(static_cast<float>(start.x), static_cast<float>(start.y));
  }
  const Vertex stop = high < 1 ? at(high) : to;
  pen.LineTo(static_cast<float>(stop.x), static_cast<float>(stop.y));
  if (high < 1) {
    pen.Lift();
  }
}

}  // namespace raster
