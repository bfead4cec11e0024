#include "platform/raster/Cover.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/raster/CoverCells.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/raster/Cover-inl.h"
#include "platform/raster/HalfPlane-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

constexpr int kCellRows = 16;

// A half-plane's value, clamped so that 16 bits hold it over a whole cell. Past the clamp every
// pixel of the cell lies outside the ramp.
HWY_INLINE int Clamped(double value) {
  constexpr double kFar = 20000;
  return static_cast<int>(std::floor(std::min(std::max(value, -kFar), kFar) + 0.5));
}

// A strip as its lanes see it: its steps in whole numbers, and which rows of a column it touches.
struct CellStrip {
  explicit HWY_INLINE CellStrip(const Strip& strip)
      : strip(strip),
        a(Single<double>::Rounded(strip.a)),
        b(Single<double>::Rounded(strip.b)),
        rowsPerUnit(std::abs(strip.b) < 1 ? 0 : 1 / strip.b) {}

  HWY_INLINE StripLanes Lanes() const {
    return {{Set(a), Set(b)}, Set(strip.outer), Set(strip.inner)};
  }

  // The rows of a column that the strip may touch: a x + b y + c within the outer ramp's reach.
  HWY_INLINE void NarrowRows(int column, float& top, float& bottom) const {
    if (rowsPerUnit == 0) {
      return;
    }
    const double reach = strip.outer + 2.0;
    const double left = strip.a * (column * kGroup) + strip.c;
    const double right = left + strip.a * (kGroup - 1);
    const double y0 = (reach - std::min(left, right)) * rowsPerUnit;
    const double y1 = (-reach - std::max(left, right)) * rowsPerUnit;
    top = static_cast<float>(std::max<double>(top, std::min(y0, y1)));
    bottom = static_cast<float>(std::min<double>(bottom, std::max(y0, y1)));
  }

  // The value at the first pixel of a column's row. It is exact in the middle of the whole cell, so
  // that it does not depend on where the clip cuts the cell.
  HWY_INLINE int Base(int column, int row) const {
    const int middleRow = (row & ~(kCellRows - 1)) + kCellRows / 2;
    const int middleX = column * kGroup + kGroup / 2;
    return Clamped(strip.a * middleX + strip.b * middleRow + strip.c) - a * (kGroup / 2) -
           b * (middleRow - row);
  }

  const Strip& strip;
  int a, b;
  double rowsPerUnit;  // 0 for a strip that is too steep to narrow a column's rows
};

HWY_INLINE int EndBase(const HalfPlane& end, int column, int row) {
  return Clamped(static_cast<double>(end.a) * (column * kGroup) + static_cast<double>(end.b) * row +
                 end.c);
}

// The bytes of a column's groups whose pixels lie within `first` .. `last`.
HWY_INLINE std::uint64_t BytesWithin(int column, int first, int last) {
  const int before = std::max(first - column * kGroup, 0);
  const int behind = std::max(column * kGroup + kGroup - 1 - last, 0);
  return ~std::uint64_t{0} << (8 * before) & ~std::uint64_t{0} >> (8 * behind);
}

// Touches no pixel outside the piece's box: the edges of a flat corner diverge so slowly that their
// ramps would still meet out there.
template <bool kThin, bool kMitre>
void CoverCells(const CellPiece& piece, CoverageMask& mask) {
  const PixelRect& clip = mask.Clip();
  const int firstPixel = static_cast<int>(std::ceil(piece.left));
  const int lastPixel = static_cast<int>(std::floor(piece.right));
  const int firstColumn = std::max(ColumnOf(firstPixel), ColumnOf(clip.left));
  const int lastColumn = std::min(ColumnOf(lastPixel), ColumnOf(clip.right - 1));
  const CellStrip strip(piece.strip);
  const CellStrip other(kMitre ? piece.other : piece.strip);
  PieceLanes<kThin, kMitre> lanes(strip.Lanes(), other.Lanes(),
                                  {Set(piece.start.a), Set(piece.start.b)},
                                  {Set(piece.end.a), Set(piece.end.b)});
  for (int column = firstColumn; column <= lastColumn; ++column) {
    float top = piece.top;
    float bottom = piece.bottom;
    strip.NarrowRows(column, top, bottom);
    if constexpr (kMitre) {
      other.NarrowRows(column, top, bottom);
    }
    const int first = std::max(static_cast<int>(std::ceil(top)), clip.top);
    const int end = std::min(static_cast<int>(std::floor(bottom)) + 1, clip.bottom);
    if (first >= end) {
      continue;
    }
    mask.TouchBox({column, first, column + 1, end});
    const std::uint64_t kept = BytesWithin(column, firstPixel, lastPixel);
    for (int row = first; row < end;) {
      const int cellEnd = std::min((row & ~(kCellRows - 1)) + kCellRows, end);
      lanes.MoveTo(Set(strip.Base(column, row)), Set(kMitre ? other.Base(column, row) : 0),
                   Set(EndBase(piece.start, column, row)), Set(EndBase(piece.end, column, row)));
      const std::uint64_t rows =
          lanes.template Cover<true>(mask.Group(column, row), cellEnd - row, kept);
      CoverageMask::TouchRows(mask.Bits(column), mask.Index(row), rows);
      row = cellEnd;
    }
  }
}

void CoverPiece(const CellPiece& piece, CoverageMask& mask) {
  if (piece.isMitre) {
    piece.thin ? CoverCells<true, true>(piece, mask) : CoverCells<false, true>(piece, mask);
  } else {
    piece.thin ? CoverCells<true, false>(piece, mask) : CoverCells<false, false>(piece, mask);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(CoverPiece);

void CoverCellPiece(const CellPiece& piece, CoverageMask& mask) {
  HWY_DYNAMIC_DISPATCH(CoverPiece)(piece, mask);
}

}  // namespace raster
#endif
