// What a JPEG file says about its pixels, read before they are decoded.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

struct JpegSize {
  int width = 0;
  int height = 0;
};

// Walks over the whole file. Returns nothing if it is cut, over the limits, or stores its picture
// in more scans than any real file does.
std::optional<JpegSize> ReadJpegSize(std::span<const std::byte> bytes);
