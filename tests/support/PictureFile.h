// PictureFile.h - picture files for tests to make and to look at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <vector>

#include "platform/image/Picture.h"

// What the file holds; of size 0 x 0 when that is no picture.
inline Picture ReadPicture(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  return DecodePicture(std::as_bytes(std::span(bytes)));
}

// Makes a PNG file of one colour, 0xAARRGGBB.
inline void WritePicture(const std::filesystem::path& path, int width, int height,
                         std::uint32_t color) {
  const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height, color);
  if (!SavePicture({pixels.data(), width, height, std::ptrdiff_t{4} * width}, PictureEncoder::kPng,
                   path.string())) {
    throw std::runtime_error("no picture " + path.string());
  }
}
