#include "platform/image/Picture.h"

#include <algorithm>
#include <array>

#include "platform/image/PngDecoder.h"

namespace {

constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

template <std::size_t size>
bool StartsWith(std::span<const std::byte> bytes, const std::array<std::uint8_t, size>& signature) {
  return bytes.size() >= size && std::equal(signature.begin(), signature.end(), bytes.begin(),
                                            [](std::uint8_t expected, std::byte found) {
                                              return std::byte{expected} == found;
                                            });
}

}  // namespace

Picture DecodePicture(std::span<const std::byte> bytes) {
  if (StartsWith(bytes, kPngSignature)) {
    return DecodePng(bytes);
  }
  return {};
}
