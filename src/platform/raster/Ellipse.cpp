#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <vector>

#include "platform/raster/Stroker.h"
#include "platform/raster/StrokeRules.h"

namespace raster {
namespace {

// A chord over the angle 2 h of a circle of radius r errs by r (1 - cos h) <= r h^2 / 2. The pen's
// outer edge runs on the larger radius.
constexpr double kChordError = 1.0 / 16;

// Returns a power of two, so that halving the circle meets every vertex: arcs that are left out
// never change the vertices of the others.
int StepsFor(double radius) {
  const double steps = std::numbers::pi / std::sqrt(2 * kChordError / std::max(radius, 1.0));
  return static_cast<int>(std::exp2(std::ceil(std::log2(std::max(steps, 16.0)))));
}

constexpr int kTurns = 64;

// Even steps of the circle that the ellipse is squeezed from keep to the chord error. A flat
// ellipse turns back within a few of them, which would leave sharp corners: it gets even steps of
// the normal's angle as well.
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

void Stroker::CoverEllipse(const PixelRect& box) {
  const Vertex radius{static_cast<double>(box.Width()) / 2, static_cast<double>(box.Height()) / 2};
  const Vertex center{box.left + radius.x, box.top + radius.y};
  const int steps = StepsFor(std::max(radius.x, radius.y) + halfWidth);
  pen.Begin(halfWidth, false);
  if (!IsWithin(guard, box.left, box.top) || !IsWithin(guard, box.right, box.bottom)) {
    CoverArc(center, radius, 0, steps, steps);
    pen.Lift();
    return;
  }
  ListVertexAngles(radius.x, radius.y, steps, angles);
  const auto vertex = [&](double angle) {
    return Vertex{center.x + radius.x * std::cos(angle), center.y + radius.y * std::sin(angle)};
  };
  const Vertex first = vertex(angles.front());
  StrokeContext before = ContextAt(first);
  StrokeContext after = before;
  for (std::size_t i = 1; !before.IsFull(); ++i) {
    Take(before, vertex(angles[angles.size() - i]));
  }
  for (std::size_t i = 1; !after.IsFull(); ++i) {
    Take(after, vertex(angles[i]));
  }
  pen.MoveTo(before);
  for (const double angle : std::span(angles).subspan(1)) {
    const Vertex next = vertex(angle);
    pen.LineTo(static_cast<float>(next.x), static_cast<float>(next.y));
  }
  pen.LineTo(static_cast<float>(first.x), static_cast<float>(first.y));
  pen.Lift(after);
}

// Covers an arc, or nothing of it outside the guard band: an arc lies within the box of its ends,
// grown by its sagitta.
void Stroker::CoverArc(const Vertex& center, const Vertex& radius, int first, int last, int steps) {
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
    pen.Lift();
    return;
  }
  if (last - first > kWholeArc) {
    const int middle = first + (last - first) / 2;
    CoverArc(center, radius, first, middle, steps);
    CoverArc(center, radius, middle, last, steps);
    return;
  }
  for (int step = first; step < last; ++step) {
    Walk(at(step), at(step + 1));
  }
}

}  // namespace raster
