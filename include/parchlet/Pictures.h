// Pictures.h - off Windows: the engine's own picture decoders and encoders, for hosts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/Platform.h>

#if !defined(_WIN32)

namespace parchlet {

// A picture in memory: premultiplied 0xAARRGGBB, row by row, top row first, width * height of them.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// Both functions keep no state and may be called from any thread. They throw std::bad_alloc when
// memory runs out.

// Decodes the content of a PNG, JPEG, BMP or GIF file, of a GIF the first frame. Returns a picture
// of 0 x 0 for anything else: another format, a damaged file, or more than 64 million pixels.
PARCHLET_API Picture DecodePicture(const std::string& bytes);

// Writes the picture to `path` (UTF-8), in the formats of Parchlet::SavePage: JPEG for ".jpg", BMP
// for ".bmp", PNG for any other name. PNG keeps alpha; JPEG and BMP show the picture over white.
// Returns false, and leaves the file that was there as it was, when the picture is empty or has
// fewer pixels than its size says, and when the file cannot be written.
PARCHLET_API bool SavePicture(const Picture& picture, const std::string& path);

}  // namespace parchlet

#endif
