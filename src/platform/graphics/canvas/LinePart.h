// What a frame notes of a stretch of a line: where it lies and what it looks like, as a hash.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/graphics/raster/Geometry.h"

namespace canvas {

struct LinePart {
  raster::GridPoint low, high;  // the box of its points
  std::uint64_t hash = 0;       // of its points, in order
  // Whether the line turns by more than a right angle: a mitre may then reach ten times the half
  // width.
  bool sharp = false;
};

// Measures a line part by part, `step` segments each, the last one fewer; at least one part. A part
// is measured with the points right before and behind it: the joints at its ends are its business
// too. `line` has a point at least.
void MeasureParts(std::span<const raster::GridPoint> line, std::size_t step,
                  std::vector<LinePart>& parts);

}  // namespace canvas
