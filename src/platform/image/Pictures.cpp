#include <parchlet/Pictures.h>

#include <span>
#include <string_view>
#include <utility>

#include "platform/image/Picture.h"

namespace parchlet {

namespace {

PictureEncoder EncoderFor(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  const std::string_view suffix = dot == std::string_view::npos ? "" : path.substr(dot);
  if (suffix == ".jpg") {
    return PictureEncoder::kJpeg;
  }
  return suffix == ".bmp" ? PictureEncoder::kBmp : PictureEncoder::kPng;
}

}  // namespace

Picture DecodePicture(const std::string& bytes) {
  ::Picture decoded = ::DecodePicture(std::as_bytes(std::span(bytes)));
  return {decoded.width, decoded.height, std::move(decoded.pixels)};
}

bool SavePicture(const Picture& picture, const std::string& path) {
  if (picture.width < 1 || picture.height < 1 ||
      picture.pixels.size() / static_cast<std::size_t>(picture.width) <
          static_cast<std::size_t>(picture.height)) {
    return false;
  }
  return ::SavePicture({picture.pixels.data(), picture.width, picture.height,
                        static_cast<std::ptrdiff_t>(picture.width) * 4},
                       EncoderFor(path), path);
}

}  // namespace parchlet
