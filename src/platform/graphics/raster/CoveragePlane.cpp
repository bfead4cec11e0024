#include "platform/graphics/raster/CoveragePlane.h"

#include <bit>
#include <cstring>
#include <limits>

namespace raster {

void CoveragePlane::SetClip(const PixelRect& newClip) {
  clip = newClip;
  firstColumn = clip.left >> 3;
  columnCount = ((clip.right - 1) >> 3) - firstColumn + 1;
  const int rows = clip.Height() + 2 * kSlackRows;
  columnStride = static_cast<std::ptrdiff_t>(rows) * kGroup;
  wordsPerColumn = (rows + 63) / 64;
  const auto needed = static_cast<std::size_t>(columnStride) * columnCount;
  if (bytes.size() < needed) {
    bytes.resize(needed);
  }
  const auto neededWords = static_cast<std::size_t>(wordsPerColumn) * columnCount;
  if (bits.size() < neededWords) {
    bits.resize(neededWords);
  }
  firstWord = firstTouched = std::numeric_limits<int>::max();
  lastWord = lastTouched = -1;
}

void CoveragePlane::MarkAcrossWords(std::uint64_t* word, int columns, int bit, int rows) {
  for (int i = 0; i < columns; ++i, word += wordsPerColumn) {
    std::uint64_t* next = word;
    *next |= ~std::uint64_t{0} << bit;
    int rest = rows - (64 - bit);
    for (++next; rest >= 64; rest -= 64, ++next) {
      *next = ~std::uint64_t{0};
    }
    if (rest > 0) {
      *next |= ~std::uint64_t{0} >> (64 - rest);
    }
  }
}

void CoveragePlane::ExtractColumn(int column, std::ptrdiff_t stride, std::uint64_t keep,
                                  GroupList& groups) {
  std::uint8_t* const top = bytes.data() + column * columnStride;
  const std::ptrdiff_t first = (firstColumn + column) * kGroup + (clip.top - kSlackRows) * stride;
  std::uint64_t* const words = bits.data() + static_cast<std::ptrdiff_t>(column) * wordsPerColumn;
  const std::size_t room = static_cast<std::size_t>(clip.Height());
  if (groups.offsets.size() < groups.count + room) {
    groups.offsets.resize(groups.count + room + groups.count / 2);
    groups.coverage.resize(groups.offsets.size());
  }
  std::uint32_t* const offsets = groups.offsets.data();
  std::uint64_t* const coverage = groups.coverage.data();
  std::size_t count = groups.count;
  for (int w = firstWord; w <= lastWord; ++w) {
    std::uint64_t rest = words[w];
    words[w] = 0;
    while (rest != 0) {
      const int row = w * 64 + std::countr_zero(rest);
      rest &= rest - 1;
      std::uint64_t value;
      std::memcpy(&value, top + row * kGroup, sizeof value);
      std::memset(top + row * kGroup, 0, sizeof value);
      if (row < kSlackRows || row >= kSlackRows + clip.Height()) {
        continue;
      }
      // An empty group is overwritten by the next one: no branch that would be guessed wrong.
      value &= keep;
      offsets[count] = static_cast<std::uint32_t>(first + row * stride);
      coverage[count] = value;
      count += value != 0 ? 1 : 0;
    }
  }
  groups.count = count;
}

void CoveragePlane::Extract(std::ptrdiff_t stride, GroupList& groups, GroupList& cutGroups) {
  for (int column = firstTouched; column <= lastTouched; ++column) {
    const int left = (firstColumn + column) * kGroup;
    const int cutLeft = std::max(0, clip.left - left);
    const int cutRight = std::max(0, left + kGroup - clip.right);
    const std::uint64_t all = ~std::uint64_t{0};
    if (cutLeft + cutRight == 0) {
      ExtractColumn(column, stride, all, groups);
    } else {
      const std::uint64_t keep = (all << (8 * cutLeft)) & (all >> (8 * cutRight));
      ExtractColumn(column, stride, keep, cutGroups);
    }
  }
  firstWord = firstTouched = std::numeric_limits<int>::max();
  lastWord = lastTouched = -1;
}

}  // namespace raster
