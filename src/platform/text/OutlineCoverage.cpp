#include "platform/text/OutlineCoverage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::size_t kMargin = 2;

OutlinePoint AtHeight(const OutlinePoint& from, const OutlinePoint& to, double y) {
  return {from.x + (to.x - from.x) * ((y - from.y) / (to.y - from.y)), y};
}

double HeightAt(const OutlinePoint& from, const OutlinePoint& to, double x) {
  const double y = from.y + (to.y - from.y) * ((x - from.x) / (to.x - from.x));
  return std::clamp(y, from.y, to.y);
}

}  // namespace

OutlineCoverage::OutlineCoverage(int width, int height)
    : width(width),
      height(height),
      steps((static_cast<std::size_t>(width) + kMargin) * static_cast<std::size_t>(height)) {}

void OutlineCoverage::AddEdge(OutlinePoint from, OutlinePoint to) {
  const double direction = from.y < to.y ? 1 : -1;
  if (from.y > to.y) {
    std::swap(from, to);
  }
  if (from.y == to.y || to.y <= 0 || from.y >= height) {
    return;
  }
  const OutlinePoint upper = from.y < 0 ? AtHeight(from, to, 0) : from;
  const OutlinePoint lower = to.y > height ? AtHeight(from, to, height) : to;
  // What lies left of the pixels covers whole rows of them; what lies right, none.
  double cuts[] = {upper.y, upper.y, lower.y, lower.y};
  const double sides[] = {0.0, static_cast<double>(width)};
  int cut = 1;
  for (const double side : sides) {
    if ((upper.x < side) != (lower.x < side)) {
      cuts[cut++] = HeightAt(upper, lower, side);
    }
  }
  if (cut == 3 && cuts[1] > cuts[2]) {
    std::swap(cuts[1], cuts[2]);
  }
  cuts[cut] = lower.y;
  for (int i = 0; i < cut; ++i) {
    if (cuts[i] < cuts[i + 1]) {
      AddClipped(AtHeight(upper, lower, cuts[i]), AtHeight(upper, lower, cuts[i + 1]), direction);
    }
  }
}

// Adds a part of an edge that lies left of the pixels, among them, or right of them.
void OutlineCoverage::AddClipped(const OutlinePoint& upper, const OutlinePoint& lower,
                                 double direction) {
  const auto within = [this](double x) { return std::clamp(x, 0.0, static_cast<double>(width)); };
  const int last = std::min(height - 1, static_cast<int>(lower.y));
  for (int y = static_cast<int>(upper.y); y <= last; ++y) {
    const double top = std::max(upper.y, static_cast<double>(y));
    const double bottom = std::min(lower.y, y + 1.0);
    if (top < bottom) {
      const double x0 = within(AtHeight(upper, lower, top).x);
      const double x1 = within(AtHeight(upper, lower, bottom).x);
      AddToRow(
          steps.data() + (static_cast<std::size_t>(width) + kMargin) * static_cast<std::size_t>(y),
          std::min(x0, x1), std::max(x0, x1), (bottom - top) * direction);
    }
  }
}

// Adds an edge from x0 to x1 >= x0 that runs through `height` of a row.
void OutlineCoverage::AddToRow(double* row, double x0, double x1, double edgeHeight) {
  const auto first = static_cast<std::size_t>(x0);
  const auto last = static_cast<std::size_t>(x1);
  for (std::size_t x = first; x <= last; ++x) {
    const auto left = static_cast<double>(x);
    const double from = std::max(x0, left);
    const double to = std::min(x1, left + 1);
    const double part = x0 == x1 ? edgeHeight : edgeHeight * (to - from) / (x1 - x0);
    const double covered = part * (left + 1 - (from + to) / 2);
    row[x] += covered;
    row[x + 1] += part - covered;
  }
}

std::vector<std::uint8_t> OutlineCoverage::Coverage() const {
  std::vector<std::uint8_t> coverage;
  coverage.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    const double* row =
        steps.data() + (static_cast<std::size_t>(width) + kMargin) * static_cast<std::size_t>(y);
    double sum = 0;
    for (int x = 0; x < width; ++x) {
      sum += row[x];
      coverage.push_back(static_cast<std::uint8_t>(std::min(std::abs(sum), 1.0) * 255 + 0.5));
    }
  }
  return coverage;
}
