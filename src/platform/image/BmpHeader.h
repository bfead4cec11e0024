// The part of a BMP file before its pixels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

enum class BmpPacking { kNone, kRle8, kRle4 };

// The bits of a 16- or 32-bit pixel that hold one channel.
struct BmpChannel {
  std::uint32_t max = 0;  // the largest value, 0 for a channel that the file lacks
  int shift = 0;

  // The channel of `pixel`, scaled to 0 .. 255; `missing` when the file lacks it.
  std::uint8_t Extract(std::uint32_t pixel, std::uint8_t missing) const {
    if (max == 0) {
      return missing;
    }
    return static_cast<std::uint8_t>((std::uint64_t{pixel >> shift & max} * 255 + max / 2) / max);
  }
};

struct BmpHeader {
  int width = 0;  // width and height are within the limits
  int height = 0;
  bool topDown = false;
  int bitsPerPixel = 0;  // 1, 4, 8, 16, 24 or 32
  BmpPacking packing = BmpPacking::kNone;
  std::array<BmpChannel, 4> channels;        // red, green, blue, alpha; for 16 and 32 bits
  std::array<std::uint32_t, 256> palette{};  // opaque pixels; colours that the file lacks are black
  std::size_t pixelOffset = 0;               // where the pixels start; not checked against the file
};

// Reads the headers, the masks and the palette. Returns nothing if the file is cut within them,
// over the limits, or of a kind that does not exist.
std::optional<BmpHeader> ReadBmpHeader(std::span<const std::byte> bytes);
