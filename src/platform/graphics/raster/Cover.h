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

// |a x + b y + c| <= half a stroke's width, in 1/256 px, with the two ramps of its edges.
struct LooseStrip {
  double a = 0, b = 0, c = 0;
  std::int32_t outer = 0;
  std::int32_t inner = 0;
};

// A piece whose planes outgrow 16 bits over its box, or that no chunk made: it is covered cell by
// cell, each with planes of its own.
struct LoosePiece {
  LooseStrip strip;
  LooseStrip other;      // a mitre lies in the strips of both of its segments
  bool isMitre = false;  // whether `other` counts
  Plane start;
  Plane end;
  bool thin = false;
  float left = 0, top = 0, right = 0, bottom = 0;  // the box, fringe included
};

// Covers the narrow pieces of a chunk. `thin`: for pens so fine that a pixel can reach past both
// edges.
void CoverChunk(const ChunkGeometry& geometry, bool thin, CoveragePlane& plane);

void CoverLoosePiece(const LoosePiece& piece, CoveragePlane& plane);

}  // namespace raster
