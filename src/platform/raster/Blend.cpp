#include "platform/raster/Blend.h"

#include <algorithm>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/raster/Blend.cpp"
#include <hwy/foreach_target.h>

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "platform/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

// Pixels are blended in twos of groups: 16 pixels, two rows of 8.
constexpr int kVectorPixels = static_cast<int>(hn::MaxLanes(k16)) / 2;
constexpr int kTwoGroups = 2 * kGroup;

// Which byte of the two groups' coverage belongs to a 16-bit channel. Every 128 bits hold four
// pixels, of which unpacking puts the first two in the lower vector. An opaque colour takes the
// byte in both halves of a channel, that is coverage / 255 in 1/65536, a translucent one as it is.
constexpr std::uint8_t kNone = 0x80;
alignas(64) constexpr std::uint8_t kLowerPixel[64] = {
    0, 0, 0, 0, 0,  0,  0,  0,  1,  1,  1,  1,  1,  1,  1,  1,  4,  4,  4,  4, 4, 4,
    4, 4, 5, 5, 5,  5,  5,  5,  5,  5,  8,  8,  8,  8,  8,  8,  8,  8,  9,  9, 9, 9,
    9, 9, 9, 9, 12, 12, 12, 12, 12, 12, 12, 12, 13, 13, 13, 13, 13, 13, 13, 13};
constexpr std::uint8_t kUpperOffset = 2;  // of the last two pixels' coverage

template <bool kOpaque>
HWY_INLINE V8 LowerPixels() {
  const V8 pixel = hn::Load(k8, kLowerPixel);
  if constexpr (kOpaque) {
    return pixel;
  } else {
    const V8 high = hn::BitCast(k8, hn::Set(k16, static_cast<std::int16_t>(kNone << 8)));
    return hn::Or(pixel, high);
  }
}

struct InkLanes {
  V16 color;  // opaque: levels; translucent: as in Ink
  V16 alpha;

  explicit HWY_INLINE InkLanes(const Ink& ink) {
    alignas(64) std::int16_t lanes[32];
    for (int i = 0; i < 32; ++i) {
      const auto level = static_cast<std::int16_t>(ink.premultiplied >> (8 * (i % 4)) & 0xFF);
      lanes[i] = ink.opaque ? level : ink.fineColor[i % 4];
    }
    color = hn::Load(k16, lanes);
    alpha = hn::Set(k16, ink.fineAlpha);
  }
};

// ground + coverage (color - ground alpha), rounded once. For a translucent colour the difference
// has 7 bits more on the way.
template <bool kOpaque>
HWY_INLINE V16 Mixed(V16 ground, V16 cover, const InkLanes& ink) {
  if constexpr (kOpaque) {
    const auto bits = hn::BitCast(hn::RebindToUnsigned<D16>(), cover);
    const V16 share = hn::BitCast(k16, hn::ShiftRight<1>(bits));
    return hn::Add(ground, hn::MulFixedPoint15(hn::Sub(ink.color, ground), share));
  } else {
    const V16 taken = hn::MulFixedPoint15(hn::ShiftLeft<7>(ground), ink.alpha);
    return hn::Add(ground, hn::MulFixedPoint15(hn::Sub(ink.color, taken), cover));
  }
}

// The pixels of a vector, out of those of the two groups.
struct VectorPlace {
  std::uint8_t* first;
  std::uint8_t* second;  // the latter half of a vector that holds both groups
};

HWY_INLINE V8 LoadPixels(const VectorPlace& place) {
  if constexpr (kVectorPixels == kTwoGroups) {
    const hn::Half<D8> half;
    return hn::Combine(k8, hn::LoadU(half, place.second), hn::LoadU(half, place.first));
  } else {
    return hn::LoadU(k8, place.first);
  }
}

HWY_INLINE void StorePixels(V8 pixels, const VectorPlace& place) {
  if constexpr (kVectorPixels == kTwoGroups) {
    const hn::Half<D8> half;
    hn::StoreU(hn::LowerHalf(half, pixels), half, place.first);
    hn::StoreU(hn::UpperHalf(half, pixels), half, place.second);
  } else {
    hn::StoreU(pixels, k8, place.first);
  }
}

