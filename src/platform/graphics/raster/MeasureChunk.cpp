#include "platform/graphics/raster/StrokeChunk.h"

#include <algorithm>
#include <iterator>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/graphics/raster/MeasureChunk.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/graphics/raster/CoveragePlane.h"
#include "platform/graphics/raster/Joints-inl.h"
#include "platform/graphics/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

constexpr hn::Rebind<std::uint8_t, Floats> kBytes;

constexpr float kLongestNarrow = 16.0F;
constexpr float kWidestNarrowBox = 108.0F;  // width and height together
constexpr float kHighestNarrowBox = 60.0F;  // one bit a row in 64

std::size_t Take(const GridPoint* before, std::size_t count, float* x, float* y) {
  constexpr std::size_t kStep = hn::MaxLanes(kInts);
  const auto load = [](const GridPoint* points, I& xs, I& ys) {
    hn::LoadInterleaved2(kInts, reinterpret_cast<const std::int32_t*>(points), xs, ys);
  };
  std::size_t taken = 0;
  for (; taken + kStep <= count; taken += kStep) {
    I oldX, oldY, newX, newY;
    load(before + taken, oldX, oldY);
    load(before + taken + 1, newX, newY);
    if (!hn::AllFalse(kInts, hn::And(hn::Eq(oldX, newX), hn::Eq(oldY, newY)))) {
      break;
    }
    hn::StoreU(hn::ConvertTo(kFloats, newX), kFloats, x + taken);
    hn::StoreU(hn::ConvertTo(kFloats, newY), kFloats, y + taken);
  }
  for (; taken < count && before[taken + 1] != before[taken]; ++taken) {
    x[taken] = static_cast<float>(before[taken + 1].x);
    y[taken] = static_cast<float>(before[taken + 1].y);
  }
  return taken;
}

alignas(16) constexpr std::uint8_t kLowHalves[16] = {0, 1, 0, 1, 4,  5,  4,  5,
                                                     8, 9, 8, 9, 12, 13, 12, 13};

HWY_INLINE void StoreTwice(I values, TwiceArray& array, int i) {
  constexpr hn::Repartition<std::uint8_t, Ints> kLanes8;
  const auto halves = hn::LoadDup128(kLanes8, kLowHalves);
  hn::StoreU(hn::BitCast(kInts, hn::TableLookupBytes(values, halves)), kInts, array + i);
}

HWY_INLINE Plane Choose(I good, const PlaneArrays& seam, int i, const Plane& square) {
  const auto mask = hn::MaskFromVec(good);
  return {hn::IfThenElse(mask, hn::LoadU(kInts, seam.a + i), square.a),
          hn::IfThenElse(mask, hn::LoadU(kInts, seam.b + i), square.b),
          hn::IfThenElse(mask, hn::LoadU(kInts, seam.c + i), square.c)};
}

// Stores a plane for a piece whose first pixel is (x, y).
HWY_INLINE void Store(const Plane& plane, I x, I y, LanePlaneArrays& arrays, int i) {
  StoreTwice(plane.a, arrays.a, i);
  StoreTwice(plane.b, arrays.b, i);
  StoreTwice(hn::Add(hn::Add(hn::Mul(plane.a, x), hn::Mul(plane.b, y)), plane.c), arrays.base, i);
}

void MeasureTangents(const ChunkPoints& points, ChunkGeometry& out) {
  for (int i = 0; i < points.segments + 2 * kContext; i += static_cast<int>(hn::Lanes(kFloats))) {
    const F dx = hn::Sub(hn::LoadU(kFloats, points.x + i + 1), hn::LoadU(kFloats, points.x + i));
    const F dy = hn::Sub(hn::LoadU(kFloats, points.y + i + 1), hn::LoadU(kFloats, points.y + i));
    const F length = hn::Sqrt(hn::Add(hn::Mul(dx, dx), hn::Mul(dy, dy)));
    const F inverse = hn::Div(Set(1), hn::Max(length, Set(1e-6F)));
    hn::StoreU(hn::Mul(dx, inverse), kFloats, out.tangentX + i);
    hn::StoreU(hn::Mul(dy, inverse), kFloats, out.tangentY + i);
    hn::StoreU(length, kFloats, out.length + i);
  }
  std::fill_n(out.length, points.madeUpBefore, 0.0F);
  std::fill_n(out.length + points.segments + 2 * kContext - points.madeUpBehind,
              points.madeUpBehind, 0.0F);
}

struct Span {
  F low, high;
};

