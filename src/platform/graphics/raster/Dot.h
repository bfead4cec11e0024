// A disc, as a dot of the pen is painted.
#pragma once

#include "platform/graphics/raster/CoveragePlane.h"

namespace raster {

// Covers the disc of `radius` around the centre of the pixel (x, y).
void CoverDot(GridPoint center, float radius, CoveragePlane& plane);

}  // namespace raster
