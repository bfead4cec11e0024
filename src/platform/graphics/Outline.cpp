#include "platform/graphics/Outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kMitreLimit = 10.0;
constexpr double kFlatness = 1.0 / 16.0;  // pixels
constexpr int kMaxArcDepth = 24;

}  // namespace

OutlineBounds OutlineBounds::Around(int surfaceWidth, int surfaceHeight, double penWidth) {
  const double reach = kMitreLimit * penWidth / 2 + penWidth + 2;
  return {-reach, -reach, surfaceWidth + reach, surfaceHeight + reach};
}

void Outline::Begin(const OutlineBounds& bounds) {
  keep = bounds;
  corners.clear();
  kept.clear();
  runEnds.clear();
  runs.clear();
}

void Outline::Add(OutlinePoint point) {
  if (corners.empty() || corners.back() != point) {
    corners.push_back(point);
  }
}

void Outline::AddEllipse(OutlinePoint centre, double radiusX, double radiusY) {
  // Within a quarter both coordinates run one way, so an arc's box is that of its ends.
  constexpr double kQuarter = std::numbers::pi / 2;
  Add({centre.x + radiusX, centre.y});
  for (int quarter = 0; quarter < 4; ++quarter) {
    AddArc(centre, radiusX, radiusY, quarter * kQuarter, (quarter + 1) * kQuarter, 0);
  }
}

void Outline::AddArc(OutlinePoint centre, double radiusX, double radiusY, double from, double to,
                     int depth) {
  const auto at = [&](double angle) {
    return OutlinePoint{centre.x + radiusX * std::cos(angle), centre.y + radiusY * std::sin(angle)};
  };
  const OutlinePoint a = at(from);
  const OutlinePoint b = at(to);
  const bool canShow = std::max(a.x, b.x) >= keep.left && std::min(a.x, b.x) <= keep.right &&
                       std::max(a.y, b.y) >= keep.top && std::min(a.y, b.y) <= keep.bottom;
  const double middle = (from + to) / 2;
  // The curve's middle lies this far from the chord's: (1 - cos(half angle)) of its distance from
  // the centre.
  const double error = (1 - std::cos((to - from) / 2)) *
                       std::hypot(radiusX * std::cos(middle), radiusY * std::sin(middle));
  if (!canShow || error <= kFlatness || depth == kMaxArcDepth) {
    Add(b);
    return;
  }
  AddArc(centre, radiusX, radiusY, from, middle, depth + 1);
  AddArc(centre, radiusX, radiusY, middle, to, depth + 1);
}

void Outline::End(bool closed) {
  if (closed && corners.size() > 1 && corners.front() == corners.back()) {
    corners.pop_back();
  }
  const std::size_t count = corners.size();
  if (count < 2) {
    return;
  }
  std::size_t first = 0;
  if (closed) {
    // Starting out of sight, where there is such a corner, hides the seam of the closed line.
    first = static_cast<std::size_t>(
        std::find_if_not(corners.begin(), corners.end(),
                         [&](OutlinePoint corner) { return IsInside(corner); }) -
        corners.begin());
    if (first == count) {
      kept = corners;
      EndRun(true);
      return;
    }
  }
  const std::size_t segments = closed ? count : count - 1;
  for (std::size_t i = first; i < first + segments; ++i) {
    CutSegment(corners[i % count], corners[(i + 1) % count]);
  }
  EndRun(false);
  std::size_t start = 0;
  for (const std::size_t end : runEnds) {
    runs.push_back({std::span(kept).subspan(start, end - start), false});
    start = end;
  }
}

bool Outline::IsInside(OutlinePoint point) const {
  return point.x >= keep.left && point.x <= keep.right && point.y >= keep.top &&
         point.y <= keep.bottom;
}

// Liang and Barsky's clipping: the part of the segment within the bounds is that of the parameters
// between `enter` and `leave`.
void Outline::CutSegment(OutlinePoint from, OutlinePoint to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  double enter = 0;
  double leave = 1;
  const auto cut = [&](double direction, double room) {
    if (direction == 0) {
      if (room < 0) {
        leave = -1;
      }
    } else if (direction < 0) {
      enter = std::max(enter, room / direction);
    } else {
      leave = std::min(leave, room / direction);
    }
  };
  cut(-dx, from.x - keep.left);
  cut(dx, keep.right - from.x);
  cut(-dy, from.y - keep.top);
  cut(dy, keep.bottom - from.y);
  if (enter >= leave) {
    EndRun(false);
    return;
  }
  const std::size_t runStart = runEnds.empty() ? 0 : runEnds.back();
  if (enter > 0 || kept.size() == runStart) {
    EndRun(false);
    kept.push_back({from.x + enter * dx, from.y + enter * dy});
  }
  kept.push_back({from.x + leave * dx, from.y + leave * dy});
  if (leave < 1) {
    EndRun(false);
  }
}

void Outline::EndRun(bool closed) {
  const std::size_t start = runEnds.empty() ? 0 : runEnds.back();
  if (kept.size() == start) {
    return;
  }
  if (closed) {
    runs.push_back({std::span<const OutlinePoint>(kept).subspan(start), true});
    return;
  }
  runEnds.push_back(kept.size());
}
