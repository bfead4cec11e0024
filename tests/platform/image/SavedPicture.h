// Pictures of one colour, saved and read again.
#pragma once

#include "ImageFiles.h"
#include "platform/image/Picture.h"

inline constexpr int kSide = 64;

inline bool Save(PictureEncoder encoder, const std::string& path,
                 std::uint32_t pixel = 0xFF336699) {
  const std::vector<std::uint32_t> pixels(std::size_t{kSide} * kSide, pixel);
  return SavePicture({pixels.data(), kSide, kSide, std::ptrdiff_t{kSide} * 4}, encoder, path);
}

inline Picture Load(const std::string& path) {
  return DecodePicture(ReadWholeFile(path));
}

inline constexpr PictureEncoder kEncoders[] = {PictureEncoder::kPng, PictureEncoder::kJpeg,
                                               PictureEncoder::kBmp};
