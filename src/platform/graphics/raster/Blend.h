// Source-over blending of a solid colour and of premultiplied pixels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/graphics/raster/CoveragePlane.h"
#include "platform/graphics/raster/Ink.h"

namespace raster {

// Blends `ink` over every listed group of eight pixels.
void BlendGroups(const GroupList& groups, const Ink& ink, std::uint32_t* pixels);

// The same for groups of which only the pixels with coverage belong to the target: the others are
// neither read nor written.
void BlendCutGroups(const GroupList& groups, const Ink& ink, std::uint32_t* pixels);

// Blends `ink` over `count` pixels, fully covered.
void BlendRun(const Ink& ink, std::uint32_t* pixels, std::size_t count);

// Blends `count` premultiplied pixels of `source` over `pixels`.
void BlendPixels(const std::uint32_t* source, std::uint32_t* pixels, std::size_t count);

}  // namespace raster
