#include "platform/raster/Cover.h"

#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/raster/Cover.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/raster/Cover-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

HWY_INLINE HalfPlaneLanes At(const LaneArrays& arrays, int i) {
  return {SetTwice(arrays.a[i]), SetTwice(arrays.b[i])};
}

// Covers the segments at the set bits, all of `columns` columns and `blocks` blocks.
template <bool kThin>
HWY_INLINE void CoverAlike(const ChunkGeometry& g, std::uint64_t pieces, int columns, int blocks,
                           CoverageMask& mask) {
  const std::ptrdiff_t bytesStride = mask.ColumnStride();
  const std::ptrdiff_t bitsStride = mask.BitsStride();
  std::uint8_t* const allBytes = mask.Group(mask.FirstColumn(), mask.Clip().top);
  std::uint64_t* const allBits = mask.Bits(mask.FirstColumn());
  const int firstColumn = mask.FirstColumn();
  const int top = mask.Clip().top;
  const int firstIndex = mask.Index(top);
  for (; pieces != 0; pieces &= pieces - 1) {
    const int i = kContext + std::countr_zero(pieces);
    const StripLanes strip(At(g.strip, i), SetTwice(g.outer[i]), SetTwice(g.inner[i]));
    PieceLanes<kThin, false> lanes(strip, strip, At(g.start, i), At(g.end, i));
    lanes.MoveTo(SetTwice(g.strip.base[i]), hn::Zero(k16), SetTwice(g.start.base[i]),
                 SetTwice(g.end.base[i]));
    const std::ptrdiff_t column = g.column[i] - firstColumn;
    const std::ptrdiff_t row = g.row[i] - top;
    const int index = firstIndex + static_cast<int>(row);
    std::uint8_t* bytes = allBytes + column * bytesStride + row * kGroup;
    std::uint64_t* bits = allBits + column * bitsStride;
    for (int rest = columns; rest > 0; --rest) {
      CoverageMask::TouchRows(bits, index,
                              lanes.template Cover<false>(bytes, blocks * kBlockRows, 0));
      bytes += bytesStride;
      bits += bitsStride;
      lanes.MoveToNextColumn();
    }
  }
}

// The pieces of a chunk with this size class, a bit each.
HWY_INLINE std::uint64_t PiecesOf(const ChunkGeometry& g, std::uint8_t sizeClass) {
  std::uint64_t pieces = 0;
  for (std::size_t i = 0; i < 64; i += hn::Lanes(k8)) {
    const auto alike = hn::Eq(hn::LoadU(k8, g.sizeClass + kContext + i), hn::Set(k8, sizeClass));
    pieces |= BitsOf(k8, alike) << i;
  }
  return pieces;
}

// Pieces of one size class are covered together: their loops have the same lengths, which the
// processor then predicts, and the usual ones are unrolled. Coverage adds up the same in any order.
template <bool kThin>
void CoverSegments(const ChunkGeometry& g, CoverageMask& mask) {
  std::uint64_t rest = ~PiecesOf(g, 0);
  if (rest == 0) {
    return;
  }
  mask.TouchBox(g.box);
  while (rest != 0) {
    const int i = kContext + std::countr_zero(rest);
    const std::uint64_t alike = PiecesOf(g, g.sizeClass[i]);
    rest &= ~alike;
    switch (g.blocks[i]) {
      case 1:
        CoverAlike<kThin>(g, alike, g.columns[i], 1, mask);
        break;
      case 2:
        CoverAlike<kThin>(g, alike, g.columns[i], 2, mask);
        break;
      case 3:
        CoverAlike<kThin>(g, alike, g.columns[i], 3, mask);
        break;
      case 4:
        CoverAlike<kThin>(g, alike, g.columns[i], 4, mask);
        break;
      default:
        CoverAlike<kThin>(g, alike, g.columns[i], g.blocks[i], mask);
    }
  }
}

void CoverThick(const ChunkGeometry& g, CoverageMask& mask) {
  CoverSegments<false>(g, mask);
}
void CoverThin(const ChunkGeometry& g, CoverageMask& mask) {
  CoverSegments<true>(g, mask);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(CoverThick);
HWY_EXPORT(CoverThin);

void CoverChunk(const ChunkGeometry& geometry, bool thin, CoverageMask& mask) {
  if (thin) {
    HWY_DYNAMIC_DISPATCH(CoverThin)(geometry, mask);
  } else {
    HWY_DYNAMIC_DISPATCH(CoverThick)(geometry, mask);
  }
}

}  // namespace raster
#endif
