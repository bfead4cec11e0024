#include "support/ExactCoverage.h"

#include <algorithm>
#include <cmath>

namespace exact {
namespace {

constexpr int kLines = 16;  // a pixel
constexpr double kMitreLimit = 10;

constexpr Corner kQuarterTurn = {0, 1};

Corner Direction(Corner from, Corner to) {
  return (to - from) / std::abs(to - from);
}

Polygon Segment(Corner from, Corner to, double half) {
  const Corner n = half * kQuarterTurn * Direction(from, to);
  return {from + n, to + n, to - n, from - n};
}

Polygon Joint(Corner at, Corner before, Corner after, double half) {
  const Corner turn = std::conj(before) * after;
  const Corner aside = (turn.imag() > 0 ? -half : half) * kQuarterTurn;
  const Corner a = at + aside * before;
  const Corner b = at + aside * after;
  // The mitre's length over the pen's width is 1 / cos(turn / 2).
  const double halfCosine = std::sqrt(std::max(0.0, (1 + turn.real()) / 2));
  if (halfCosine * kMitreLimit < 1) {
    return {at, a, b};
  }
  const Corner middle = 0.5 * (a + b) - at;
  return {at, a, at + half * half / std::norm(middle) * middle, b};
}

struct Range {
  double low = 1e300;
  double high = -1e300;
};

// Where the horizontal line at `y` meets a convex polygon.
Range Across(const Polygon& polygon, double y) {
  Range range;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Corner& a = polygon[i];
    const Corner& b = polygon[(i + 1) % polygon.size()];
    if ((a.imag() <= y) != (b.imag() <= y)) {
      const double x = (a + (y - a.imag()) / (b - a).imag() * (b - a)).real();
      range.low = std::min(range.low, x);
      range.high = std::max(range.high, x);
    }
  }
  return range;
}

// Adds the share of each pixel of a row that the union of the ranges covers, `weight` for a whole
// one. Pixel p reaches from p - 1/2 to p + 1/2.
void AddUnion(std::vector<Range>& ranges, double weight, std::span<double> row) {
  std::sort(ranges.begin(), ranges.end(),
            [](const Range& a, const Range& b) { return a.low < b.low; });
  double done = 0;
  for (const Range& range : ranges) {
    const double end = std::min(range.high + 0.5, static_cast<double>(row.size()));
    for (double at = std::max(range.low + 0.5, done); at < end;) {
      const double next = std::min(std::floor(at) + 1, end);
      row[static_cast<std::size_t>(at)] += weight * (next - at);
      at = next;
    }
    done = std::max(done, end);
  }
}

}  // namespace

std::vector<Polygon> StrokePolygons(std::vector<Corner> line, double width) {
  line.erase(std::unique(line.begin(), line.end()), line.end());
  std::vector<Polygon> polygons;
  for (std::size_t i = 1; i < line.size(); ++i) {
    polygons.push_back(Segment(line[i - 1], line[i], width / 2));
    if (i + 1 < line.size()) {
      polygons.push_back(Joint(line[i], Direction(line[i - 1], line[i]),
                               Direction(line[i], line[i + 1]), width / 2));
    }
  }
  return polygons;
}

std::vector<double> Coverage(std::span<const Polygon> polygons, int width, int height) {
  std::vector<std::vector<Range>> lines(static_cast<std::size_t>(height) * kLines);
  for (const Polygon& polygon : polygons) {
    const auto [top, bottom] =
        std::minmax_element(polygon.begin(), polygon.end(),
                            [](const Corner& a, const Corner& b) { return a.imag() < b.imag(); });
    const double last = std::min((bottom->imag() + 0.5) * kLines, height * kLines - 1.0);
    for (double line = std::max(0.0, std::floor((top->imag() + 0.5) * kLines)); line <= last;
         ++line) {
      lines[static_cast<std::size_t>(line)].push_back(Across(polygon, (line + 0.5) / kLines - 0.5));
    }
  }
  std::vector<double> coverage(static_cast<std::size_t>(width) * height);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    AddUnion(lines[i], 1.0 / kLines, std::span(coverage).subspan(i / kLines * width, width));
  }
  return coverage;
}

}  // namespace exact
