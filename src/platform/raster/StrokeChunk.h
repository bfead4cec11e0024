// A chunk: the next segments of a stroke, and what their geometry comes to.
//
// A stroke is painted segment by segment. The segment from P to Q with the unit tangent t and the
// normal n is painted as a piece: the strip |(X - P) . n| <= w/2, cut by a half-plane at either
// end. At a seamed joint that half-plane is the seam, the bisector through the joint: both
// neighbours use the same integers for it, so that what one leaves out the other covers, to the
// last bit. At any other joint both segments end flat, and a corner is painted between them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/raster/Geometry.h"

namespace raster {

// With the points around them, 60 segments make whole vectors; where a run ends there may be one
// more.
inline constexpr int kChunkSegments = 60;
inline constexpr int kChunkRoom = kChunkSegments + 32;  // vectors may run past the last one
inline constexpr int kContext = 2;                      // points before and after a chunk's own

// The points of a chunk. Two lie before its first one, which is points[kContext], and two after its
// last one: the joints at either end depend on them. Segment i, from kContext on, runs from point i
// to point i + 1, and no two neighbours are equal.
struct ChunkPoints {
  alignas(64) float x[kChunkRoom];
  alignas(64) float y[kChunkRoom];
  int segments;
  // How many of the points before and after are not the stroke's own: it begins or ends there.
  int syntheticBefore;
  int syntheticAfter;
};

struct HalfPlaneArrays {
  alignas(64) std::int32_t a[kChunkRoom];
  alignas(64) std::int32_t b[kChunkRoom];
  alignas(64) std::int32_t c[kChunkRoom];
};

// A number in 16 bits, modulo 2^16, stored twice: a vector of 16-bit lanes is then filled with one
// load.
using TwiceArray = std::int32_t[kChunkRoom];

// The half-planes of pieces as their lanes see them.
struct LaneArrays {
  alignas(64) TwiceArray a;
  alignas(64) TwiceArray b;
  alignas(64) TwiceArray base;  // the value at the first pixel of the piece's column and row
};

struct ChunkGeometry {
  // Of segment i, from point i to point i + 1.
  alignas(64) float tangentX[kChunkRoom];
  alignas(64) float tangentY[kChunkRoom];
  alignas(64) float length[kChunkRoom];  // 0 at a synthetic point
  // Of the joint at point i.
  HalfPlaneArrays seam;
  alignas(64) float onePlusCos[kChunkRoom];  // of the turn
  alignas(64) float reachX[kChunkRoom];      // from the joint to the box of the strip's corners
  alignas(64) float reachY[kChunkRoom];
  // From the joint back along both segments to the inner corner; negative where the stroke turns
  // right.
  alignas(64) float backOff[kChunkRoom];
  alignas(64) std::int32_t seamed[kChunkRoom];  // -1 for a seamed joint, else 0
  // Of the piece that segment i is painted as.
  LaneArrays strip;              // 0 on the segment
  LaneArrays start;              // kOnEdge on the end at point i, growing along the segment
  LaneArrays end;                // kOnEdge on the end at point i + 1, growing beyond it
  alignas(64) TwiceArray outer;  // the two ramps of the strip's edges
  alignas(64) TwiceArray inner;
  // The piece's box, cut to the clip, in columns and blocks of rows.
  alignas(64) std::int32_t column[kChunkRoom];
  alignas(64) std::int32_t columns[kChunkRoom];  // below 1: nothing within the clip
  alignas(64) std::int32_t row[kChunkRoom];
  alignas(64) std::int32_t blocks[kChunkRoom];  // below 1: nothing within the clip
  // The same box, fringe included, before it is cut to the clip.
  alignas(64) float left[kChunkRoom];
  alignas(64) float top[kChunkRoom];
  alignas(64) float right[kChunkRoom];
  alignas(64) float bottom[kChunkRoom];
  // -1 when 16 bits hold every half-plane over the piece's box.
  alignas(64) std::int32_t fitsLanes[kChunkRoom];
  // Columns and blocks as one number; 0 for a piece that does not fit lanes or lies outside the
  // clip.
  alignas(64) std::uint8_t sizeClass[kChunkRoom];
  PixelRect box;  // of all pieces with a size class: columns and rows
  // A bit each for segments kContext, kContext + 1 ... that need more than their lanes: pieces that
  // do not fit, and those that begin at a joint without a seam.
  std::uint64_t unfinished;
  int segments;
};

// Copies the points before[1] .. before[count] to x and y, up to the first one that repeats its
// predecessor. Returns how many. `count` and what lies in x and y must fit a chunk.
std::size_t TakePoints(const GridPoint* before, std::size_t count, float* x, float* y);

// Measures a chunk for a pen of `halfWidth`; boxes are cut to `clip`.
void MeasureChunk(const ChunkPoints& points, float halfWidth, const PixelRect& clip,
                  ChunkGeometry& geometry);

}  // namespace raster
