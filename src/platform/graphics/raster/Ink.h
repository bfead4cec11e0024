// A solid colour, prepared for source-over blending.
#pragma once

#include <cstdint>

namespace raster {

// Channels stand in memory order: blue, green, red, alpha.
struct Ink {
  // For full coverage, which is 255 of 256: the premultiplied colour, in 1/128 levels as 8 bits
  // would lose the fraction, and the share of the ground that it takes away, in 1/32768, at most
  // 32767. Of no use when opaque.
  std::int16_t fineColor[4];
  std::int16_t fineAlpha;
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
  const auto fine = [](std::uint32_t value) {
    constexpr std::uint32_t kUnit = 255 * 255;
    const std::uint32_t rounded = (value * 32768 + kUnit / 2) / kUnit;
    return static_cast<std::int16_t>(rounded < 32767 ? rounded : 32767);
  };
  ink.fineAlpha = fine(alpha * 256);
  for (int channel = 0; channel < 4; ++channel) {
    const std::uint32_t value = channel == 3 ? 255 : argb >> (8 * channel) & 0xFF;
    ink.fineColor[channel] = fine(value * alpha);
    ink.premultiplied |= (value * alpha + 127) / 255 << (8 * channel);
  }
  return ink;
}

}  // namespace raster
