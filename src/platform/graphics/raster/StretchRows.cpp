#include "platform/graphics/raster/StretchRows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/graphics/raster/StretchRows.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/graphics/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

using I64 = hn::RebindToSigned<D64>;
using I32 = hn::Rebind<std::int32_t, I64>;
constexpr I64 kI64;
constexpr I32 kI32;
constexpr std::size_t kVectorPixels = hn::MaxLanes(k16) / 2;
constexpr std::size_t kPairs = hn::MaxLanes(k64);  // neighbours a vector
static_assert(kVectorPixels == 2 * kPairs);

// a + (b - a) weight, rounded: weights are in 1/32768.
HWY_INLINE V16 Between(V16 a, V16 b, V16 weight) {
  return hn::Add(a, hn::MulFixedPoint15(hn::Sub(b, a), weight));
}

// The neighbours of kPairs columns, mixed: a column's four channels in 64 bits.
HWY_INLINE V16 MixNeighbours(const std::uint32_t* row, const std::int32_t* first,
                             const std::uint64_t* weights) {
  const auto offsets = hn::ShiftLeft<2>(hn::PromoteTo(kI64, hn::LoadU(kI32, first)));
  const auto pairs = hn::GatherOffset(kI64, reinterpret_cast<const std::int64_t*>(row), offsets);
  const V8 bytes = hn::BitCast(k8, pairs);
  const auto lower = hn::BitCast(k64, hn::InterleaveLower(k8, bytes, hn::Zero(k8)));
  const auto upper = hn::BitCast(k64, hn::InterleaveUpper(k8, bytes, hn::Zero(k8)));
  return Between(hn::BitCast(k16, hn::InterleaveLower(k64, lower, upper)),
                 hn::BitCast(k16, hn::InterleaveUpper(k64, lower, upper)),
                 hn::BitCast(k16, hn::LoadU(k64, weights)));
}

void Widen(const std::uint32_t* row, const std::int32_t* first, const std::uint64_t* weights,
           std::size_t count, std::uint32_t* wide) {
  for (std::size_t i = 0; i < count; i += kVectorPixels) {
    const V16 low = MixNeighbours(row, first + i, weights + i);
    const V16 high = MixNeighbours(row, first + i + kPairs, weights + i + kPairs);
    // Packing goes by blocks: every other pair of columns comes from `high`.
    const auto packed = hn::BitCast(k64, PackBlocks(low, high));
    const auto inOrder = hn::ConcatUpperLower(k64, hn::ConcatOdd(k64, packed, packed),
                                              hn::ConcatEven(k64, packed, packed));
    hn::StoreU(hn::BitCast(k8, inOrder), k8, reinterpret_cast<std::uint8_t*>(wide + i));
  }
}

alignas(32) constexpr std::uint8_t kAlpha[32] = {6,  7,  6,  7,  6,  7,  6,  7,  14, 15, 14,
                                                 15, 14, 15, 14, 15, 6,  7,  6,  7,  6,  7,
                                                 6,  7,  14, 15, 14, 15, 14, 15, 14, 15};

// source + ground (1 - alpha), rounded once.
HWY_INLINE V16 Over(V16 ground, V16 source) {
  const V16 alpha =
      hn::BitCast(k16, hn::TableLookupBytes(hn::BitCast(k8, source), hn::Load(k8, kAlpha)));
  // alpha / 255 in 1/32768, at most 32640 + 127 = 32767.
  const V16 share = hn::Add(hn::ShiftLeft<7>(alpha), hn::ShiftRight<1>(alpha));
  return hn::Add(source, hn::Sub(ground, hn::MulFixedPoint15(ground, share)));
}

HWY_INLINE void BlendVector(const std::uint32_t* HWY_RESTRICT upper,
                            const std::uint32_t* HWY_RESTRICT lower, V16 weight,
                            std::uint32_t* HWY_RESTRICT pixels) {
  const V8 zero = hn::Zero(k8);
  const V8 a = hn::LoadU(k8, reinterpret_cast<const std::uint8_t*>(upper));
  const V8 b = hn::LoadU(k8, reinterpret_cast<const std::uint8_t*>(lower));
  const V8 ground = hn::LoadU(k8, reinterpret_cast<const std::uint8_t*>(pixels));
  const auto lowHalf = [&](V8 v) { return hn::BitCast(k16, hn::InterleaveLower(k8, v, zero)); };
  const auto highHalf = [&](V8 v) { return hn::BitCast(k16, hn::InterleaveUpper(k8, v, zero)); };
  const V16 low = Over(lowHalf(ground), Between(lowHalf(a), lowHalf(b), weight));
  const V16 high = Over(highHalf(ground), Between(highHalf(a), highHalf(b), weight));
  hn::StoreU(PackBlocks(low, high), k8, reinterpret_cast<std::uint8_t*>(pixels));
}

void BlendMixed(const std::uint32_t* upper, const std::uint32_t* lower, int weight,
                std::uint32_t* pixels, std::size_t count) {
  const V16 share = hn::Set(k16, static_cast<std::int16_t>(weight * 128));
  std::size_t i = 0;
  for (; i + kVectorPixels <= count; i += kVectorPixels) {
    BlendVector(upper + i, lower + i, share, pixels + i);
  }
  if (i < count) {
    std::uint32_t rest[kVectorPixels] = {};
    std::copy_n(pixels + i, count - i, rest);
    BlendVector(upper + i, lower + i, share, rest);
    std::copy_n(rest, count - i, pixels + i);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(Widen);
HWY_EXPORT(BlendMixed);

void WidenRow(const std::uint32_t* row, const std::int32_t* first, const std::uint64_t* weights,
              std::size_t count, std::uint32_t* wide) {
  HWY_DYNAMIC_DISPATCH(Widen)(row, first, weights, count, wide);
}

void BlendMixedRows(const std::uint32_t* upper, const std::uint32_t* lower, int weight,
                    std::uint32_t* pixels, std::size_t count) {
  HWY_DYNAMIC_DISPATCH(BlendMixed)(upper, lower, weight, pixels, count);
}

}  // namespace raster
#endif
