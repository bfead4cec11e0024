#include "platform/raster/CoverageMask.h"

#include <bit>
#include <cstring>
#include <limits>

namespace raster {

void CoverageMask::SetClip(const PixelRect& newClip) {
  clip = newClip;
  firstColumn = ColumnOf(clip.left);
  columnCount = ColumnOf(clip.right - 1) - firstColumn + 1;
  const int height = static_cast<int>(clip.Height());
  // Even, so that pairs of rows are aligned to 16 bytes.
  const int rows = (height + 2 * kSlackRows + 1) & ~1;
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

void CoverageMask::MaskSlack() {
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  slack.assign(static_cast<std::size_t>(wordsPerColumn), 0);
  const int height = static_cast<int>(clip.Height());
  for (int word = 0; word < wordsPerColumn; ++word) {
    const int above = std::clamp(kSlackRows - word * 64, 0, 64);
    const int inside = std::clamp(kSlackRows + height - word * 64, 0, 64);
    slack[static_cast<std::size_t>(word)] =
        (inside == 64 ? 0 : kAll << inside) | (above == 0 ? 0 : kAll >> (64 - above));
  }
}

void CoverageMask::Restart() {
  firstWord = firstTouched = std::numeric_limits<int>::max();
  lastWord = lastTouched = -1;
}

void CoverageMask::ClearSlack(std::uint8_t* top, std::uint64_t rows) {
  for (std::uint64_t rest = rows; rest != 0; rest &= rest - 1) {
    std::memset(top + std::countr_zero(rest) * kGroup, 0, kGroup);
  }
}

}  // namespace raster
