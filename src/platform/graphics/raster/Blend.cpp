#include "platform/graphics/raster/Blend.h"

#include <algorithm>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/graphics/raster/Blend.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/graphics/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

constexpr int kVectorPixels = static_cast<int>(hn::MaxLanes(k16)) / 2;

// Where the coverage of a 16-bit channel stands among the eight bytes of a group, by 128-bit block:
// the blocks hold pixels 0..3 and 4..7 (or, on 128-bit targets, one after the other), of which
// unpacking puts the first two in the lower vector.
alignas(32) constexpr std::uint8_t kLower[32] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1,
                                                 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 5, 5, 5, 5, 5};
alignas(32) constexpr std::uint8_t kUpper[32] = {2, 2, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3,
                                                 6, 6, 6, 6, 6, 6, 6, 6, 7, 7, 7, 7, 7, 7, 7, 7};

struct InkLanes {
  V16 color;  // opaque: levels; translucent: 1/128 levels
  V16 alpha;

  explicit HWY_INLINE InkLanes(const Ink& ink) {
    alignas(64) std::int16_t lanes[32];
    for (int i = 0; i < 32; ++i) {
      const int fine = ink.finePremultiplied[i % 4];
      lanes[i] = static_cast<std::int16_t>(ink.opaque ? fine >> 7 : fine);
    }
    color = hn::Load(k16, lanes);
    alpha = hn::Set(k16, ink.alpha15);
  }
};

// ground + coverage (color - ground alpha), in one rounding for an opaque colour: `cover` is the
// coverage byte in both halves of a channel, that is coverage / 255 in 1/65536.
template <bool kOpaque>
HWY_INLINE V16 Mixed(V16 ground, V16 cover, const InkLanes& ink) {
  const auto bits = hn::BitCast(hn::RebindToUnsigned<D16>(), cover);
  if constexpr (kOpaque) {
    const V16 share = hn::BitCast(k16, hn::ShiftRight<1>(bits));
    return hn::Add(ground, hn::MulFixedPoint15(hn::Sub(ink.color, ground), share));
  } else {
    // With 7 more bits on the way and the coverage in 1/256, rounded once at the end.
    const V16 low = hn::BitCast(k16, hn::ShiftRight<8>(bits));
    const V16 share = hn::Add(low, hn::ShiftRight<7>(low));
    const V16 kept = hn::MulFixedPoint15(hn::ShiftLeft<7>(ground), ink.alpha);
    return hn::Add(ground, hn::MulFixedPoint15(hn::Sub(ink.color, kept), share));
  }
}

template <bool kOpaque>
HWY_INLINE void BlendEight(std::uint32_t* HWY_RESTRICT pixels, std::uint64_t coverage,
                           const InkLanes& ink) {
  const V8 eight = hn::BitCast(k8, hn::Set(k64, coverage));
  for (int part = 0; part < 8 / kVectorPixels; ++part) {
    auto* const bytes = reinterpret_cast<std::uint8_t*>(pixels + part * kVectorPixels);
    const V8 shift = hn::Set(k8, static_cast<std::uint8_t>(part * kVectorPixels));
    const V16 lower =
        hn::BitCast(k16, hn::TableLookupBytes(eight, hn::Add(hn::Load(k8, kLower), shift)));
    const V16 upper =
        hn::BitCast(k16, hn::TableLookupBytes(eight, hn::Add(hn::Load(k8, kUpper), shift)));
    const V8 ground = hn::LoadU(k8, bytes);
    const V16 low = hn::BitCast(k16, hn::InterleaveLower(k8, ground, hn::Zero(k8)));
    const V16 high = hn::BitCast(k16, hn::InterleaveUpper(k8, ground, hn::Zero(k8)));
    hn::StoreU(PackBlocks(Mixed<kOpaque>(low, lower, ink), Mixed<kOpaque>(high, upper, ink)), k8,
               bytes);
  }
}

