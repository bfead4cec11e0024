// Conversions between the pixels of pictures (premultiplied 0xAARRGGBB) and of image files
// (straight alpha, single channels).
#pragma once

#include <algorithm>
#include <cstdint>

// One colour of an image file: 8 bits a channel, not premultiplied.
struct StraightColor {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 255;
};

constexpr std::uint32_t PackPixel(std::uint32_t alpha, std::uint32_t red, std::uint32_t green,
                                  std::uint32_t blue) {
  return alpha << 24 | red << 16 | green << 8 | blue;
}

constexpr std::uint32_t Premultiply(StraightColor color) {
  const auto scale = [alpha = std::uint32_t{color.alpha}](std::uint32_t channel) {
    return (channel * alpha + 127) / 255;
  };
  return PackPixel(color.alpha, scale(color.red), scale(color.green), scale(color.blue));
}

// Returns the straight colour nearest to a premultiplied one. A channel larger than alpha, which no
// painter makes, becomes 255.
constexpr StraightColor Unpremultiply(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  if (alpha == 0) {
    return {0, 0, 0, 0};
  }
  const auto scale = [alpha, pixel](int shift) {
    const std::uint32_t channel = pixel >> shift & 0xFF;
    return static_cast<std::uint8_t>(
        std::min<std::uint32_t>((channel * 255 + alpha / 2) / alpha, 255));
  };
  return {scale(16), scale(8), scale(0), static_cast<std::uint8_t>(alpha)};
}

// Returns a premultiplied colour composed over white; opaque.
constexpr StraightColor ComposeOverWhite(std::uint32_t pixel) {
  const std::uint32_t white = 255 - (pixel >> 24);
  const auto compose = [white, pixel](int shift) {
    return static_cast<std::uint8_t>(std::min<std::uint32_t>((pixel >> shift & 0xFF) + white, 255));
  };
  return {compose(16), compose(8), compose(0), 255};
}

// Returns the opaque pixel of inks on white paper; 255 is full ink.
constexpr std::uint32_t PrintInks(std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                                  std::uint8_t black) {
  const auto shade = [light = 255U - black](std::uint8_t ink) {
    return ((255U - ink) * light + 127) / 255;
  };
  return PackPixel(255, shade(cyan), shade(magenta), shade(yellow));
}
