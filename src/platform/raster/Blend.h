// Source-over blending of a solid colour.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/raster/CoverageMask.h"

namespace raster {

// A colour, prepared for blending. Channels are in memory order: blue, green, red, alpha.
struct Ink {
  // For full coverage, which is 255 of 256: the premultiplied colour in 1/128 levels, as 8 bits
  // would lose the fraction, and the share of the ground that it takes away, in 1/32768, at most
  // 32767. Not used when opaque.
  std::int16_t fineColor[4];
  std::int16_t fineAlpha;
  std::uint32_t premultiplied;
  bool opaque;
  bool invisible;
};

// Prepares 0xAARRGGBB that is not premultiplied.
Ink MakeInk(std::uint32_t argb);

// Blends `ink` over the surface by the coverage within the mask's clip, and leaves the mask zero.
void BlendMask(CoverageMask& mask, const Ink& ink, const PixelSurface& surface);

// Blends `ink` over `count` pixels, fully covered.
void BlendSpan(const Ink& ink, std::uint32_t* pixels, std::size_t count);

}  // namespace raster