// The extent of a strip along one axis: between its joints, each with its reach.
HWY_INLINE Span Extent(const float* points, const float* reach, const std::int32_t* good,
                       F square) {
  const F first = hn::LoadU(kFloats, points);
  const F second = hn::LoadU(kFloats, points + 1);
  const auto firstGood = hn::MaskFromVec(hn::BitCast(kFloats, hn::LoadU(kInts, good)));
  const auto secondGood = hn::MaskFromVec(hn::BitCast(kFloats, hn::LoadU(kInts, good + 1)));
  const F reach0 = hn::IfThenElse(firstGood, hn::LoadU(kFloats, reach), square);
  const F reach1 = hn::IfThenElse(secondGood, hn::LoadU(kFloats, reach + 1), square);
  return {hn::Min(hn::Sub(first, reach0), hn::Sub(second, reach1)),
          hn::Max(hn::Add(first, reach0), hn::Add(second, reach1))};
}

// Cuts a box to the clip. Blocks of rows count from the box's own top, so that a pixel's coverage
// does not depend on the clip.
HWY_INLINE void StoreBox(const Span& across, const Span& down, const PixelRect& clip, int i,
                         ChunkGeometry& out) {
  const I left = hn::ShiftRight<3>(hn::ConvertTo(kInts, hn::Ceil(across.low)));
  const I right = hn::ShiftRight<3>(hn::ConvertTo(kInts, hn::Floor(across.high)));
  const I firstColumn = hn::Max(left, hn::Set(kInts, clip.left >> 3));
  const I lastColumn = hn::Min(right, hn::Set(kInts, (clip.right - 1) >> 3));
  const I one = hn::Set(kInts, 1);
  const I top = hn::ConvertTo(kInts, hn::Ceil(down.low));
  const I bottom = hn::ConvertTo(kInts, hn::Floor(down.high));
  const I all = hn::Add(hn::ShiftRight<kBlockShift>(hn::Sub(bottom, top)), one);
  const I above =
      hn::Max(hn::ShiftRight<kBlockShift>(hn::Sub(hn::Set(kInts, clip.top), top)), hn::Zero(kInts));
  const I row = hn::Add(top, hn::ShiftLeft<kBlockShift>(above));
  const I inside =
      hn::ShiftRight<kBlockShift>(hn::Sub(hn::Set(kInts, clip.bottom + kBlockRows - 1), row));
  hn::StoreU(firstColumn, kInts, out.column + i);
  hn::StoreU(hn::Add(hn::Sub(lastColumn, firstColumn), one), kInts, out.columns + i);
  hn::StoreU(row, kInts, out.row + i);
  hn::StoreU(hn::Min(hn::Sub(all, above), inside), kInts, out.blocks + i);
}

HWY_INLINE void StoreShape(I narrow, int i, ChunkGeometry& out) {
  const I columns = hn::LoadU(kInts, out.columns + i);
  const I blocks = hn::LoadU(kInts, out.blocks + i);
  const auto visible = hn::And(hn::Gt(columns, hn::Zero(kInts)), hn::Gt(blocks, hn::Zero(kInts)));
  const I shape = hn::Add(hn::ShiftLeft<4>(hn::Min(columns, hn::Set(kInts, 15))), blocks);
  hn::StoreU(hn::DemoteTo(kBytes, hn::And(hn::IfThenElseZero(visible, shape), narrow)), kBytes,
             out.shape + i);
}

