// Content.h - the pictures that pages show below their marks.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Platform.h>

struct Picture;

namespace whiteboard {

// Opaque pixels, 0xFFRRGGBB, row by row.
struct Raster {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// Reads a PNG, JPEG, BMP or GIF. Throws Failure when the file is none of them.
std::shared_ptr<const Picture> LoadContent(const std::string& path);

// The picture stretched to that size over white paper; just paper for null.
Raster Render(const Picture* content, int width, int height);

// The path that a person typed, pasted or dropped: without blanks and quotes around it, "file://"
// and "~" understood.
std::string CleanPath(const std::string& text);

}  // namespace whiteboard
