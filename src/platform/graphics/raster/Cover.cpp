#include "platform/graphics/raster/Cover.h"

#include <bit>
#include <cmath>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/graphics/raster/Cover.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/graphics/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

using DU16 = hn::RebindToUnsigned<D16>;
constexpr DU16 kU16;

// Of the rows that a pair of vectors holds, the first vector has the even ones, the second the odd
// ones, so that packing the two puts the rows in order.

HWY_INLINE V16 Set(int value) {
  return hn::Set(k16, static_cast<std::int16_t>(value));
}

alignas(64) constexpr std::int16_t kLaneX[32] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7,
                                                 0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7};
alignas(64) constexpr std::int16_t kLaneY[32] = {0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2, 2, 2, 2, 2, 2,
                                                 4, 4, 4, 4, 4, 4, 4, 4, 6, 6, 6, 6, 6, 6, 6, 6};

// One plane over the lanes of a pair, in 16 bits modulo 2^16: only the values within a piece's box
// have to fit, not those on the way.
struct PlaneLanes {
  V16 offset;  // of a lane of the first vector from the pair's first pixel
  V16 odd;     // from the first vector to the second
  V16 step;    // from one pair to the next below
  V16 column;  // from one column to the next

  explicit HWY_INLINE PlaneLanes(int a, int b)
      : offset(hn::Add(hn::Mul(hn::Load(k16, kLaneX), Set(a)),
                       hn::Mul(hn::Load(k16, kLaneY), Set(b)))),
        odd(Set(b)),
        step(Set(b * kPairRows)),
        column(Set(a * kGroup)) {}
};

struct PlaneValues {
  V16 even, odd;

  HWY_INLINE PlaneValues(const PlaneLanes& lanes, V16 first)
      : even(first), odd(hn::Add(first, lanes.odd)) {}
  HWY_INLINE void Advance(const PlaneLanes& lanes) {
    even = hn::Add(even, lanes.step);
    odd = hn::Add(odd, lanes.step);
  }
  // The values as coverage bytes: 0 and less is 0, 255 and more is 255.
  HWY_INLINE V8 Ramp() const { return PackBlocks(even, odd); }
};

HWY_INLINE V8 RampBelow(V16 limit, const PlaneValues& d) {
  return PackBlocks(hn::Sub(limit, d.even), hn::Sub(limit, d.odd));
}

// Coverage by the strip |d| <= w/2: each edge is the mean of two ramps. Of a thin strip both edges
// count.
template <bool kThin>
HWY_INLINE V8 StripCoverage(V16 outer, V16 inner, const PlaneValues& d) {
  if constexpr (kThin) {
    const V8 low = hn::AverageRound(RampBelow(outer, d), RampBelow(inner, d));
    PlaneValues other = d;
    other.even = hn::Neg(d.even);
    other.odd = hn::Neg(d.odd);
    const V8 high = hn::AverageRound(RampBelow(outer, other), RampBelow(inner, other));
    return hn::SaturatedSub(low, hn::Not(high));
  } else {
    PlaneValues distance = d;
    distance.even = hn::Abs(d.even);
    distance.odd = hn::Abs(d.odd);
    return hn::AverageRound(RampBelow(outer, distance), RampBelow(inner, distance));
  }
}

// a b / 255 of bytes, exact where either is 255: ((257 a) (257 b) >> 16) >> 8.
HWY_INLINE V8 Product(V8 a, V8 b) {
  const auto high = [](V8 x, V8 y) {
    const auto product = hn::MulHigh(hn::BitCast(kU16, x), hn::BitCast(kU16, y));
    return hn::BitCast(k16, hn::ShiftRight<8>(product));
  };
  return PackBlocks(high(hn::InterleaveLower(k8, a, a), hn::InterleaveLower(k8, b, b)),
                    high(hn::InterleaveUpper(k8, a, a), hn::InterleaveUpper(k8, b, b)));
}

