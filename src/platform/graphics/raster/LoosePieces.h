// Pieces that are rare enough to be measured one by one: long segments, and the corners of joints
// whose segments end square.
#pragma once

#include "platform/graphics/raster/Cover.h"

namespace raster {

// A pen at least this wide never lets both of its edges cut one pixel.
inline constexpr float kThickHalfWidth = 0.75F;

// Segment `i` of a measured chunk.
LoosePiece MakeLongPiece(const ChunkPoints& points, const ChunkGeometry& geometry, int i,
                         float halfWidth);

// Covers the outer corner of the joint at point `i`, both of whose segments end square: the mitre
// as two half-wedges, one to each side of the seam, or past the mitre limit the bevel.
void CoverCorner(const ChunkPoints& points, const ChunkGeometry& geometry, int i, float halfWidth,
                 CoveragePlane& plane);

}  // namespace raster
