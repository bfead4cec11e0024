// How a piece covers pixels, eight rows or fewer at a time. Included once for every
// SIMD target.
#if defined(PARCHLET_RASTER_COVER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PARCHLET_RASTER_COVER_INL_H
#undef PARCHLET_RASTER_COVER_INL_H
#else
#define PARCHLET_RASTER_COVER_INL_H
#endif

#include "platform/raster/Cover.h"
#include "platform/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

using DU16 = hn::RebindToUnsigned<D16>;
constexpr DU16 kU16;

// A pair of vectors holds kPairRows rows of 8 pixels: the first vector the even rows, the second
// the odd ones, so that packing the two puts the rows in order.

HWY_INLINE V16 Set(int value) {
  return hn::Set(k16, static_cast<std::int16_t>(value));
}

alignas(64) constexpr std::int16_t kLaneX[32] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7,
                                                 0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7};
alignas(64) constexpr std::int16_t kLaneY[32] = {0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2, 2, 2, 2, 2, 2,
                                                 4, 4, 4, 4, 4, 4, 4, 4, 6, 6, 6, 6, 6, 6, 6, 6};

// Both halves of every 32 bits hold the number that `twice` does.
HWY_INLINE V16 SetTwice(std::int32_t twice) {
  return hn::BitCast(k16, hn::Set(hn::Repartition<std::int32_t, D16>(), twice));
}

// A half-plane over the lanes of a pair, in 16 bits modulo 2^16: only the values within a piece's
// box have to fit, not those on the way.
struct HalfPlaneLanes {
  V16 offset;  // of a lane of the first vector from the pair's first pixel
  V16 odd;     // from the first vector to the second
  V16 step;    // from one pair to the next below
  V16 column;  // from one column to the next

  HWY_INLINE HalfPlaneLanes(V16 a, V16 b)
      : offset(hn::Add(hn::Mul(hn::Load(k16, kLaneX), a), hn::Mul(hn::Load(k16, kLaneY), b))),
        odd(b),
        step(hn::ShiftLeft<kPairShift>(b)),
        column(hn::ShiftLeft<kGroupShift>(a)) {}
};

struct HalfPlaneValues {
  V16 even, odd;

  HWY_INLINE HalfPlaneValues(const HalfPlaneLanes& lanes, V16 first)
      : even(first), odd(hn::Add(first, lanes.odd)) {}
  HWY_INLINE void Advance(const HalfPlaneLanes& lanes) {
    even = hn::Add(even, lanes.step);
    odd = hn::Add(odd, lanes.step);
  }
  // The values as coverage bytes: 0 and less is 0, 255 and more is 255.
  HWY_INLINE V8 Ramp() const { return PackBytes(even, odd); }
};

HWY_INLINE V8 RampBelow(V16 limit, const HalfPlaneValues& d) {
  return PackBytes(hn::Sub(limit, d.even), hn::Sub(limit, d.odd));
}

// Coverage by the strip |d| <= w/2: each edge is the mean of two ramps. In a thin strip both edges
// can cut one pixel, so that both count.
template <bool kThin>
HWY_INLINE V8 StripCoverage(V16 outer, V16 inner, const HalfPlaneValues& d) {
  if constexpr (kThin) {
    const V8 low = hn::AverageRound(RampBelow(outer, d), RampBelow(inner, d));
    HalfPlaneValues other = d;
    other.even = hn::Neg(d.even);
    other.odd = hn::Neg(d.odd);
    const V8 high = hn::AverageRound(RampBelow(outer, other), RampBelow(inner, other));
    return hn::SaturatedSub(low, hn::Not(high));
  } else {
    HalfPlaneValues distance = d;
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
  return PackBytes(high(hn::InterleaveLower(k8, a, a), hn::InterleaveLower(k8, b, b)),
                   high(hn::InterleaveUpper(k8, a, a), hn::InterleaveUpper(k8, b, b)));
}

// A bit for every row of a pair, set unless all of its eight pixels are 0.
HWY_INLINE std::uint64_t TouchedRows(V8 coverage) {
  return BitsOf(k64, hn::Ne(hn::BitCast(k64, coverage), hn::Zero(k64)));
}

struct StripLanes {
  HalfPlaneLanes center;  // 0 on the middle of the strip
  V16 outer, inner;

  HWY_INLINE StripLanes(const HalfPlaneLanes& center, V16 outer, V16 inner)
      : center(center), outer(outer), inner(inner) {}
};

// The lanes of a piece, ready to cover any rows of a column. A mitre has those of both strips.
template <bool kThin, bool kMitre>
class PieceLanes {
 public:
  HWY_INLINE PieceLanes(const StripLanes& strip, const StripLanes& other,
                        const HalfPlaneLanes& start, const HalfPlaneLanes& end)
      : strip(strip), other(other), start(start), end(end) {}

  // Moves to the first pixel of a column, where the half-planes have these values.
  HWY_INLINE void MoveTo(V16 stripBase, V16 otherBase, V16 startBase, V16 endBase) {
    d0 = hn::Add(strip.center.offset, stripBase);
    o0 = hn::Add(other.center.offset, otherBase);
    s0 = hn::Add(start.offset, startBase);
    e0 = hn::Add(end.offset, endBase);
  }
  // Not for mitres.
  HWY_INLINE void MoveToNextColumn() {
    d0 = hn::Add(d0, strip.center.column);
    s0 = hn::Add(s0, start.column);
    e0 = hn::Add(e0, end.column);
  }

  // Covers `rows` rows, at most 64, downwards from the pixel moved to, whose bytes are `bytes`.
  // Returns a bit for every row that is not left empty. With kExact, covers only those rows and of
  // each the `kept` bytes; else as many more rows as fill up the last block.
  template <bool kExact>
  HWY_INLINE std::uint64_t Cover(std::uint8_t* HWY_RESTRICT bytes, int rows,
                                 std::uint64_t kept) const {
    HalfPlaneValues d(strip.center, d0);
    HalfPlaneValues o(other.center, o0);
    HalfPlaneValues s(start, s0);
    HalfPlaneValues e(end, e0);
    std::uint64_t touched = 0;
    for (int row = 0; row < rows; row += kPairRows) {
      // Start ramp less end ramp: what the neighbour covers at a seam is left out exactly.
      const V8 between = hn::SaturatedSub(s.Ramp(), e.Ramp());
      V8 within = StripCoverage<kThin>(strip.outer, strip.inner, d);
      if constexpr (kMitre) {
        within = hn::Min(within, StripCoverage<kThin>(other.outer, other.inner, o));
        o.Advance(other.center);
      }
      V8 coverage = Product(within, between);
      if constexpr (kExact) {
        const auto wanted = hn::FirstN(k64, static_cast<std::size_t>(rows - row));
        const auto inside = hn::And(hn::BitCast(k64, coverage), hn::Set(k64, kept));
        coverage = hn::BitCast(k8, hn::IfThenElseZero(wanted, inside));
      }
      hn::StoreU(hn::SaturatedAdd(hn::LoadU(k8, bytes), coverage), k8, bytes);
      touched |= TouchedRows(coverage) << row;
      bytes += kPairRows * kGroup;
      d.Advance(strip.center);
      s.Advance(start);
      e.Advance(end);
    }
    return touched;
  }

 private:
  StripLanes strip, other;
  HalfPlaneLanes start, end;
  V16 d0, o0, s0, e0;  // the half-planes' values in the first vector of the column's first pair
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#endif
