#include "platform/raster/StretchRows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/raster/StretchRows.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

using D32 = hn::Repartition<std::uint32_t, D16>;
using I32 = hn::RebindToSigned<D32>;
using I64 = hn::RebindToSigned<D64>;
constexpr D32 k32;
constexpr I32 kI32;
constexpr I64 kI64;
constexpr std::size_t kVectorPixels = hn::MaxLanes(k32);
static_assert(kVectorPixels <= kStretchStep);

// a + (b - a) weight, rounded: weights are in 1/32768.
HWY_INLINE V16 Between(V16 a, V16 b, V16 weight) {
  return hn::Add(a, hn::MulFixedPoint15(hn::Sub(b, a), weight));
}

// The pixels to the left and to the right of a vector's columns.
struct Neighbours {
  V8 left, right;
};

// For a picture that grows: one vector holds all of them.
HWY_INLINE Neighbours PickNeighbours(const std::uint32_t* row, const std::int32_t* first) {
  const auto pixels = hn::LoadU(k32, row + first[0]);
  const auto left = hn::Sub(hn::LoadU(kI32, first), hn::Set(kI32, first[0]));
  const auto right = hn::Add(left, hn::Set(kI32, 1));
  return {hn::BitCast(k8, hn::TableLookupLanes(pixels, hn::IndicesFromVec(k32, left))),
          hn::BitCast(k8, hn::TableLookupLanes(pixels, hn::IndicesFromVec(k32, right)))};
}

HWY_INLINE Neighbours GatherNeighbours(const std::uint32_t* row, const std::int32_t* first) {
  const auto gather = [row](const std::int32_t* columns) {
    const hn::Rebind<std::int32_t, I64> half;
    const auto offsets = hn::ShiftLeft<2>(hn::PromoteTo(kI64, hn::LoadU(half, columns)));
    return hn::BitCast(k32,
                       hn::GatherOffset(kI64, reinterpret_cast<const std::int64_t*>(row), offsets));
  };
  const auto low = gather(first);
  const auto high = gather(first + kVectorPixels / 2);
  return {hn::BitCast(k8, hn::ConcatEven(k32, high, low)),
          hn::BitCast(k8, hn::ConcatOdd(k32, high, low))};
}

// Which byte of the columns' weights belongs to a 16-bit channel, as its upper byte; the lower one
// is 0. Every 128 bits hold four columns, of which unpacking puts the first two in the lower
// vector.
constexpr std::uint8_t kZero = 0x80;
alignas(64) constexpr std::uint8_t kLower[64] = {
    kZero, 0,  kZero, 0,  kZero, 0,  kZero, 0,  kZero, 1,  kZero, 1,  kZero, 1,  kZero, 1,
    kZero, 4,  kZero, 4,  kZero, 4,  kZero, 4,  kZero, 5,  kZero, 5,  kZero, 5,  kZero, 5,
    kZero, 8,  kZero, 8,  kZero, 8,  kZero, 8,  kZero, 9,  kZero, 9,  kZero, 9,  kZero, 9,
    kZero, 12, kZero, 12, kZero, 12, kZero, 12, kZero, 13, kZero, 13, kZero, 13, kZero, 13};
constexpr std::uint8_t kUpperOffset = 2;  // of the last two columns' weights

HWY_INLINE V16 WeightsAt(V8 weights, V8 places) {
  const hn::RebindToUnsigned<D16> words;
  return hn::BitCast(
      k16, hn::ShiftRight<1>(hn::BitCast(words, hn::TableLookupBytesOr0(weights, places))));
}

void Stretch(const std::uint32_t* row, const std::int32_t* first, const std::uint8_t* weights,
             std::size_t count, std::uint32_t* stretched) {
  const V8 lower = hn::Load(k8, kLower);
  const V8 upper = hn::Add(lower, hn::Set(k8, kUpperOffset));
  const V8 zero = hn::Zero(k8);
  for (std::size_t i = 0; i < count; i += kVectorPixels) {
    const int reach = first[i + kVectorPixels - 1] + 1 - first[i];
    const Neighbours pixels = reach < static_cast<int>(kVectorPixels)
                                  ? PickNeighbours(row, first + i)
                                  : GatherNeighbours(row, first + i);
    const V8 columns = hn::LoadDup128(k8, weights + i);
    const V16 low = Between(hn::BitCast(k16, hn::InterleaveLower(k8, pixels.left, zero)),
                            hn::BitCast(k16, hn::InterleaveLower(k8, pixels.right, zero)),
                            WeightsAt(columns, lower));
    const V16 high = Between(hn::BitCast(k16, hn::InterleaveUpper(k8, pixels.left, zero)),
                             hn::BitCast(k16, hn::InterleaveUpper(k8, pixels.right, zero)),
                             WeightsAt(columns, upper));
    hn::StoreU(PackBytes(low, high), k8, reinterpret_cast<std::uint8_t*>(stretched + i));
  }
}

// The alpha of every 128 bits' two pixels, for every channel.
alignas(16) constexpr std::uint8_t kAlpha[16] = {6,  7,  6,  7,  6,  7,  6,  7,
                                                 14, 15, 14, 15, 14, 15, 14, 15};

// source + ground (1 - alpha), rounded once.
HWY_INLINE V16 Over(V16 ground, V16 source) {
  const V16 alpha =
      hn::BitCast(k16, hn::TableLookupBytes(hn::BitCast(k8, source), hn::LoadDup128(k8, kAlpha)));
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
  hn::StoreU(PackBytes(low, high), k8, reinterpret_cast<std::uint8_t*>(pixels));
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

HWY_EXPORT(Stretch);
HWY_EXPORT(BlendMixed);

void StretchRow(const std::uint32_t* row, const std::int32_t* first, const std::uint8_t* weights,
                std::size_t count, std::uint32_t* stretched) {
  HWY_DYNAMIC_DISPATCH(Stretch)(row, first, weights, count, stretched);
}

void BlendMixedRows(const std::uint32_t* upper, const std::uint32_t* lower, int weight,
                    std::uint32_t* pixels, std::size_t count) {
  HWY_DYNAMIC_DISPATCH(BlendMixed)(upper, lower, weight, pixels, count);
}

}  // namespace raster
#endif
