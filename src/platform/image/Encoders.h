// The encoders behind SavePicture. Each writes a picture that has pixels into an open file, which
// the caller commits. Returns false if the file or the format cannot hold them. They print nothing.
#pragma once

#include <cstring>

#include "platform/image/Picture.h"
#include "platform/image/ReplacingFile.h"

bool EncodePng(const PictureView& view, ReplacingFile& file);
bool EncodeJpeg(const PictureView& view, ReplacingFile& file);
bool EncodeBmp(const PictureView& view, ReplacingFile& file);

inline std::uint32_t PixelAt(const PictureView& view, int x, int y) {
  std::uint32_t pixel = 0;
  std::memcpy(&pixel,
              reinterpret_cast<const std::byte*>(view.pixels) + y * view.stride +
                  static_cast<std::ptrdiff_t>(x) * static_cast<std::ptrdiff_t>(sizeof pixel),
              sizeof pixel);
  return pixel;
}