// With M and m the larger and the smaller of |nx|, |ny|, an edge's coverage is the mean of two
// ramps of slope 1/M, m/4 to either side of it: half the error of one ramp at 45 degrees.
void MeasurePieces(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
                   ChunkGeometry& out) {
  const F halfPixel = Set(0.5F);
  const int end = points.segments + kContext;
  for (int i = kContext; i < end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const F tx = hn::LoadU(kFloats, out.tangentX + i);
    const F ty = hn::LoadU(kFloats, out.tangentY + i);
    const F x0 = hn::LoadU(kFloats, points.x + i);
    const F y0 = hn::LoadU(kFloats, points.y + i);
    const F x1 = hn::LoadU(kFloats, points.x + i + 1);
    const F y1 = hn::LoadU(kFloats, points.y + i + 1);
    const F middleX = hn::Mul(hn::Add(x0, x1), halfPixel);
    const F middleY = hn::Mul(hn::Add(y0, y1), halfPixel);
    const F absX = hn::Abs(tx);
    const F absY = hn::Abs(ty);
    const F scale = PlaneScale(absX, absY);
    const Plane strip = PlaneThrough(middleX, middleY, {hn::Neg(ty), tx, scale}, 0);
    const Normal along(tx, ty, scale);
    const Plane square0 = PlaneThrough(x0, y0, along, kPlaneUnit / 2);
    const Plane square1 = PlaneThrough(x1, y1, along, kPlaneUnit / 2);
    const I good0 = hn::LoadU(kInts, out.good + i);
    const I good1 = hn::LoadU(kInts, out.good + i + 1);
    const Plane start = Choose(good0, out.seam, i, square0);
    const Plane stop = Choose(good1, out.seam, i + 1, square1);

    const F edge = hn::Add(hn::Mul(Set(halfWidth), scale), Set(kEdgeOffset));
    const F quarter = hn::Mul(hn::Mul(hn::Min(absX, absY), scale), Set(0.25F));
    StoreTwice(Rounded(hn::Add(edge, quarter)), out.outer, i);
    StoreTwice(Rounded(hn::Sub(edge, quarter)), out.inner, i);

    const F squareX = hn::Add(hn::Mul(Set(halfWidth), absY), Set(kFringe));
    const F squareY = hn::Add(hn::Mul(Set(halfWidth), absX), Set(kFringe));
    const Span across = Extent(points.x + i, out.reachX + i, out.good + i, squareX);
    const Span down = Extent(points.y + i, out.reachY + i, out.good + i, squareY);
    StoreBox(across, down, clip, i, out);
    const I firstX = hn::ShiftLeft<3>(hn::LoadU(kInts, out.column + i));
    const I firstY = hn::LoadU(kInts, out.row + i);
    Store(strip, firstX, firstY, out.strip, i);
    Store(start, firstX, firstY, out.start, i);
    Store(stop, firstX, firstY, out.end, i);
    hn::StoreU(across.low, kFloats, out.left + i);
    hn::StoreU(across.high, kFloats, out.right + i);
    hn::StoreU(down.low, kFloats, out.top + i);
    hn::StoreU(down.high, kFloats, out.bottom + i);
    const F box = hn::Add(hn::Sub(across.high, across.low), hn::Sub(down.high, down.low));
    const auto small = hn::And(hn::Le(box, Set(kWidestNarrowBox)),
                               hn::Le(hn::Sub(down.high, down.low), Set(kHighestNarrowBox)));
    const auto narrow =
        hn::And(hn::Le(hn::LoadU(kFloats, out.length + i), Set(kLongestNarrow)), small);
    const I narrowInts = hn::VecFromMask(kInts, hn::RebindMask(kInts, narrow));
    hn::StoreU(narrowInts, kInts, out.narrow + i);
    StoreShape(narrowInts, i, out);
  }
}

// The box of the pieces that have a shape, and which segments have more to them.
void Summarize(ChunkGeometry& out) {
  I left = hn::Set(kInts, INT32_MAX);
  I top = left;
  I right = hn::Set(kInts, INT32_MIN);
  I bottom = right;
  out.rough = 0;
  const int end = out.segments + kContext;
  for (int i = kContext; i < end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const auto has =
        hn::Ne(hn::PromoteTo(kInts, hn::LoadU(kBytes, out.shape + i)), hn::Zero(kInts));
    const I column = hn::LoadU(kInts, out.column + i);
    const I row = hn::LoadU(kInts, out.row + i);
    const I past = hn::Add(column, hn::LoadU(kInts, out.columns + i));
    const I rows = hn::ShiftLeft<kBlockShift>(hn::LoadU(kInts, out.blocks + i));
    left = hn::Min(left, hn::IfThenElse(has, column, left));
    top = hn::Min(top, hn::IfThenElse(has, row, top));
    right = hn::Max(right, hn::IfThenElse(has, past, right));
    bottom = hn::Max(bottom, hn::IfThenElse(has, hn::Add(row, rows), bottom));
    const I smooth = hn::And(hn::LoadU(kInts, out.narrow + i), hn::LoadU(kInts, out.good + i));
    out.rough |= BitsOf(kInts, hn::Eq(smooth, hn::Zero(kInts))) << (i - kContext);
  }
  out.rough &= (std::uint64_t{1} << out.segments) - 1;
  out.box = {hn::GetLane(hn::MinOfLanes(kInts, left)), hn::GetLane(hn::MinOfLanes(kInts, top)),
             hn::GetLane(hn::MaxOfLanes(kInts, right)), hn::GetLane(hn::MaxOfLanes(kInts, bottom))};
}

void Measure(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
             ChunkGeometry& out) {
  out.segments = points.segments;
  MeasureTangents(points, out);
  MeasureJoints(points, halfWidth, out);
  JudgeJoints(points, halfWidth, out);
  MeasurePieces(points, halfWidth, clip, out);
  std::fill(out.shape + kContext + points.segments, std::end(out.shape), std::uint8_t{0});
  Summarize(out);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace raster
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace raster {

HWY_EXPORT(Measure);
HWY_EXPORT(Take);

std::size_t TakePoints(const GridPoint* before, std::size_t count, float* x, float* y) {
  return HWY_DYNAMIC_DISPATCH(Take)(before, count, x, y);
}

void MeasureChunk(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
                  ChunkGeometry& geometry) {
  HWY_DYNAMIC_DISPATCH(Measure)(points, halfWidth, clip, geometry);
}

}  // namespace raster
#endif
