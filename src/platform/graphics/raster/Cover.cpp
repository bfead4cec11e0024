#include "platform/graphics/raster/Cover.h"

#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/graphics/raster/Cover.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/graphics/raster/Cover-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

HWY_INLINE Plane At(const PlaneArrays& arrays, int i) {
  return {arrays.a[i], arrays.b[i], arrays.c[i]};
}

template <bool kThin>
HWY_INLINE void CoverSegment(const ChunkGeometry& g, int i, CoveragePlane& plane) {
  const Plane strip = At(g.strip, i);
  const Plane start = At(g.start, i);
  const Plane end = At(g.end, i);
  const StripLanes stripLanes(strip.a, strip.b, g.outer[i], g.inner[i]);
  PieceLanes<kThin, false> lanes(stripLanes, stripLanes, start, end);
  lanes.MoveTo(g.stripBase[i], 0, g.startBase[i], g.endBase[i]);
  const int rows = g.blocks[i] * kBlockRows;
  const int index = plane.Index(g.row[i]);
  const std::ptrdiff_t bytesStride = plane.ColumnStride();
  const std::ptrdiff_t bitsStride = plane.BitsStride();
  std::uint8_t* bytes = plane.Group(g.column[i], g.row[i]);
  std::uint64_t* bits = plane.Bits(g.column[i]);
  for (int columns = g.columns[i]; columns > 0; --columns) {
    CoveragePlane::NoteRows(bits, index, lanes.template Cover<false>(bytes, rows));
    bytes += bytesStride;
    bits += bitsStride;
    lanes.MoveToNextColumn();
  }
}

// The pieces of a chunk, a bit each, whose shape is `shape`.
HWY_INLINE std::uint64_t PiecesOf(const ChunkGeometry& g, std::uint8_t shape) {
  std::uint64_t pieces = 0;
  for (std::size_t i = 0; i < kChunkSegments; i += hn::Lanes(k8)) {
    std::uint8_t bits[8] = {};
    hn::StoreMaskBits(k8, hn::Eq(hn::LoadU(k8, g.shape + 1 + i), hn::Set(k8, shape)), bits);
    std::uint64_t word;
    std::memcpy(&word, bits, sizeof word);
    pieces |= word << i;
  }
  return pieces;
}

// Pieces of one shape are covered together: their loops are then as long as the ones before, which
// the processor guesses right. Coverage adds up the same in any order.
template <bool kThin>
void CoverSegments(const ChunkGeometry& g, CoveragePlane& plane) {
  PixelRect box = {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
  std::uint64_t rest = ~PiecesOf(g, 0);
  while (rest != 0) {
    const std::uint64_t alike = PiecesOf(g, g.shape[1 + std::countr_zero(rest)]);
    rest &= ~alike;
    for (std::uint64_t pieces = alike; pieces != 0; pieces &= pieces - 1) {
      const int i = 1 + std::countr_zero(pieces);
      CoverSegment<kThin>(g, i, plane);
      box = Unite(box, {g.column[i], g.row[i], g.column[i] + g.columns[i],
                        g.row[i] + g.blocks[i] * kBlockRows});
    }
  }
  if (!box.IsEmpty()) {
    plane.NoteBox(box);
  }
}

void CoverThick(const ChunkGeometry& g, CoveragePlane& plane) {
  CoverSegments<false>(g, plane);
}
void CoverThin(const ChunkGeometry& g, CoveragePlane& plane) {
  CoverSegments<true>(g, plane);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(CoverThick);
HWY_EXPORT(CoverThin);

void CoverChunk(const ChunkGeometry& geometry, bool thin, CoveragePlane& plane) {
  if (thin) {
    HWY_DYNAMIC_DISPATCH(CoverThin)(geometry, plane);
  } else {
    HWY_DYNAMIC_DISPATCH(CoverThick)(geometry, plane);
  }
}

}  // namespace raster
#endif
