// Half-planes and strips from points and directions. The same formulas serve one number at
// a time and a vector of segments. Included once for every SIMD target.
#if defined(PARCHLET_RASTER_HALF_PLANE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PARCHLET_RASTER_HALF_PLANE_INL_H
#undef PARCHLET_RASTER_HALF_PLANE_INL_H
#else
#define PARCHLET_RASTER_HALF_PLANE_INL_H
#endif

#include <hwy/highway.h>

#include <algorithm>
#include <cmath>

#include "platform/raster/HalfPlane.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// One number at a time, as float or double.
template <class T>
struct Single {
  using Real = T;
  using Int = std::int32_t;

  static HWY_INLINE Real Set(float value) { return value; }
  static HWY_INLINE Real Abs(Real v) { return std::abs(v); }
  static HWY_INLINE Real Min(Real a, Real b) { return std::min(a, b); }
  static HWY_INLINE Real Max(Real a, Real b) { return std::max(a, b); }
  static HWY_INLINE Real Add(Real a, Real b) { return a + b; }
  static HWY_INLINE Real Sub(Real a, Real b) { return a - b; }
  static HWY_INLINE Real Mul(Real a, Real b) { return a * b; }
  static HWY_INLINE Real Div(Real a, Real b) { return a / b; }
  // Halves go to the even number, as vectors round; below 2^51.
  static HWY_INLINE Real Round(Real v) {
    constexpr double kWhole = 6755399441055744.0;  // 1.5 * 2^52: a sum with it has no fraction left
    return static_cast<Real>((static_cast<double>(v) + kWhole) - kWhole);
  }
  static HWY_INLINE Int Rounded(Real v) { return static_cast<Int>(Round(v)); }
  static HWY_INLINE Int Offset(Int offset, Int sum) { return offset - sum; }
};

// A vector of floats.
struct Many {
  using Floats = hn::CappedTag<float, 16>;
  using Ints = hn::RebindToSigned<Floats>;
  using Real = hn::Vec<Floats>;
  using Int = hn::Vec<Ints>;

  static HWY_INLINE Real Set(float value) { return hn::Set(Floats(), value); }
  static HWY_INLINE Real Abs(Real v) { return hn::Abs(v); }
  static HWY_INLINE Real Min(Real a, Real b) { return hn::Min(a, b); }
  static HWY_INLINE Real Max(Real a, Real b) { return hn::Max(a, b); }
  static HWY_INLINE Real Add(Real a, Real b) { return hn::Add(a, b); }
  static HWY_INLINE Real Sub(Real a, Real b) { return hn::Sub(a, b); }
  static HWY_INLINE Real Mul(Real a, Real b) { return hn::Mul(a, b); }
  static HWY_INLINE Real Div(Real a, Real b) { return hn::Div(a, b); }
  static HWY_INLINE Real Round(Real v) { return hn::Round(v); }
  static HWY_INLINE Int Rounded(Real v) { return hn::NearestInt(v); }
  static HWY_INLINE Int Offset(int offset, Int sum) {
    return hn::Sub(hn::Set(Ints(), offset), sum);
  }
};

// What takes the larger component of a direction to kHalfPlaneUnit.
template <class N>
HWY_INLINE typename N::Real HalfPlaneScale(typename N::Real absX, typename N::Real absY) {
  return N::Div(N::Set(kHalfPlaneUnit), N::Max(N::Max(absX, absY), N::Set(1e-6F)));
}

// A half-plane's normal, of any length but 0, in whole numbers.
template <class N>
struct Normal {
  typename N::Real a, b;

  HWY_INLINE Normal(typename N::Real x, typename N::Real y, typename N::Real scale)
      : a(N::Round(N::Mul(x, scale))), b(N::Round(N::Mul(y, scale))) {}
};

// The half-plane whose value is `offset` at (x, y).
template <class N>
HWY_INLINE BasicHalfPlane<typename N::Int> HalfPlaneThrough(typename N::Real x, typename N::Real y,
                                                            const Normal<N>& normal, int offset) {
  const auto sum = N::Add(N::Mul(normal.a, x), N::Mul(normal.b, y));
  return {N::Rounded(normal.a), N::Rounded(normal.b), N::Offset(offset, N::Rounded(sum))};
}

// The two ramps of a strip's edge. With M and m the larger and the smaller of |nx|, |ny|, an edge's
// coverage is the mean of two ramps of slope 1 / M, m / 4 to either side of it: half the error of
// one ramp at 45 degrees.
template <class N>
struct EdgeRamps {
  typename N::Int outer, inner;

  HWY_INLINE EdgeRamps(typename N::Real halfWidth, typename N::Real absX, typename N::Real absY,
                       typename N::Real scale)
      : EdgeRamps(N::Add(N::Mul(halfWidth, scale), N::Set(kEdge)),
                  N::Mul(N::Mul(N::Min(absX, absY), scale), N::Set(0.25F))) {}

 private:
  // Half coverage, less what averaging in whole bytes rounds up.
  static constexpr float kEdge = kOnEdge - 1;

  HWY_INLINE EdgeRamps(typename N::Real edge, typename N::Real quarter)
      : outer(N::Rounded(N::Add(edge, quarter))), inner(N::Rounded(N::Sub(edge, quarter))) {}
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#endif
