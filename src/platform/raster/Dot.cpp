#include "platform/raster/Cover.h"

#include <algorithm>
#include <cmath>

namespace raster {
namespace {

constexpr int kLines = 16;  // sample lines in every row of pixels

// The share of the pixel from `left` to `left + 1` that lies between -reach and reach.
double Share(double left, double reach) {
  return std::max(0.0, std::min(left + 1, reach) - std::max(left, -reach));
}

double Coverage(int dx, int dy, double radius) {
  double sum = 0;
  for (int line = 0; line < kLines; ++line) {
    const double y = dy - 0.5 + (line + 0.5) / kLines;
    const double square = radius * radius - y * y;
    sum += square > 0 ? Share(dx - 0.5, std::sqrt(square)) : 0;
  }
  return sum / kLines;
}

}  // namespace

void CoverDot(GridPoint center, float radius, CoverageMask& mask) {
  const PixelRect& clip = mask.Clip();
  const int reach = static_cast<int>(std::ceil(radius + 0.5F));
  const auto cut = [](std::int64_t value, int low, int high) {
    return static_cast<int>(std::clamp<std::int64_t>(value, low, high));
  };
  const int top = cut(std::int64_t{center.y} - reach, clip.top, clip.bottom);
  const int bottom = cut(std::int64_t{center.y} + reach + 1, clip.top, clip.bottom);
  const int left = cut(std::int64_t{center.x} - reach, clip.left, clip.right);
  const int right = cut(std::int64_t{center.x} + reach + 1, clip.left, clip.right);
  if (left >= right || top >= bottom) {
    return;
  }
  const int endColumn = ColumnOf(right - 1) + 1;
  mask.TouchBox({ColumnOf(left), top, endColumn, bottom});
  for (int y = top; y < bottom; ++y) {
    for (int column = ColumnOf(left); column < endColumn; ++column) {
      CoverageMask::TouchRows(mask.Bits(column), mask.Index(y), 1);
    }
    for (int x = left; x < right; ++x) {
      const double coverage = Coverage(x - center.x, y - center.y, radius);
      mask.Group(ColumnOf(x), y)[x & (kGroup - 1)] =
          static_cast<std::uint8_t>(std::lround(coverage * 255));
    }
  }
}

}  // namespace raster
