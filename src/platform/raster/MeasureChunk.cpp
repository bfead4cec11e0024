#include "platform/raster/StrokeChunk.h"

#include <algorithm>
#include <iterator>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/raster/MeasureChunk.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/raster/Joints-inl.h"
#include "platform/raster/Lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace raster {
namespace HWY_NAMESPACE {
namespace {

using HalfPlanes = BasicHalfPlane<I>;
constexpr hn::Rebind<std::uint8_t, Floats> kBytes;

// The largest piece whose half-planes 16 bits hold over its whole box.
constexpr float kLongestInLanes = 16.0F;
constexpr float kLargestLaneBox = 108.0F;  // width and height together
constexpr float kTallestLaneBox = 60.0F;   // the rows of a column are noted in 64 bits

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

// Stores half-planes for pieces whose first pixels are (x, y).
HWY_INLINE void StoreLanes(const HalfPlanes& edges, I x, I y, LaneArrays& arrays, int i) {
  StoreTwice(edges.a, arrays.a, i);
  StoreTwice(edges.b, arrays.b, i);
  StoreTwice(hn::Add(hn::Add(hn::Mul(edges.a, x), hn::Mul(edges.b, y)), edges.c), arrays.base, i);
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
  std::fill_n(out.length, points.syntheticBefore, 0.0F);
  std::fill_n(out.length + points.segments + 2 * kContext - points.syntheticAfter,
              points.syntheticAfter, 0.0F);
}

// A vector of segments.
struct Segments {
  F tangentX, tangentY, absX, absY;
  F x0, y0, x1, y1;
  F scale;
  I startSeamed, endSeamed;

  HWY_INLINE Segments(const ChunkPoints& points, const ChunkGeometry& out, int i)
      : tangentX(hn::LoadU(kFloats, out.tangentX + i)),
        tangentY(hn::LoadU(kFloats, out.tangentY + i)),
        absX(hn::Abs(tangentX)),
        absY(hn::Abs(tangentY)),
        x0(hn::LoadU(kFloats, points.x + i)),
        y0(hn::LoadU(kFloats, points.y + i)),
        x1(hn::LoadU(kFloats, points.x + i + 1)),
        y1(hn::LoadU(kFloats, points.y + i + 1)),
        scale(HalfPlaneScale<Many>(absX, absY)),
        startSeamed(hn::LoadU(kInts, out.seamed + i)),
        endSeamed(hn::LoadU(kInts, out.seamed + i + 1)) {}
};

// From one joint to the next along one axis, each with its reach.
struct Extent {
  F low, high;

  HWY_INLINE Extent(F first, F second, F firstReach, F secondReach)
      : low(hn::Min(hn::Sub(first, firstReach), hn::Sub(second, secondReach))),
        high(hn::Max(hn::Add(first, firstReach), hn::Add(second, secondReach))) {}
};

// The boxes of pieces, fringe included.
struct Boxes {
  Extent across, down;

  HWY_INLINE Boxes(const Segments& s, float halfWidth, const ChunkGeometry& out, int i)
      : across(s.x0, s.x1, Reach(s.startSeamed, out.reachX + i, halfWidth, s.absY),
               Reach(s.endSeamed, out.reachX + i + 1, halfWidth, s.absY)),
        down(s.y0, s.y1, Reach(s.startSeamed, out.reachY + i, halfWidth, s.absX),
             Reach(s.endSeamed, out.reachY + i + 1, halfWidth, s.absX)) {}

  // -1 where 16 bits hold every half-plane over the box.
  HWY_INLINE I FitLanes(F lengths) const {
    const F width = hn::Sub(across.high, across.low);
    const F height = hn::Sub(down.high, down.low);
    const auto small = hn::And(hn::Le(hn::Add(width, height), Set(kLargestLaneBox)),
                               hn::Le(height, Set(kTallestLaneBox)));
    const auto fits = hn::And(hn::Le(lengths, Set(kLongestInLanes)), small);
    return hn::VecFromMask(kInts, hn::RebindMask(kInts, fits));
  }