// Blends eight pixels of which some lie outside the clip, where nothing is read or written: their
// coverage is 0.
template <bool kOpaque>
void BlendSome(std::uint32_t* pixels, std::uint64_t coverage, const InkLanes& ink) {
  std::uint8_t bytes[8];
  std::memcpy(bytes, &coverage, sizeof bytes);
  std::uint32_t eight[8] = {};
  for (int i = 0; i < 8; ++i) {
    eight[i] = bytes[i] != 0 ? pixels[i] : 0;
  }
  BlendEight<kOpaque>(eight, coverage, ink);
  for (int i = 0; i < 8; ++i) {
    if (bytes[i] != 0) {
      pixels[i] = eight[i];
    }
  }
}

// Blends a column's groups and zeroes them.
template <bool kOpaque, bool kWhole>
HWY_INLINE void BlendColumn(CoveragePlane& plane, int column, std::uint64_t kept,
                            const InkLanes& ink, const PixelSurface& surface) {
  const int left = (plane.FirstColumn() + column) * kGroup;
  std::uint32_t* const origin = surface.pixels;
  const std::ptrdiff_t stride = surface.stride;
  for (int word = plane.FirstWord(); word <= plane.LastWord(); ++word) {
    std::uint64_t rest = plane.TakeWord(column, word);
    std::uint8_t* const bytes = plane.BytesOf(column, word);
    const std::ptrdiff_t first = plane.RowOf(word) * stride + left;
    while (rest != 0) {
      const int bit = std::countr_zero(rest);
      rest &= rest - 1;
      std::uint64_t coverage;
      std::memcpy(&coverage, bytes + bit * kGroup, sizeof coverage);
      std::memset(bytes + bit * kGroup, 0, sizeof coverage);
      std::uint32_t* const pixels = origin + (first + bit * stride);
      if constexpr (kWhole) {
        BlendEight<kOpaque>(pixels, coverage, ink);
      } else {
        BlendSome<kOpaque>(pixels, coverage & kept, ink);
      }
    }
  }
}

template <bool kOpaque>
void BlendPlane(CoveragePlane& plane, const Ink& ink, const PixelSurface& surface) {
  const InkLanes lanes(ink);
  for (int column = plane.FirstTouched(); column <= plane.LastTouched(); ++column) {
    const std::uint64_t kept = plane.KeptBytes(column);
    if (kept == ~std::uint64_t{0}) {
      BlendColumn<kOpaque, true>(plane, column, kept, lanes, surface);
    } else {
      BlendColumn<kOpaque, false>(plane, column, kept, lanes, surface);
    }
  }
  plane.Restart();
}

void Mark(CoveragePlane& plane, const Ink& ink, const PixelSurface& surface) {
  if (ink.opaque) {
    BlendPlane<true>(plane, ink, surface);
  } else {
    BlendPlane<false>(plane, ink, surface);
  }
}

void Run(const Ink& ink, std::uint32_t* pixels, std::size_t count) {
  const InkLanes lanes(ink);
  const std::uint64_t full = ~std::uint64_t{0};
  std::size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    BlendEight<false>(pixels + i, full, lanes);
  }
  if (i < count) {
    std::uint32_t rest[8] = {};
    std::copy_n(pixels + i, count - i, rest);
    BlendEight<false>(rest, full, lanes);
    std::copy_n(rest, count - i, pixels + i);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(Mark);
HWY_EXPORT(Run);

void BlendMark(CoveragePlane& plane, const Ink& ink, const PixelSurface& surface) {
  HWY_DYNAMIC_DISPATCH(Mark)(plane, ink, surface);
}

void BlendRun(const Ink& ink, std::uint32_t* pixels, std::size_t count) {
  if (ink.opaque) {
    std::fill_n(pixels, count, ink.premultiplied);
  } else {
    HWY_DYNAMIC_DISPATCH(Run)(ink, pixels, count);
  }
}

}  // namespace raster
#endif
