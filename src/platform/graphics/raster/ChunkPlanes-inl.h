// The planes of a chunk, a vector of segments at a time. Included once for every SIMD target.
#if defined(PARCHLET_RASTER_CHUNK_PLANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PARCHLET_RASTER_CHUNK_PLANES_INL_H
#undef PARCHLET_RASTER_CHUNK_PLANES_INL_H
#else
#define PARCHLET_RASTER_CHUNK_PLANES_INL_H
#endif

#include <hwy/highway.h>

#include "platform/graphics/raster/StrokeChunk.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using Floats = hn::CappedTag<float, 16>;
using Ints = hn::RebindToSigned<Floats>;
using F = hn::Vec<Floats>;
using I = hn::Vec<Ints>;
constexpr Floats kFloats;
constexpr Ints kInts;

// How far beyond its ideal edge a piece may tint a pixel, as a distance between centre and edge.
constexpr float kFringe = 0.8F;

HWY_INLINE F Set(float value) {
  return hn::Set(kFloats, value);
}
HWY_INLINE I Rounded(F value) {
  return hn::NearestInt(value);
}

struct Plane {
  I a, b, c;
};

// What takes the larger of two components to kPlaneUnit.
HWY_INLINE F PlaneScale(F absX, F absY) {
  return hn::Div(Set(kPlaneUnit), hn::Max(hn::Max(absX, absY), Set(1e-6F)));
}

// A plane's normal, of any length but 0, brought to scale.
struct Normal {
  F a, b;

  HWY_INLINE Normal(F x, F y, F scale)
      : a(hn::Round(hn::Mul(x, scale))), b(hn::Round(hn::Mul(y, scale))) {}
};

// The plane through (x, y), `offset` there.
HWY_INLINE Plane PlaneThrough(F x, F y, const Normal& normal, int offset) {
  const F sum = hn::Add(hn::Mul(normal.a, x), hn::Mul(normal.b, y));
  const I c = hn::Sub(hn::Set(kInts, offset), Rounded(sum));
  return {hn::ConvertTo(kInts, normal.a), hn::ConvertTo(kInts, normal.b), c};
}

HWY_INLINE void Store(const Plane& plane, PlaneArrays& arrays, int i) {
  hn::StoreU(plane.a, kInts, arrays.a + i);
  hn::StoreU(plane.b, kInts, arrays.b + i);
  hn::StoreU(plane.c, kInts, arrays.c + i);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#endif
