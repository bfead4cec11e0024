// Pictures: decoding by content and encoding to files. This room uses no other room of the layer
// and keeps no state. Every function may be called from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

enum class PictureFormat { kUnknown, kPng, kJpeg, kBmp, kGif };

// Decoded pixels: premultiplied 0xAARRGGBB, row by row, top row first. If decoding failed, width
// and height are 0 and the format is kUnknown.
struct Picture {
  PictureFormat format = PictureFormat::kUnknown;
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// Decodes the bytes of an image file by their content; the file's name does not count.
Picture DecodePicture(std::span<const std::byte> bytes);

// Pixels to encode: premultiplied 0xAARRGGBB, `stride` bytes from one row to the next.
struct PictureView {
  const std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t stride = 0;
};

enum class PictureEncoder {
  kPng,   // 8 bits a channel, alpha kept
  kJpeg,  // quality 90, composed over white
  kBmp,   // 24 bits a pixel, composed over white
};

// Writes an image file at `path` (UTF-8), as ReplacingFile does: a failure harms no existing file
// and leaves nothing behind. Returns false for empty pixels, for a size that the format cannot
// hold, and if the file cannot be written.
bool SavePicture(const PictureView& view, PictureEncoder encoder, const std::string& path);