 private:
  static HWY_INLINE F Reach(I seamed, const float* seamReach, float halfWidth, F absNormal) {
    const F flat = hn::Add(hn::Mul(Set(halfWidth), absNormal), Set(kFringe));
    const auto isSeamed = hn::MaskFromVec(hn::BitCast(kFloats, seamed));
    return hn::IfThenElse(isSeamed, hn::LoadU(kFloats, seamReach), flat);
  }
};

// Cuts a box to the clip. Blocks of rows count from the box's own top, so that a pixel's coverage
// does not depend on the clip.
HWY_INLINE void StoreClippedBoxes(const Boxes& boxes, const PixelRect& clip, int i,
                                  ChunkGeometry& out) {
  const I left = hn::ShiftRight<kGroupShift>(hn::ConvertTo(kInts, hn::Ceil(boxes.across.low)));
  const I right = hn::ShiftRight<kGroupShift>(hn::ConvertTo(kInts, hn::Floor(boxes.across.high)));
  const I firstColumn = hn::Max(left, hn::Set(kInts, ColumnOf(clip.left)));
  const I lastColumn = hn::Min(right, hn::Set(kInts, ColumnOf(clip.right - 1)));
  const I one = hn::Set(kInts, 1);
  const I top = hn::ConvertTo(kInts, hn::Ceil(boxes.down.low));
  const I bottom = hn::ConvertTo(kInts, hn::Floor(boxes.down.high));
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

HWY_INLINE void StoreSizeClass(I fitsLanes, int i, ChunkGeometry& out) {
  const I columns = hn::LoadU(kInts, out.columns + i);
  const I blocks = hn::LoadU(kInts, out.blocks + i);
  const auto visible = hn::And(hn::Gt(columns, hn::Zero(kInts)), hn::Gt(blocks, hn::Zero(kInts)));
  const I sizeClass = hn::Add(hn::ShiftLeft<4>(hn::Min(columns, hn::Set(kInts, 15))), blocks);
  const I stored = hn::And(hn::IfThenElseZero(visible, sizeClass), fitsLanes);
  hn::StoreU(hn::DemoteTo(kBytes, stored), kBytes, out.sizeClass + i);
}

// The seam at point `i` where the joint is seamed, else the flat end there.
HWY_INLINE HalfPlanes ChooseEnd(I seamed, const HalfPlaneArrays& seam, int i,
                                const HalfPlanes& flat) {
  const auto isSeamed = hn::MaskFromVec(seamed);
  return {hn::IfThenElse(isSeamed, hn::LoadU(kInts, seam.a + i), flat.a),
          hn::IfThenElse(isSeamed, hn::LoadU(kInts, seam.b + i), flat.b),
          hn::IfThenElse(isSeamed, hn::LoadU(kInts, seam.c + i), flat.c)};
}

HWY_INLINE void StoreHalfPlanes(const Segments& s, int i, ChunkGeometry& out) {
  const F middleX = hn::Mul(hn::Add(s.x0, s.x1), Set(0.5F));
  const F middleY = hn::Mul(hn::Add(s.y0, s.y1), Set(0.5F));
  const Normal<Many> across(hn::Neg(s.tangentY), s.tangentX, s.scale);
  const Normal<Many> along(s.tangentX, s.tangentY, s.scale);
  const HalfPlanes flatStart = HalfPlaneThrough(s.x0, s.y0, along, kOnEdge);
  const HalfPlanes flatEnd = HalfPlaneThrough(s.x1, s.y1, along, kOnEdge);
  const I x = hn::ShiftLeft<kGroupShift>(hn::LoadU(kInts, out.column + i));
  const I y = hn::LoadU(kInts, out.row + i);
  StoreLanes(HalfPlaneThrough(middleX, middleY, across, 0), x, y, out.strip, i);
  StoreLanes(ChooseEnd(s.startSeamed, out.seam, i, flatStart), x, y, out.start, i);
  StoreLanes(ChooseEnd(s.endSeamed, out.seam, i + 1, flatEnd), x, y, out.end, i);
}

void MeasurePieces(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
                   ChunkGeometry& out) {
  const int end = points.segments + kContext;
  for (int i = kContext; i < end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const Segments segments(points, out, i);
    const EdgeRamps<Many> ramps(Set(halfWidth), segments.absX, segments.absY, segments.scale);
    StoreTwice(ramps.outer, out.outer, i);
    StoreTwice(ramps.inner, out.inner, i);
    const Boxes boxes(segments, halfWidth, out, i);
    StoreClippedBoxes(boxes, clip, i, out);
    StoreHalfPlanes(segments, i, out);
    hn::StoreU(boxes.across.low, kFloats, out.left + i);
    hn::StoreU(boxes.across.high, kFloats, out.right + i);
    hn::StoreU(boxes.down.low, kFloats, out.top + i);
    hn::StoreU(boxes.down.high, kFloats, out.bottom + i);
    const I fitsLanes = boxes.FitLanes(hn::LoadU(kFloats, out.length + i));
    hn::StoreU(fitsLanes, kInts, out.fitsLanes + i);
    StoreSizeClass(fitsLanes, i, out);
  }
}

// The box of the pieces with a size class, and which segments need more than their lanes.
void Summarize(ChunkGeometry& out) {
  I left = hn::Set(kInts, INT32_MAX);
  I top = left;
  I right = hn::Set(kInts, INT32_MIN);
  I bottom = right;
  out.unfinished = 0;
  const int end = out.segments + kContext;
  for (int i = kContext; i < end; i += static_cast<int>(hn::Lanes(kFloats))) {
    const auto has =
        hn::Ne(hn::PromoteTo(kInts, hn::LoadU(kBytes, out.sizeClass + i)), hn::Zero(kInts));
    const I column = hn::LoadU(kInts, out.column + i);
    const I row = hn::LoadU(kInts, out.row + i);
    const I past = hn::Add(column, hn::LoadU(kInts, out.columns + i));
    const I rows = hn::ShiftLeft<kBlockShift>(hn::LoadU(kInts, out.blocks + i));
    left = hn::Min(left, hn::IfThenElse(has, column, left));
    top = hn::Min(top, hn::IfThenElse(has, row, top));
    right = hn::Max(right, hn::IfThenElse(has, past, right));
    bottom = hn::Max(bottom, hn::IfThenElse(has, hn::Add(row, rows), bottom));
    const I finished =
        hn::And(hn::LoadU(kInts, out.fitsLanes + i), hn::LoadU(kInts, out.seamed + i));
    out.unfinished |= BitsOf(kInts, hn::Eq(finished, hn::Zero(kInts))) << (i - kContext);
  }
  out.unfinished &= (std::uint64_t{1} << out.segments) - 1;
  out.box = {hn::GetLane(hn::MinOfLanes(kInts, left)), hn::GetLane(hn::MinOfLanes(kInts, top)),
             hn::GetLane(hn::MaxOfLanes(kInts, right)), hn::GetLane(hn::MaxOfLanes(kInts, bottom))};
}

void Measure(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
             ChunkGeometry& out) {
  out.segments = points.segments;
  MeasureTangents(points, out);
  MeasureJoints(points, halfWidth, out);
  ChooseSeams(points, halfWidth, out);
  MeasurePieces(points, halfWidth, clip, out);
  std::fill(out.sizeClass + kContext + points.segments, std::end(out.sizeClass), std::uint8_t{0});
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
