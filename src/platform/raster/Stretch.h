// Stretching a picture onto a surface.
#pragma once

#include "platform/raster/Geometry.h"

namespace raster {

// Stretches `source`, a rectangle of the picture, bilinearly into `destination` and blends it over
// the pixels of `shown`, which lies on the surface and within the destination. Draws nothing if
// `source` is empty or reaches over the picture's edge.
void StretchPicture(const PixelSource& picture, const PixelRect& source,
                    const PixelRect& destination, const PixelRect& shown,
                    const PixelSurface& surface);

}  // namespace raster
