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
  wordsPerColumn = (rows + 63) / 64 + 1;
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

void CoveragePlane::ExtractColumn(int column, std::ptrdiff_t stride, std::uint64_t keep,
                                  GroupList& groups) {
  const std::ptrdiff_t room = clip.Height();
  if (groups.offsets.size() < groups.count + room) {
    groups.offsets.resize(groups.count + room + groups.count / 2);
    groups.coverage.resize(groups.offsets.size());
  }
  std::uint32_t* offset = groups.offsets.data() + groups.count;
  std::uint64_t* coverage = groups.coverage.data() + groups.count;
  std::uint64_t* const words = bits.data() + column * static_cast<std::ptrdiff_t>(wordsPerColumn);
  const auto step = static_cast<std::uint32_t>(stride);
  for (int w = firstWord; w <= lastWord; ++w) {
    std::uint64_t rest = words[w];
    words[w] = 0;
    std::uint8_t* const top = bytes.data() + column * columnStride + w * 64 * kGroup;
    ClearSlack(top, w, rest);
    const std::ptrdiff_t row = clip.top - kSlackRows + w * 64;
    const auto first = static_cast<std::uint32_t>((firstColumn + column) * kGroup + row * stride);
    while (rest != 0) {
      const auto bit = static_cast<std::uint32_t>(std::countr_zero(rest));
      rest &= rest - 1;
      std::uint64_t value;
      std::memcpy(&value, top + bit * kGroup, sizeof value);
      std::memset(top + bit * kGroup, 0, sizeof value);
      *offset++ = first + bit * step;
      *coverage++ = value & keep;
    }
  }
  groups.count = static_cast<std::size_t>(offset - groups.offsets.data());
}

// Blocks may reach past the clip's rows: those are cleared and taken out of the word's bits.
void CoveragePlane::ClearSlack(std::uint8_t* top, int word, std::uint64_t& wordBits) const {
  const int above = std::clamp(kSlackRows - word * 64, 0, 64);
  const int inside = std::clamp(kSlackRows + clip.Height() - word * 64, 0, 64);
  if (above == 0 && inside == 64) {
    return;
  }
  const std::uint64_t all = ~std::uint64_t{0};
  const std::uint64_t below = inside == 64 ? 0 : all << inside;
  const std::uint64_t outside = wordBits & (below | (above == 0 ? 0 : all >> (64 - above)));
  wordBits &= ~outside;
  for (std::uint64_t rest = outside; rest != 0; rest &= rest - 1) {
    std::memset(top + std::countr_zero(rest) * kGroup, 0, kGroup);
  }
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