// Blends 8 pixels from `first` on and 8 from `second` on, by 16 bytes of coverage.
template <bool kOpaque>
HWY_INLINE void BlendTwoGroups(std::uint32_t* first, std::uint32_t* second, V8 coverage,
                               const InkLanes& ink) {
  for (int pixel = 0; pixel < kTwoGroups; pixel += kVectorPixels) {
    std::uint32_t* const start = pixel < kGroup ? first + pixel : second + (pixel - kGroup);
    const VectorPlace place = {reinterpret_cast<std::uint8_t*>(start),
                               reinterpret_cast<std::uint8_t*>(second)};
    const V8 lower = hn::Add(LowerPixels<kOpaque>(), hn::Set(k8, static_cast<std::uint8_t>(pixel)));
    const V8 upper = hn::Add(lower, hn::Set(k8, kUpperOffset));
    const auto cover = [&](V8 places) {
      return hn::BitCast(k16, hn::TableLookupBytesOr0(coverage, places));
    };
    const V8 ground = LoadPixels(place);
    const V16 low = Mixed<kOpaque>(hn::BitCast(k16, hn::InterleaveLower(k8, ground, hn::Zero(k8))),
                                   cover(lower), ink);
    const V16 high = Mixed<kOpaque>(hn::BitCast(k16, hn::InterleaveUpper(k8, ground, hn::Zero(k8))),
                                    cover(upper), ink);
    StorePixels(PackBytes(low, high), place);
  }
}

// Blends a group of which some pixels may lie outside the clip: their coverage is 0, and they are
// neither read nor written.
template <bool kOpaque>
void BlendSome(std::uint32_t* pixels, std::uint64_t coverage, const InkLanes& ink) {
  alignas(16) std::uint8_t bytes[kTwoGroups] = {};
  std::memcpy(bytes, &coverage, sizeof coverage);
  std::uint32_t group[kTwoGroups] = {};
  for (int i = 0; i < kGroup; ++i) {
    group[i] = bytes[i] != 0 ? pixels[i] : 0;
  }
  BlendTwoGroups<kOpaque>(group, group + kGroup, hn::LoadDup128(k8, bytes), ink);
  for (int i = 0; i < kGroup; ++i) {
    if (bytes[i] != 0) {
      pixels[i] = group[i];
    }
  }
}

// The pixels under a word of a column. Their first row may lie above the surface.
struct WordPixels {
  std::uint32_t* origin;
  std::ptrdiff_t first;  // from the origin to the word's first group
  std::ptrdiff_t stride;

  HWY_INLINE std::uint32_t* Group(int row) const { return origin + (first + row * stride); }
};

// Blends the groups at the set bits one by one, and zeroes them.
template <bool kOpaque>
HWY_INLINE void BlendSingly(std::uint64_t rows, std::uint8_t* bytes, std::uint64_t kept,
                            const WordPixels& pixels, const InkLanes& ink) {
  for (; rows != 0; rows &= rows - 1) {
    const int row = std::countr_zero(rows);
    std::uint64_t coverage;
    std::memcpy(&coverage, bytes + row * kGroup, sizeof coverage);
    std::memset(bytes + row * kGroup, 0, sizeof coverage);
    BlendSome<kOpaque>(pixels.Group(row), coverage & kept, ink);
  }
}

// Blends the groups at the set bits in pairs of rows, and zeroes them. `ahead`: how far from a
// pixel lies one to fetch.
template <bool kOpaque>
HWY_INLINE void BlendPairs(std::uint64_t rows, std::uint8_t* bytes, const WordPixels& pixels,
                           std::ptrdiff_t ahead, const InkLanes& ink) {
  constexpr std::uint64_t kEven = 0x5555'5555'5555'5555;
  for (std::uint64_t pairs = (rows | rows >> 1) & kEven; pairs != 0; pairs &= pairs - 1) {
    const int row = std::countr_zero(pairs);
    std::uint8_t* const groups = bytes + row * kGroup;
    const V8 coverage = hn::LoadDup128(k8, groups);
    hn::Store(hn::Zero(hn::Full128<std::uint8_t>()), hn::Full128<std::uint8_t>(), groups);
    std::uint32_t* const first = pixels.Group(row);
    std::uint32_t* const second = first + pixels.stride;
    hwy::Prefetch(first + ahead);
    hwy::Prefetch(second + ahead);
    BlendTwoGroups<kOpaque>(first, second, coverage, ink);
  }
}

