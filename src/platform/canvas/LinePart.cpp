#include "platform/canvas/LinePart.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/canvas/LinePart.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#include "platform/canvas/Hash.h"

#ifndef PARCHLET_LINE_PART_ONCE
#define PARCHLET_LINE_PART_ONCE
namespace canvas {
namespace {

inline void MeasureFew(std::span<const raster::GridPoint> points, LinePart& part) {
  part.low = part.high = points.front();
  std::uint64_t hash = 1;
  for (const raster::GridPoint& point : points) {
    hash = Mix(hash, Pair(point.x, point.y));
    part.low = {std::min(part.low.x, point.x), std::min(part.low.y, point.y)};
    part.high = {std::max(part.high.x, point.x), std::max(part.high.y, point.y)};
  }
  part.hash = Mix(hash, points.size());
}

// A part that begins or ends with a repeated point does not tell which way the line came or goes
// on: it counts as sharp.
inline bool IsSharp(std::span<const raster::GridPoint> points) {
  const std::size_t count = points.size();
  bool sharp = count > 1 && (points[0] == points[1] || points[count - 1] == points[count - 2]);
  float inX = 0;
  float inY = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const float outX = static_cast<float>(points[i].x) - static_cast<float>(points[i - 1].x);
    const float outY = static_cast<float>(points[i].y) - static_cast<float>(points[i - 1].y);
    sharp |= inX * outX + inY * outY < 0;
    const bool moves = outX != 0 || outY != 0;
    inX = moves ? outX : inX;
    inY = moves ? outY : inY;
  }
  return sharp;
}

}  // namespace
}  // namespace canvas
#endif

HWY_BEFORE_NAMESPACE();
namespace canvas {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using D32 = hn::CappedTag<std::int32_t, 8>;
using DU32 = hn::RebindToUnsigned<D32>;
using DF = hn::RebindToFloat<D32>;
using D64 = hn::Repartition<std::uint64_t, D32>;
using V32 = hn::Vec<D32>;
using V64 = hn::Vec<D64>;
constexpr D32 k32;
constexpr DU32 kU32;
constexpr DF kF;
constexpr D64 k64;
constexpr std::size_t kPoints = hn::MaxLanes(k32) / 2;  // a vector: x, y, x, y, ...

// Differences of coordinates within this range neither overflow nor lose bits as floats.
constexpr std::int32_t kNear = 1 << 22;

// One key for each coordinate, so that the hash depends on the order of the points.
constexpr std::size_t kMostPoints = 32;
struct Keys {
  alignas(64) std::uint32_t words[2][2 * kMostPoints];
};
constexpr Keys MakeKeys() {
  Keys keys = {};
  std::uint64_t state = 1;
  for (auto& row : keys.words) {
    for (std::uint32_t& word : row) {
      state = Mix(state, 0x5851F42D4C957F2DU);
      word = static_cast<std::uint32_t>(Finish(state) >> 32);
    }
  }
  return keys;
}
constexpr Keys kPartKeys = MakeKeys();

// The sum of (x + key) (y + key') over the points, twice, each time with other keys.
struct PairSum {
  V64 first, second;

  HWY_INLINE PairSum() : first(hn::Zero(k64)), second(hn::Zero(k64)) {}
  HWY_INLINE void Add(V32 points, std::size_t at) {
    first = hn::Add(first, Product(points, kPartKeys.words[0] + 2 * at));
    second = hn::Add(second, Product(points, kPartKeys.words[1] + 2 * at));
  }
  HWY_INLINE std::uint64_t Hash() const {
    alignas(64) std::uint64_t lanes[hn::MaxLanes(k64)];
    hn::Store(hn::Xor(first, hn::RotateRight<23>(second)), k64, lanes);
    std::uint64_t hash = 1;
    for (const std::uint64_t lane : lanes) {
      hash = Mix(hash, lane);
    }
    return hash;
  }

