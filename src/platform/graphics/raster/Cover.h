// Adds the coverage of a stroke's pieces to the plane.
#pragma once

#include <cstdint>

#include "platform/graphics/raster/CoveragePlane.h"
#include "platform/graphics/raster/StrokeChunk.h"

namespace raster {

struct Plane {
  std::int32_t a = 0;
  std::int32_t b = 0;
  std::int32_t c = 0;
};

// A piece whose planes outgrow 16 bits over its box, or that no chunk made: it is covered cell by
// cell, each with planes of its own.
struct LoosePiece {
  Plane strip;                 // a and b alone: c stands in the exact plane
  double a = 0, b = 0, c = 0;  // the strip's exact plane: a x + b y + c in 1/256 px
  Plane start;
  Plane end;
  std::int32_t outer = 0;
  std::int32_t inner = 0;
  bool thin = false;
  float left = 0, top = 0, right = 0, bottom = 0;  // the box, fringe included
};

// Covers the narrow pieces of a chunk. `thin`: for pens so fine that a pixel can reach past both
// edges.
void CoverChunk(const ChunkGeometry& geometry, bool thin, CoveragePlane& plane);

void CoverLoosePiece(const LoosePiece& piece, CoveragePlane& plane);

}  // namespace raster
