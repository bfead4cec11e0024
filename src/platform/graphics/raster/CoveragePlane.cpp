#include "platform/graphics/raster/CoveragePlane.h"

#include <bit>
#include <cstring>
#include <limits>

namespace raster {

void CoveragePlane::SetClip(const PixelRect& newClip) {
  clip = newClip;
  firstColumn = clip.left >> 3;
  columnCount = ((clip.right - 1) >> 3) - firstColumn + 1;
  // Even, so that pairs of rows are aligned to 16 bytes.
  const int rows = (clip.Height() + 2 * kSlackRows + 1) & ~1;
  columnStride = static_cast<std::ptrdiff_t>(rows) * kGroup;
  wordsPerColumn = (rows + 63) / 64 + 1;
  const auto needed = static_cast<std::size_t>(columnStride) * columnCount;
  if (bytes.size() < needed) {
    bytes.resize(needed);
  }
  const auto neededWords = static_cast<std::size_t>(wordsPerColumn) * columnCount;
  if (bits.size() < neededWords) {
    bits.resize(neededWords);
  }
  MaskSlack();
  Restart();
}

void CoveragePlane::MaskSlack() {
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  slack.assign(static_cast<std::size_t>(wordsPerColumn), 0);
  for (int word = 0; word < wordsPerColumn; ++word) {
    const int above = std::clamp(kSlackRows - word * 64, 0, 64);
    const int inside = std::clamp(kSlackRows + clip.Height() - word * 64, 0, 64);
    slack[static_cast<std::size_t>(word)] =
        (inside == 64 ? 0 : kAll << inside) | (above == 0 ? 0 : kAll >> (64 - above));
  }
}

void CoveragePlane::Restart() {
  firstWord = firstTouched = std::numeric_limits<int>::max();
  lastWord = lastTouched = -1;
}

void CoveragePlane::ClearSlack(std::uint8_t* top, std::uint64_t rows) {
  for (std::uint64_t rest = rows; rest != 0; rest &= rest - 1) {
    std::memset(top + std::countr_zero(rest) * kGroup, 0, kGroup);
  }
}

}  // namespace raster