// Blends a column's groups and zeroes them.
template <bool kOpaque, bool kWhole>
HWY_INLINE void BlendColumn(CoverageMask& mask, int column, std::uint64_t kept, const InkLanes& ink,
                            const PixelSurface& surface) {
  const CoverageMask::Words words = mask.WordsOf(column);
  const std::ptrdiff_t stride = surface.stride;
  const std::ptrdiff_t top = mask.FirstRow() * stride + (mask.FirstColumn() + column) * kGroup;
  const int unpairedRow = mask.UnpairedRow();
  const int lastWord = mask.LastWord();
  // Fetches what the same rows need two columns on: rows lie too far apart for the processor to
  // predict.
  const std::ptrdiff_t ahead = column + 2 < mask.ColumnCount() ? kTwoGroups : 0;
  for (int word = mask.FirstWord(); word <= lastWord; ++word) {
    std::uint64_t rest = words.Take(word);
    std::uint8_t* const bytes = words.BytesOf(word);
    const WordPixels pixels = {surface.pixels, top + word * 64 * stride, stride};
    if constexpr (!kWhole) {
      BlendSingly<kOpaque>(rest, bytes, kept, pixels, ink);
      continue;
    }
    if (unpairedRow >> 6 == word) {
      const std::uint64_t alone = rest & std::uint64_t{1} << (unpairedRow & 63);
      BlendSingly<kOpaque>(alone, bytes, kept, pixels, ink);
      rest ^= alone;
    }
    BlendPairs<kOpaque>(rest, bytes, pixels, ahead, ink);
  }
}

template <bool kOpaque>
void BlendTouched(CoverageMask& mask, const Ink& ink, const PixelSurface& surface) {
  const InkLanes lanes(ink);
  for (int column = mask.FirstTouched(); column <= mask.LastTouched(); ++column) {
    const std::uint64_t kept = mask.BytesInClip(column);
    if (kept == ~std::uint64_t{0}) {
      BlendColumn<kOpaque, true>(mask, column, kept, lanes, surface);
    } else {
      BlendColumn<kOpaque, false>(mask, column, kept, lanes, surface);
    }
  }
  mask.Restart();
}

void BlendMaskWith(CoverageMask& mask, const Ink& ink, const PixelSurface& surface) {
  if (ink.opaque) {
    BlendTouched<true>(mask, ink, surface);
  } else {
    BlendTouched<false>(mask, ink, surface);
  }
}

void BlendSpanWith(const Ink& ink, std::uint32_t* pixels, std::size_t count) {
  const InkLanes lanes(ink);
  const V8 full = hn::Set(k8, std::uint8_t{255});
  std::size_t i = 0;
  for (; i + kTwoGroups <= count; i += kTwoGroups) {
    BlendTwoGroups<false>(pixels + i, pixels + i + kGroup, full, lanes);
  }
  if (i < count) {
    std::uint32_t rest[kTwoGroups] = {};
    std::copy_n(pixels + i, count - i, rest);
    BlendTwoGroups<false>(rest, rest + kGroup, full, lanes);
    std::copy_n(rest, count - i, pixels + i);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

Ink MakeInk(std::uint32_t argb) {
  const std::uint32_t alpha = argb >> 24;
  Ink ink{};
  ink.opaque = alpha == 255;
  ink.invisible = alpha == 0;
  const auto fine = [](std::uint32_t value) {
    constexpr std::uint32_t kUnit = 255 * 255;
    const std::uint32_t rounded = (value * 32768 + kUnit / 2) / kUnit;
    return static_cast<std::int16_t>(rounded < 32767 ? rounded : 32767);
  };
  ink.fineAlpha = fine(alpha * 256);
  for (int channel = 0; channel < 4; ++channel) {
    const std::uint32_t value = channel == 3 ? 255 : argb >> (8 * channel) & 0xFF;
    ink.fineColor[channel] = fine(value * alpha);
    ink.premultiplied |= (value * alpha + 127) / 255 << (8 * channel);
  }
  return ink;
}

HWY_EXPORT(BlendMaskWith);
HWY_EXPORT(BlendSpanWith);

void BlendMask(CoverageMask& mask, const Ink& ink, const PixelSurface& surface) {
  HWY_DYNAMIC_DISPATCH(BlendMaskWith)(mask, ink, surface);
}

void BlendSpan(const Ink& ink, std::uint32_t* pixels, std::size_t count) {
  if (ink.opaque) {
    std::fill_n(pixels, count, ink.premultiplied);
  } else {
    HWY_DYNAMIC_DISPATCH(BlendSpanWith)(ink, pixels, count);
  }
}

}  // namespace raster
#endif
