// What the layer offers hosts elsewhere, over the same room of the layer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/Platform.h>

namespace parchlet {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

Picture DecodePicture(const std::string& bytes);
bool SavePicture(const Picture& picture, const std::string& path);

}  // namespace parchlet
