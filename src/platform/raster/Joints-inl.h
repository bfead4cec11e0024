// The joints of a chunk: their seams, and where a seam is used. Included once for every SIMD
// target.
#if defined(PARCHLET_RASTER_JOINTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PARCHLET_RASTER_JOINTS_INL_H
#undef PARCHLET_RASTER_JOINTS_INL_H
#else
#define PARCHLET_RASTER_JOINTS_INL_H
#endif

#include "platform/raster/HalfPlane-inl.h"
#include "platform/raster/StrokeChunk.h"
#include "platform/raster/StrokeRules.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

using Floats = Many::Floats;
using Ints = Many::Ints;
using F = Many::Real;
using I = Many::Int;
constexpr Floats kFloats;
constexpr Ints kInts;

HWY_INLINE F Set(float value) {
  return hn::Set(kFloats, value);
}

HWY_INLINE void StoreSeam(const BasicHalfPlane<I>& seam, HalfPlaneArrays& arrays, int i) {
  hn::StoreU(seam.a, kInts, arrays.a + i);
  hn::StoreU(seam.b, kInts, arrays.b + i);
  hn::StoreU(seam.c, kInts, arrays.c + i);
}

// With t0, t1 the tangents at a joint and theta the angle between them, the seam's normal is t0 +
// t1, and the strip's corners lie hw (n0 + n1) / (1 + t0 . t1) from the joint. The inner corner
// backs off hw tan(theta / 2) along both segments; tan(theta / 2) = sin theta / (1 + cos theta).
void MeasureJoints(const ChunkPoints& points, float halfWidth, ChunkGeometry& out) {
  const F half = Set(halfWidth);
  const int end = points.segments + 2 * kContext;
  for (int i = 1; i < end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const F x0 = hn::LoadU(kFloats, out.tangentX + i - 1);
    const F y0 = hn::LoadU(kFloats, out.tangentY + i - 1);
    const F x1 = hn::LoadU(kFloats, out.tangentX + i);
    const F y1 = hn::LoadU(kFloats, out.tangentY + i);
    const F dot = hn::Add(hn::Mul(x0, x1), hn::Mul(y0, y1));
    const F cross = hn::Sub(hn::Mul(x0, y1), hn::Mul(y0, x1));
    const F onePlusCos = hn::Max(hn::Add(Set(1), dot), Set(1e-6F));
    const F sumX = hn::Add(x0, x1);
    const F sumY = hn::Add(y0, y1);
    const F inverse = hn::Div(Set(1), onePlusCos);
    const F reach = hn::Mul(half, inverse);
    // The fringe grows as the corner sharpens: by 1 / cos(theta / 2) <= 2 / (1 + cos theta).
    const F fringe = hn::Mul(Set(2 * kFringe), inverse);
    const Normal<Many> normal(sumX, sumY, HalfPlaneScale<Many>(hn::Abs(sumX), hn::Abs(sumY)));
    const F x = hn::LoadU(kFloats, points.x + i);
    const F y = hn::LoadU(kFloats, points.y + i);
    StoreSeam(HalfPlaneThrough(x, y, normal, kOnEdge), out.seam, i);
    hn::StoreU(onePlusCos, kFloats, out.onePlusCos + i);
    hn::StoreU(hn::Mul(reach, cross), kFloats, out.backOff + i);
    hn::StoreU(hn::Add(hn::Mul(reach, hn::Abs(sumY)), fringe), kFloats, out.reachX + i);
    hn::StoreU(hn::Add(hn::Mul(reach, hn::Abs(sumX)), fringe), kFloats, out.reachY + i);
  }
}

HWY_INLINE F Cross(const ChunkGeometry& out, int i, int j) {
  const F x0 = hn::LoadU(kFloats, out.tangentX + i);
  const F y0 = hn::LoadU(kFloats, out.tangentY + i);
  const F x1 = hn::LoadU(kFloats, out.tangentX + j);
  const F y1 = hn::LoadU(kFloats, out.tangentY + j);
  return hn::Sub(hn::Mul(x0, y1), hn::Mul(y0, x1));
}

struct Joint {
  F backOff, onePlusCos;

  HWY_INLINE Joint(const ChunkGeometry& out, int i)
      : backOff(hn::LoadU(kFloats, out.backOff + i)),
        onePlusCos(hn::LoadU(kFloats, out.onePlusCos + i)) {}
};

// Whether a joint's seam fits a segment of `length` whose other end is the joint `other`.
//
// Two conditions. The seam's inner corner must find room beside the inner corner of the other
// joint; that one takes no room if it lies on the other side of the stroke, or if the segment
// certainly ends flat there. And what the seam cuts off the neighbour, as far as the corner that a
// flat end would have, must be covered by the segment or by the one `beyond` it. That corner,
// `corner` from the joint, reaches hw sin(theta) along the segment, and hw sin(theta + phi) -
// length cos(phi) along the one beyond, with phi the turn at the other joint and `across` the sine
// of both.
HWY_INLINE hn::Mask<Floats> Fits(const Joint& joint, const Joint& other, F corner, F across,
                                 F length, F beyond) {
  const F backOff = hn::Abs(joint.backOff);
  const auto flat =
      hn::Or(hn::Lt(other.onePlusCos, Set(kSharpTurn)), hn::Gt(hn::Abs(other.backOff), length));
  const F both = hn::Add(joint.backOff, hn::IfThenZeroElse(flat, other.backOff));
  const auto hasRoom = hn::And(hn::Le(backOff, length), hn::Le(hn::Abs(both), length));
  const auto within = hn::Le(hn::Mul(backOff, joint.onePlusCos), length);
  const F reach =
      hn::Sub(hn::Mul(corner, across), hn::Mul(length, hn::Sub(other.onePlusCos, Set(1))));
  const auto withinNext = hn::AndNot(flat, hn::Le(reach, beyond));
  return hn::And(hasRoom, hn::Or(within, withinNext));
}

// A joint that takes no more than half of either segment is seamed whatever its neighbours are.
// Most joints are like that.
void ChooseSeams(const ChunkPoints& points, float halfWidth, ChunkGeometry& out) {
  const int end = points.segments + kContext;
  for (int i = kContext; i <= end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const Joint joint(out, i);
    const auto length = [&](int segment) { return hn::LoadU(kFloats, out.length + segment); };
    const F twice = hn::Abs(hn::Add(joint.backOff, joint.backOff));
    const auto soft = hn::Ge(joint.onePlusCos, Set(kSharpTurn));
    auto seamed = hn::And(soft, hn::Le(twice, hn::Min(length(i - 1), length(i))));
    if (!hn::AllTrue(kFloats, seamed)) {
      const F corner = hn::CopySign(Set(halfWidth), joint.backOff);
      const auto fits = hn::And(Fits(joint, Joint(out, i - 1), corner, Cross(out, i - 2, i),
                                     length(i - 1), length(i - 2)),
                                Fits(joint, Joint(out, i + 1), corner, Cross(out, i - 1, i + 1),
                                     length(i), length(i + 1)));
      seamed = hn::Or(seamed, hn::And(soft, fits));
    }
    hn::StoreU(hn::VecFromMask(kInts, hn::RebindMask(kInts, seamed)), kInts, out.seamed + i);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#endif
