// What a GIF file says about its first frame, read before its pixels are decoded.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

struct GifFrame {
  int screenWidth = 0;  // the screen and the frame are within the limits
  int screenHeight = 0;
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  // The colour of each index; indexes past the file's colours are transparent.
  std::array<std::uint32_t, 256> palette{};
  // A file of this frame alone: decoders unpack every frame that they are shown.
  std::vector<std::byte> alone;
};

// Returns nothing if the file is cut before the end of its first frame, has none, or is over the
// limits.
std::optional<GifFrame> ReadGifFrame(std::span<const std::byte> bytes);