 private:
  static HWY_INLINE V64 Product(V32 points, const std::uint32_t* keys) {
    const auto keyed = hn::Add(hn::BitCast(kU32, points), hn::LoadU(kU32, keys));
    const auto upper = hn::BitCast(kU32, hn::ShiftRight<32>(hn::BitCast(k64, keyed)));
    return hn::MulEven(keyed, upper);
  }
};

HWY_INLINE V32 Load(const raster::GridPoint* points) {
  return hn::LoadU(k32, reinterpret_cast<const std::int32_t*>(points));
}

HWY_INLINE raster::GridPoint Reduce(V32 values, bool largest) {
  alignas(64) std::int32_t lanes[hn::MaxLanes(k32)];
  hn::Store(values, k32, lanes);
  raster::GridPoint result = {lanes[0], lanes[1]};
  for (std::size_t i = 1; i < kPoints; ++i) {
    const raster::GridPoint other = {lanes[2 * i], lanes[2 * i + 1]};
    result.x = largest ? std::max(result.x, other.x) : std::min(result.x, other.x);
    result.y = largest ? std::max(result.y, other.y) : std::min(result.y, other.y);
  }
  return result;
}

// Whether any of the turns between three neighbouring points may be sharp. Counts equal points as a
// sharp turn: three points do not tell then which way the line came.
struct TurnTest {
  hn::Vec<DF> least;
  V64 repeated;

  HWY_INLINE TurnTest() : least(hn::Zero(kF)), repeated(hn::Zero(k64)) {}
  HWY_INLINE void Add(V32 a, V32 b, V32 c) {
    const V32 in = hn::Sub(b, a);
    const V32 out = hn::Sub(c, b);
    const auto product = hn::Mul(hn::ConvertTo(kF, in), hn::ConvertTo(kF, out));
    least = hn::Min(least, hn::Add(product, hn::Shuffle2301(product)));
    const V64 none = hn::Zero(k64);
    repeated = hn::Or(repeated, hn::VecFromMask(k64, hn::Eq(hn::BitCast(k64, in), none)));
    repeated = hn::Or(repeated, hn::VecFromMask(k64, hn::Eq(hn::BitCast(k64, out), none)));
  }
  HWY_INLINE bool IsDoubtful() const {
    return !hn::AllFalse(kF, hn::Lt(least, hn::Zero(kF))) ||
           !hn::AllFalse(k64, hn::Ne(repeated, hn::Zero(k64)));
  }
};

// Measures a vector of turns at a time, three points each; the last vector ends with the last
// point. Returns false if IsSharp has to decide whether the part is sharp.
bool MeasureTurns(const raster::GridPoint* points, std::size_t count, LinePart& part) {
  V32 low = Load(points);
  V32 high = low;
  PairSum sum;
  TurnTest turns;
  const std::size_t last = count - kPoints - 2;
  for (std::size_t i = 0;; i = std::min(i + kPoints, last)) {
    const V32 a = Load(points + i);
    const V32 c = Load(points + i + 2);
    low = hn::Min(low, hn::Min(a, c));
    high = hn::Max(high, hn::Max(a, c));
    sum.Add(a, i);
    turns.Add(a, Load(points + i + 1), c);
    if (i == last) {
      sum.Add(c, i + 2);
      break;
    }
  }
  part.low = Reduce(low, false);
  part.high = Reduce(high, true);
  part.hash = Mix(sum.Hash(), count);
  return !turns.IsDoubtful() && part.low.x >= -kNear && part.low.y >= -kNear &&
         part.high.x <= kNear && part.high.y <= kNear;
}

void Measure(std::span<const raster::GridPoint> line, std::size_t step,
             std::vector<LinePart>& parts) {
  std::size_t first = 0;
  do {
    const std::size_t start = first == 0 ? 0 : first - 1;
    const auto points = line.subspan(start, std::min(first + step + 2, line.size()) - start);
    LinePart& part = parts.emplace_back();
    if (points.size() < kPoints + 2 || points.size() > kMostPoints) {
      MeasureFew(points, part);
      part.sharp = IsSharp(points);
    } else if (!MeasureTurns(points.data(), points.size(), part)) {
      part.sharp = IsSharp(points);
    }
    first += step;
  } while (first + 1 < line.size());
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace canvas
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace canvas {

HWY_EXPORT(Measure);

void MeasureParts(std::span<const raster::GridPoint> line, std::size_t step,
                  std::vector<LinePart>& parts) {
  parts.clear();
  HWY_DYNAMIC_DISPATCH(Measure)(line, step, parts);
}

}  // namespace canvas
#endif
