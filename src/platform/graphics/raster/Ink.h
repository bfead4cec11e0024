// A solid colour, prepared for source-over blending.
#pragma once

#include <cstdint>

namespace raster {

// Channels stand in memory order: blue, green, red, alpha.
struct Ink {
  // Premultiplied, in 1/128 levels: a translucent colour keeps the fraction that 8 bits would lose.
  std::int16_t finePremultiplied[4];
  // What remains of the ground under full coverage is ground * (1 - alpha); alpha in 1/32768, at
  // most 32767.
  std::int16_t alpha15;
  std::uint32_t premultiplied;
  bool opaque;
  bool invisible;
};

// Prepares 0xAARRGGBB that is not premultiplied.
inline Ink MakeInk(std::uint32_t argb) {
  const std::uint32_t alpha = argb >> 24;
  Ink ink{};
  ink.opaque = alpha == 255;
  ink.invisible = alpha == 0;
  ink.alpha15 = static_cast<std::int16_t>(alpha == 255 ? 32767 : (alpha * 32768 + 127) / 255);
  for (int channel = 0; channel < 4; ++channel) {
    const std::uint32_t value = channel == 3 ? 255 : argb >> (8 * channel) & 0xFF;
    ink.finePremultiplied[channel] = static_cast<std::int16_t>((value * alpha * 128 + 127) / 255);
    ink.premultiplied |= (value * alpha + 127) / 255 << (8 * channel);
  }
  return ink;
}

}  // namespace raster
