#include "platform/image/Picture.h"

#include <algorithm>
#include <string_view>

#include "platform/image/Decoders.h"

namespace {

bool StartsWith(std::span<const std::byte> bytes, std::string_view signature) {
  return bytes.size() >= signature.size() &&
         std::equal(signature.begin(), signature.end(), bytes.begin(),
                    [](char expected, std::byte found) {
                      return static_cast<std::byte>(expected) == found;
                    });
}

}  // namespace

Picture DecodePicture(std::span<const std::byte> bytes) {
  if (StartsWith(bytes, "\x89PNG\r\n\x1A\n")) {
    return DecodePng(bytes);
  }
  if (StartsWith(bytes, "\xFF\xD8\xFF")) {
    return DecodeJpeg(bytes);
  }
  if (StartsWith(bytes, "GIF87a") || StartsWith(bytes, "GIF89a")) {
    return DecodeGif(bytes);
  }
  if (StartsWith(bytes, "BM")) {
    return DecodeBmp(bytes);
  }
  return {};
}