// A bit for every row of a pair: set when its eight pixels are all 0.
HWY_INLINE std::uint64_t EmptyRows(V8 coverage) {
  std::uint8_t bits[8] = {};
  hn::StoreMaskBits(k64, hn::Eq(hn::BitCast(k64, coverage), hn::Zero(k64)), bits);
  return bits[0];
}

// The lanes of a piece, ready to cover any stretch of a column.
template <bool kThin>
class PieceLanes {
 public:
  HWY_INLINE PieceLanes(const Plane& strip, const Plane& start, const Plane& end, int outer,
                        int inner)
      : strip(strip.a, strip.b),
        start(start.a, start.b),
        end(end.a, end.b),
        outer(Set(outer)),
        inner(Set(inner)) {}

  // Stands at the first pixel of a column, where the planes have these values.
  HWY_INLINE void MoveTo(int stripBase, int startBase, int endBase) {
    d0 = hn::Add(strip.offset, Set(stripBase));
    s0 = hn::Add(start.offset, Set(startBase));
    e0 = hn::Add(end.offset, Set(endBase));
  }
  HWY_INLINE void MoveToNextColumn() {
    d0 = hn::Add(d0, strip.column);
    s0 = hn::Add(s0, start.column);
    e0 = hn::Add(e0, end.column);
  }

  // Covers `rows` rows, at most 64, from `bytes` on, which are those of the pixel that it stands
  // at. Gives a bit for every row that is not left empty. Unless kExact, as many more rows are
  // covered as fill up the last block.
  template <bool kExact>
  HWY_INLINE std::uint64_t Cover(std::uint8_t* HWY_RESTRICT bytes, int rows) const {
    PlaneValues d(strip, d0);
    PlaneValues s(start, s0);
    PlaneValues e(end, e0);
    std::uint64_t empty = 0;
    for (int row = 0; row < rows; row += kPairRows) {
      // Start ramp less end ramp: the share of a seam that the neighbour takes is left out exactly.
      const V8 between = hn::SaturatedSub(s.Ramp(), e.Ramp());
      V8 coverage = Product(StripCoverage<kThin>(outer, inner, d), between);
      if constexpr (kExact) {
        const auto wanted = hn::FirstN(k64, static_cast<std::size_t>(rows - row));
        coverage = hn::BitCast(k8, hn::IfThenElseZero(wanted, hn::BitCast(k64, coverage)));
      }
      hn::StoreU(hn::SaturatedAdd(hn::LoadU(k8, bytes), coverage), k8, bytes);
      empty |= EmptyRows(coverage) << row;
      bytes += kPairRows * kGroup;
      d.Advance(strip);
      s.Advance(start);
      e.Advance(end);
    }
    return ~empty & (~std::uint64_t{0} >> (64 - rows));
  }

 private:
  PlaneLanes strip, start, end;
  V16 outer, inner;
  V16 d0, s0, e0;  // the planes in the first vector of the column's first pair
};

HWY_INLINE Plane At(const PlaneArrays& arrays, int i) {
  return {arrays.a[i], arrays.b[i], arrays.c[i]};
}

