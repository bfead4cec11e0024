// Adds the coverage of pieces and dots to a mask.
#pragma once

#include <cstdint>

#include "platform/raster/CoverageMask.h"
#include "platform/raster/HalfPlane.h"
#include "platform/raster/StrokeChunk.h"

namespace raster {

// The strip |a x + b y + c| <= half a stroke's width, in 1/256 px, with the two ramps of its edges.
struct Strip {
  double a = 0, b = 0, c = 0;
  std::int32_t outer = 0;
  std::int32_t inner = 0;
};

// A piece that is covered cell by cell, 8 x 16 pixels each: its half-planes outgrow 16 bits over
// its whole box, or no chunk made it.
struct CellPiece {
  Strip strip;
  Strip other;           // a mitre lies in the strips of both of its segments
  bool isMitre = false;  // whether `other` counts
  HalfPlane start = {};
  HalfPlane end = {};
  bool thin = false;  // whether a pixel can reach past both edges of the strip
  float left = 0, top = 0, right = 0, bottom = 0;  // the box, fringe included
};

// Covers the pieces of a chunk that have a size class. `thin` as above.
void CoverChunk(const ChunkGeometry& geometry, bool thin, CoverageMask& mask);

void CoverCellPiece(const CellPiece& piece, CoverageMask& mask);

// Covers the disc of `radius` around the centre of a pixel.
void CoverDot(GridPoint center, float radius, CoverageMask& mask);

}  // namespace raster
