// Pieces that are rare enough to be measured one by one: segments that do not fit lanes, and the
// corners of joints without a seam.
#pragma once

#include "platform/raster/Cover.h"

namespace raster {

// Segment `i` of a measured chunk.
CellPiece MakeCellPiece(const ChunkPoints& points, const ChunkGeometry& geometry, int i,
                        float halfWidth);

// Covers the outer corner of the joint at point `i`, where both segments end flat: the mitre, or
// past the mitre limit the bevel.
void CoverCorner(const ChunkPoints& points, const ChunkGeometry& geometry, int i, float halfWidth,
                 CoverageMask& mask);

}  // namespace raster
