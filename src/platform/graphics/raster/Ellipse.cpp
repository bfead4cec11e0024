#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <vector>

#include "platform/graphics/raster/Stroker.h"

namespace raster {
namespace {

// A chord over the angle 2 h of a circle of radius r errs by r (1 - cos h) <= r h^2 / 2. The pen's
// outer edge runs on the larger radius.
constexpr double kChordError = 1.0 / 16;

// A power of two, so that halving the circle meets every vertex: what is skipped out of sight never
// changes the vertices in sight.
int StepsFor(double radius) {
  const double steps = std::numbers::pi / std::sqrt(2 * kChordError / std::max(radius, 1.0));
  return static_cast<int>(std::exp2(std::ceil(std::log2(std::max(steps, 16.0)))));
}

constexpr int kTurns = 64;

// Even steps of the circle that the ellipse is squeezed from keep to the chord error. A flat
// ellipse turns about within a few of them, which would leave sharp corners: even steps of the
// normal's angle as well.
void ListVertexAngles(double radiusX, double radiusY, int steps, std::vector<double>& angles) {
  angles.clear();
  for (int step = 0; step < steps; ++step) {
    angles.push_back(2 * std::numbers::pi * step / steps);
  }
  if (4 * std::min(radiusX, radiusY) < std::max(radiusX, radiusY)) {
    for (int turn = 0; turn < kTurns; ++turn) {
      const double normal = 2 * std::numbers::pi * (turn + 0.5) / kTurns;
      const double angle = std::atan2(radiusY * std::sin(normal), radiusX * std::cos(normal));
      angles.push_back(angle < 0 ? angle + 2 * std::numbers::pi : angle);
    }
    std::sort(angles.begin(), angles.end());
  }
}

constexpr int kWholeArc = 32;  // arcs of this many steps or less are followed step by step

}  // namespace

void Stroker::CoverEllipse(double x, double y, double width, double height) {
  const Vertex radius{width / 2, height / 2};
  const Vertex center{x + radius.x, y + radius.y};
  const int steps = StepsFor(std::max(radius.x, radius.y) + halfWidth);
  if (!InGuard(x, y) || !InGuard(x + width, y + height)) {
    FollowArc(center, radius, 0, steps, steps);
    LiftPen();
    return;
  }
  ListVertexAngles(radius.x, radius.y, steps, angles);
  const auto vertex = [&](double angle) {
    return Vertex{center.x + radius.x * std::cos(angle), center.y + radius.y * std::sin(angle)};
  };
  const Vertex first = vertex(angles.front());
  Context before(first);
  Context behind(first);
  for (std::size_t i = 1; !before.IsFull(); ++i) {
    before.Take(vertex(angles[angles.size() - i]));
  }
  for (std::size_t i = 1; !behind.IsFull(); ++i) {
    behind.Take(vertex(angles[i]));
  }
  MoveToFrom(before);
  for (const double angle : std::span(angles).subspan(1)) {
    const Vertex next = vertex(angle);
    LineTo(static_cast<float>(next.x), static_cast<float>(next.y));
  }
  LineTo(static_cast<float>(first.x), static_cast<float>(first.y));
  LiftPenTowards(behind);
}

// An arc lies within the box of its ends and middle, grown by its sagitta.
void Stroker::FollowArc(const Vertex& center, const Vertex& radius, int first, int last,
                        int steps) {
  const auto at = [&](int step) {
    const double angle = 2 * std::numbers::pi * step / steps;
    return Vertex{center.x + radius.x * std::cos(angle), center.y + radius.y * std::sin(angle)};
  };
  const Vertex start = at(first);
  const Vertex end = at(last);
  const double half = std::numbers::pi * (last - first) / steps;
  const double bulge =
      (1 - std::cos(std::min(half, std::numbers::pi))) * std::max(radius.x, radius.y);
  if (std::max(start.x, end.x) + bulge < guard.left ||
      std::min(start.x, end.x) - bulge > guard.right ||
      std::max(start.y, end.y) + bulge < guard.top ||
      std::min(start.y, end.y) - bulge > guard.bottom) {
    LiftPen();
    return;
  }
  if (last - first > kWholeArc) {
    const int middle = first + (last - first) / 2;
    FollowArc(center, radius, first, middle, steps);
    FollowArc(center, radius, middle, last, steps);
    return;
  }
  for (int step = first; step < last; ++step) {
    Walk(at(step), at(step + 1));
  }
}

}  // namespace raster
