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

std::vector<Corner> Distinct(std::vector<Corner> line, bool closed) {
  line.erase(std::unique(line.begin(), line.end()), line.end());
  while (closed && line.size() > 1 && line.back() == line.front()) {
    line.pop_back();
  }
  return line;
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

std::vector<Polygon> StrokePolygons(const std::vector<Corner>& points, bool closed, double width) {
  std::vector<Polygon> polygons;
  const std::vector<Corner> line = Distinct(points, closed);
  const std::size_t count = line.size();
  if (count < 2) {
    return polygons;
  }
  const auto at = [&](std::size_t i) { return line[i % count]; };
  for (std::size_t i = closed ? 0 : 1; i < count; ++i) {
    polygons.push_back(Segment(at(i + count - 1), at(i), width / 2));
  }
  for (std::size_t i = closed ? 0 : 1; i < count - (closed ? 0 : 1); ++i) {
    polygons.push_back(
        Joint(at(i), Direction(at(i + count - 1), at(i)), Direction(at(i), at(i + 1)), width / 2));
  }
  return polygons;
}

std::vector<double> Coverage(std::span<const Polygon> polygons, int width, int height) {
  std::vector<double> coverage(static_cast<std::size_t>(width) * height);
  std::vector<Range> heights(polygons.size());
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    for (const Corner& corner : polygons[i]) {
      heights[i].low = std::min(heights[i].low, corner.imag());
      heights[i].high = std::max(heights[i].high, corner.imag());
    }
  }
  std::vector<Range> ranges;
  for (int line = 0; line < height * kLines; ++line) {
    const double y = (line + 0.5) / kLines - 0.5;
    ranges.clear();
    for (std::size_t i = 0; i < polygons.size(); ++i) {
      if (heights[i].low <= y && y <= heights[i].high) {
        ranges.push_back(Across(polygons[i], y));
      }
    }
    AddUnion(ranges, 1.0 / kLines,
             std::span(coverage).subspan(static_cast<std::size_t>(line / kLines) * width, width));
  }
  return coverage;
}

}  // namespace exact
