// What is measured of a part of a line: where it lies, and a hash of what it looks like.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/raster/Geometry.h"

namespace canvas {

struct LinePart {
  raster::GridPoint low, high;  // the box of its points
  std::uint64_t hash = 0;       // of its points, in order
  // Whether the line turns by more than a right angle: a mitre may then reach as far as the limit.
  bool sharp = false;
};

// Measures a line in parts of `step` segments, the last one of as many as are left; at least one
// part. A part is measured with the point before it and the point after it, on which the joints at
// its ends depend. `line` has at least one point.
void MeasureParts(std::span<const raster::GridPoint> line, std::size_t step,
                  std::vector<LinePart>& parts);

}  // namespace canvas
