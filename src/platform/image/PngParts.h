// What a PNG file says about its pixels, read before they are decoded.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

struct PngParts {
  int width = 0;  // width and height are within the limits
  int height = 0;
  int depth = 0;  // bits a sample
  // The colour that is not drawn, red, green and blue, in samples of `depth` bits; a grey one three
  // times.
  std::optional<std::array<std::uint32_t, 3>> transparent;
  // The file, reduced to the header, the palette with its alpha, and the pixels. Everything else,
  // such as packed texts and colour profiles, changes no pixel and may unpack without bound.
  std::vector<std::byte> reduced;
};

// Returns nothing if the file is cut or damaged outside its packed pixels, over the limits, or too
// short for as many pixels as it promises.
std::optional<PngParts> ReadPngParts(std::span<const std::byte> bytes);
