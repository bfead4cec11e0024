// Source-over blending of a solid colour and of premultiplied pixels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/graphics/raster/CoveragePlane.h"
#include "platform/graphics/raster/Ink.h"

namespace raster {

// Moves the mark out of the plane: blends `ink` over the surface as far as the mark covers each
// pixel within the plane's clip, and leaves the plane zero.
void BlendMark(CoveragePlane& plane, const Ink& ink, const PixelSurface& surface);

// Blends `ink` over `count` pixels, fully covered.
void BlendRun(const Ink& ink, std::uint32_t* pixels, std::size_t count);

}  // namespace raster