template <bool kThin>
HWY_INLINE void CoverSegment(const ChunkGeometry& g, int i, CoveragePlane& plane) {
  const Plane strip = At(g.strip, i);
  const Plane start = At(g.start, i);
  const Plane end = At(g.end, i);
  PieceLanes<kThin> lanes(strip, start, end, g.outer[i], g.inner[i]);
  lanes.MoveTo(g.stripBase[i], g.startBase[i], g.endBase[i]);
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

constexpr int kCellRows = 16;

// A plane's value, brought so near to the ramp's range that 16 bits hold it over a whole cell:
// beyond, every pixel of the cell lies past the ramp anyhow.
HWY_INLINE int Near(double value) {
  constexpr double kFar = 20000;
  return static_cast<int>(std::floor(std::min(std::max(value, -kFar), kFar) + 0.5));
}

// The rows of a column that the strip may touch: a x + b y + c within the outer ramp's reach.
HWY_INLINE void NarrowRows(const LoosePiece& piece, int column, float& top, float& bottom) {
  if (std::abs(piece.b) < 1) {
    return;
  }
  const double reach = piece.outer + 2.0;
  const double left = piece.a * (column * kGroup) + piece.c;
  const double right = left + piece.a * (kGroup - 1);
  const double y0 = -(std::min(left, right) - reach) / piece.b;
  const double y1 = -(std::max(left, right) + reach) / piece.b;
  top = static_cast<float>(std::max<double>(top, std::min(y0, y1)));
  bottom = static_cast<float>(std::min<double>(bottom, std::max(y0, y1)));
}

template <bool kThin>
HWY_INLINE void CoverCell(const LoosePiece& p, PieceLanes<kThin>& lanes, int column, int row,
                          int count, CoveragePlane& plane) {
  // The strip's plane is exact in the middle of its cell, wherever the clip lets it start.
  const int x = column * kGroup;
  const int middleRow = (row & ~(kCellRows - 1)) + kCellRows / 2;
  const double middle = p.a * (x + kGroup / 2) + p.b * middleRow + p.c;
  const int stripBase = Near(middle) - p.strip.a * (kGroup / 2) - p.strip.b * (middleRow - row);
  const auto end = [&](const Plane& q) {
    return Near(static_cast<double>(q.a) * x + static_cast<double>(q.b) * row + q.c);
  };
  lanes.MoveTo(stripBase, end(p.start), end(p.end));
  const std::uint64_t rows = lanes.template Cover<true>(plane.Group(column, row), count);
  CoveragePlane::NoteRows(plane.Bits(column), plane.Index(row), rows);
}

template <bool kThin>
void CoverCells(const LoosePiece& piece, CoveragePlane& plane) {
  const PixelRect& clip = plane.Clip();
  const int firstColumn = std::max(static_cast<int>(std::ceil(piece.left)) >> 3, clip.left >> 3);
  const int lastColumn =
      std::min(static_cast<int>(std::floor(piece.right)) >> 3, (clip.right - 1) >> 3);
  PieceLanes<kThin> lanes(piece.strip, piece.start, piece.end, piece.outer, piece.inner);
  for (int column = firstColumn; column <= lastColumn; ++column) {
    float top = piece.top;
    float bottom = piece.bottom;
    NarrowRows(piece, column, top, bottom);
    const int first = std::max(static_cast<int>(std::ceil(top)), clip.top);
    const int end = std::min(static_cast<int>(std::floor(bottom)) + 1, clip.bottom);
    if (first >= end) {
      continue;
    }
    plane.NoteBox({column, first, column + 1, end});
    for (int row = first; row < end;) {
      const int cellEnd = std::min((row & ~(kCellRows - 1)) + kCellRows, end);
      CoverCell<kThin>(piece, lanes, column, row, cellEnd - row, plane);
      row = cellEnd;
    }
  }
}

void CoverLoose(const LoosePiece& piece, CoveragePlane& plane) {
  if (piece.thin) {
    CoverCells<true>(piece, plane);
  } else {
    CoverCells<false>(piece, plane);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(CoverThick);
HWY_EXPORT(CoverThin);
HWY_EXPORT(CoverLoose);

void CoverChunk(const ChunkGeometry& geometry, bool thin, CoveragePlane& plane) {
  if (thin) {
    HWY_DYNAMIC_DISPATCH(CoverThin)(geometry, plane);
  } else {
    HWY_DYNAMIC_DISPATCH(CoverThick)(geometry, plane);
  }
}

void CoverLoosePiece(const LoosePiece& piece, CoveragePlane& plane) {
  HWY_DYNAMIC_DISPATCH(CoverLoose)(piece, plane);
}

}  // namespace raster
#endif
