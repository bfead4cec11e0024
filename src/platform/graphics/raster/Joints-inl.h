// The joints of a chunk: their seams, and which of them are good. Included once for every SIMD
// target.
#if defined(PARCHLET_RASTER_JOINTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef PARCHLET_RASTER_JOINTS_INL_H
#undef PARCHLET_RASTER_JOINTS_INL_H
#else
#define PARCHLET_RASTER_JOINTS_INL_H
#endif

#include "platform/graphics/raster/ChunkPlanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

// 1 + cos(turn) of the sharpest good joint, whose back-off is no more than the pen's half width:
// boxes stay small.
constexpr float kSharpTurn = 1.0F;

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
    const F turn = hn::Max(hn::Add(Set(1), dot), Set(1e-6F));
    const F sumX = hn::Add(x0, x1);
    const F sumY = hn::Add(y0, y1);
    const F inverse = hn::Div(Set(1), turn);
    const F reach = hn::Mul(half, inverse);
    // The fringe grows as the corner sharpens: by 1 / cos(theta / 2) <= 2 / turn.
    const F fringe = hn::Mul(Set(2 * kFringe), inverse);
    const Normal normal(sumX, sumY, PlaneScale(hn::Abs(sumX), hn::Abs(sumY)));
    Store(PlaneThrough(hn::LoadU(kFloats, points.x + i), hn::LoadU(kFloats, points.y + i), normal,
                       kPlaneUnit / 2),
          out.seam, i);
    hn::StoreU(turn, kFloats, out.turn + i);
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
  F backOff, turn;

  HWY_INLINE Joint(const ChunkGeometry& out, int i)
      : backOff(hn::LoadU(kFloats, out.backOff + i)), turn(hn::LoadU(kFloats, out.turn + i)) {}
};

// Whether a joint's seam fits a segment of `length` whose other end is the joint `other`.
//
// Its inner corner must find room beside that of the other joint, which takes none on the other
// side of the stroke, nor where it ends square for certain. And what the seam cuts off the
// neighbour, up to the corner that a square end would have, `corner` from the joint, must be
// covered none the less: by the segment, or by the one `beyond` it. The corner reaches hw sin theta
// along the segment, and hw sin(theta + phi) - length cos phi along the one beyond, with phi the
// angle at the other joint and `across` the sine of both.
HWY_INLINE hn::Mask<Floats> Fits(const Joint& joint, const Joint& other, F corner, F across,
                                 F length, F beyond) {
  const F backOff = hn::Abs(joint.backOff);
  const auto square =
      hn::Or(hn::Lt(other.turn, Set(kSharpTurn)), hn::Gt(hn::Abs(other.backOff), length));
  const F both = hn::Add(joint.backOff, hn::IfThenZeroElse(square, other.backOff));
  const auto hasRoom = hn::And(hn::Le(backOff, length), hn::Le(hn::Abs(both), length));
  const auto within = hn::Le(hn::Mul(backOff, joint.turn), length);
  const F reach = hn::Sub(hn::Mul(corner, across), hn::Mul(length, hn::Sub(other.turn, Set(1))));
  const auto withinNext = hn::AndNot(square, hn::Le(reach, beyond));
  return hn::And(hasRoom, hn::Or(within, withinNext));
}

// A joint that takes no more than half of either segment is good whatever its neighbours are, which
// most are.
void JudgeJoints(const ChunkPoints& points, float halfWidth, ChunkGeometry& out) {
  const int end = points.segments + kContext;
  for (int i = kContext; i <= end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const Joint joint(out, i);
    const auto length = [&](int segment) { return hn::LoadU(kFloats, out.length + segment); };
    const F twice = hn::Abs(hn::Add(joint.backOff, joint.backOff));
    const auto soft = hn::Ge(joint.turn, Set(kSharpTurn));
    auto good = hn::And(soft, hn::Le(twice, hn::Min(length(i - 1), length(i))));
    if (!hn::AllTrue(kFloats, good)) {
      const F corner = hn::CopySign(Set(halfWidth), joint.backOff);
      const auto fits = hn::And(Fits(joint, Joint(out, i - 1), corner, Cross(out, i - 2, i),
                                     length(i - 1), length(i - 2)),
                                Fits(joint, Joint(out, i + 1), corner, Cross(out, i - 1, i + 1),
                                     length(i), length(i + 1)));
      good = hn::Or(good, hn::And(soft, fits));
    }
    hn::StoreU(hn::VecFromMask(kInts, hn::RebindMask(kInts, good)), kInts, out.good + i);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#endif
