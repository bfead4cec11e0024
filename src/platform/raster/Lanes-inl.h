// The vectors that coverage and pixels are processed with, and packing within every 128 bits.
// Included once for every SIMD target.
#if defined(PARCHLET_RASTER_LANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PARCHLET_RASTER_LANES_INL_H
#undef PARCHLET_RASTER_LANES_INL_H
#else
#define PARCHLET_RASTER_LANES_INL_H
#endif

#include <hwy/highway.h>

#include <bit>
#include <cstring>

#include "platform/raster/CoverageMask.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

// Clamps to 0 .. 255 and packs: every 128 bits hold first those of `low`, then those of `high`. It
// undoes InterleaveLower and InterleaveUpper with zero.
#if HWY_TARGET <= HWY_SSSE3 && HWY_TARGET >= HWY_AVX3_DL
HWY_INLINE hwy::HWY_NAMESPACE::Vec128<std::uint8_t> PackBytes(
    hwy::HWY_NAMESPACE::Vec128<std::int16_t> low, hwy::HWY_NAMESPACE::Vec128<std::int16_t> high) {
  return hwy::HWY_NAMESPACE::Vec128<std::uint8_t>{_mm_packus_epi16(low.raw, high.raw)};
}
#if HWY_TARGET <= HWY_AVX2
HWY_INLINE hwy::HWY_NAMESPACE::Vec256<std::uint8_t> PackBytes(
    hwy::HWY_NAMESPACE::Vec256<std::int16_t> low, hwy::HWY_NAMESPACE::Vec256<std::int16_t> high) {
  return hwy::HWY_NAMESPACE::Vec256<std::uint8_t>{_mm256_packus_epi16(low.raw, high.raw)};
}
#endif
#if HWY_TARGET <= HWY_AVX3
HWY_INLINE hwy::HWY_NAMESPACE::Vec512<std::uint8_t> PackBytes(
    hwy::HWY_NAMESPACE::Vec512<std::int16_t> low, hwy::HWY_NAMESPACE::Vec512<std::int16_t> high) {
  return hwy::HWY_NAMESPACE::Vec512<std::uint8_t>{_mm512_packus_epi16(low.raw, high.raw)};
}
#endif
inline constexpr int kWideLanes = 32;
#else
template <class V>
HWY_INLINE auto PackBytes(V low, V high) {
  namespace hn = hwy::HWY_NAMESPACE;
  const hn::FixedTag<std::uint8_t, 8> half;
  const hn::FixedTag<std::uint8_t, 16> whole;
  return hn::Combine(whole, hn::DemoteTo(half, high), hn::DemoteTo(half, low));
}
inline constexpr int kWideLanes = 8;
#endif

namespace hn = hwy::HWY_NAMESPACE;
using D16 = hn::CappedTag<std::int16_t, kWideLanes>;
using D8 = hn::Repartition<std::uint8_t, D16>;
using D64 = hn::Repartition<std::uint64_t, D16>;
using V16 = hn::Vec<D16>;
using V8 = hn::Vec<D8>;
inline constexpr D16 k16;
inline constexpr D8 k8;
inline constexpr D64 k64;

// A bit for every lane of a mask, the first lane's lowest.
template <class D>
HWY_INLINE std::uint64_t BitsOf(D d, hn::Mask<D> mask) {
  std::uint8_t bytes[8] = {};
  hn::StoreMaskBits(d, mask, bytes);
  std::uint64_t bits;
  std::memcpy(&bits, bytes, sizeof bits);
  return bits;
}

// A pair is how many rows of 8 pixels two vectors of 16-bit lanes hold, a block how many rows of a
// piece are covered at a time. A pixel's coverage does not depend on them.
inline constexpr int kPairRows = static_cast<int>(hn::MaxLanes(k16)) / 4;
inline constexpr int kPairShift = std::countr_zero(static_cast<unsigned>(kPairRows));
inline constexpr int kBlockRows = kPairRows < 4 ? 4 : kPairRows;
inline constexpr int kBlockShift = std::countr_zero(static_cast<unsigned>(kBlockRows));
static_assert(kBlockRows % kPairRows == 0);
static_assert(kBlockRows <= kSlackRows);

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#endif
