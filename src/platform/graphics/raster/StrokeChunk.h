// A stretch of a stroke, point by point, and what its geometry comes to.
//
// A stroke is painted segment by segment. The segment from P to Q with the unit tangent t and the
// normal n covers the strip |(X - P) . n| <= w/2, cut by a seam at either end. At a good joint the
// seam is the bisector plane through the joint: both neighbours use the same integers for it, so
// that what one leaves out the other covers, to the last bit. Elsewhere a segment ends square.
//
// A plane is a X + b Y + c in 1/256 px, scaled so that the larger of |a|, |b| is 256: a step of 256
// along the plane's steeper axis is one pixel, the width over which the coverage of a pixel rises
// from 0 to 1.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/graphics/raster/Geometry.h"

namespace raster {

inline constexpr int kPlaneUnit = 256;
// Where an edge's ramp stands on the edge itself: half, less what averaging in whole bytes rounds
// up.
inline constexpr float kEdgeOffset = 127;
// With the points around them, 60 segments make whole vectors; where a run ends there may be one
// more.
inline constexpr int kChunkSegments = 60;
inline constexpr int kChunkRoom = kChunkSegments + 32;  // vectors may run past the last one
inline constexpr int kContext = 2;                      // points before and behind a chunk's own

// The points of a chunk. Two lie before its first one, which is points[kContext], and two behind
// its last one: the joints at either end depend on them. Segment i, from kContext on, runs from
// point i to point i + 1, and no two neighbours are equal.
struct ChunkPoints {
  alignas(64) float x[kChunkRoom];
  alignas(64) float y[kChunkRoom];
  int segments;
  // How many of the points before and behind are not the stroke's own: it ends there.
  int madeUpBefore;
  int madeUpBehind;
};

struct PlaneArrays {
  alignas(64) std::int32_t a[kChunkRoom];
  alignas(64) std::int32_t b[kChunkRoom];
  alignas(64) std::int32_t c[kChunkRoom];
};

// A number in 16 bits, modulo 2^16, standing twice: to fill a vector of 16-bit lanes takes then no
// more than a load.
using TwiceArray = std::int32_t[kChunkRoom];

// The planes of pieces as their lanes see them.
struct LanePlaneArrays {
  alignas(64) TwiceArray a;
  alignas(64) TwiceArray b;
  alignas(64) TwiceArray base;  // the value at the first pixel of the piece's column and row
};

struct ChunkGeometry {
  // Of segment i, from point i to point i + 1.
  alignas(64) float tangentX[kChunkRoom];
  alignas(64) float tangentY[kChunkRoom];
  alignas(64) float length[kChunkRoom];  // 0 where a point is made up
  // Of the joint at point i.
  PlaneArrays seam;
  alignas(64) float turn[kChunkRoom];    // 1 + cos of the angle that the stroke turns by
  alignas(64) float reachX[kChunkRoom];  // how far the strip's corners stick out at the joint
  alignas(64) float reachY[kChunkRoom];
  // How far the inner corner backs off along both segments, negative where the stroke turns right.
  alignas(64) float backOff[kChunkRoom];
  alignas(64) std::int32_t good[kChunkRoom];  // -1 for a good joint, else 0
  // Of the piece that segment i is painted as.
  LanePlaneArrays strip;         // 0 on the segment
  LanePlaneArrays start;         // 128 on the end at point i, growing along the segment
  LanePlaneArrays end;           // 128 on the end at point i + 1, growing beyond it
  alignas(64) TwiceArray outer;  // the two edge ramps: see the coverage kernel
  alignas(64) TwiceArray inner;
  alignas(64) std::int32_t column[kChunkRoom];
  alignas(64) std::int32_t columns[kChunkRoom];  // below 1: nothing within the clip
  alignas(64) std::int32_t row[kChunkRoom];
  alignas(64) std::int32_t blocks[kChunkRoom];  // below 1: nothing within the clip
  // The same box, fringe included, before it is cut to the clip.
  alignas(64) float left[kChunkRoom];
  alignas(64) float top[kChunkRoom];
  alignas(64) float right[kChunkRoom];
  alignas(64) float bottom[kChunkRoom];
  // -1 when 16 bits hold every plane over the piece's box.
  alignas(64) std::int32_t narrow[kChunkRoom];
  // Columns and blocks as one number, the same for pieces whose loops are alike; 0 for a piece that
  // is not narrow or not within the clip.
  alignas(64) std::uint8_t shape[kChunkRoom];
  PixelRect box;  // of all pieces that have a shape: columns and rows
  // A bit each for segments kContext, kContext + 1 ... that a shape is not all of: pieces that are
  // not narrow, and those that begin at a joint that is not good.
  std::uint64_t rough;
  int segments;
};

// Copies the points before[1] .. before[count] to x and y, up to the first one that repeats its
// predecessor, and gives how many. `count` and what lies in x and y must fit a chunk.
std::size_t TakePoints(const GridPoint* before, std::size_t count, float* x, float* y);

// Measures a chunk for a pen of `halfWidth`; boxes are cut to `clip`.
void MeasureChunk(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
                  ChunkGeometry& geometry);

}  // namespace raster
