// PictureFile.h - picture files for tests to make and to look at.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <parchlet/Pictures.h>

inline std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// What the file holds; of size 0 x 0 when that is no picture.
inline parchlet::Picture ReadPicture(const std::filesystem::path& path) {
  return parchlet::DecodePicture(ReadWholeFile(path));
}

// Makes a PNG file of one colour, 0xAARRGGBB.
inline void WritePicture(const std::filesystem::path& path, int width, int height,
                         std::uint32_t color) {
  const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height, color);
  if (!parchlet::SavePicture({width, height, pixels}, path.string())) {
    throw std::runtime_error("no picture " + path.string());
  }
}
