// How large a picture may be, decided from its header before any of it is decoded.
#pragma once

#include <cstdint>

inline constexpr std::uint64_t kMaxPicturePixels = 64ULL * 1024 * 1024;
// What kMaxPicturePixels take at 4 bytes each; also what a decoder may hold besides them.
inline constexpr std::uint64_t kMaxPictureBytes = 4 * kMaxPicturePixels;
// Bounds the row buffers inside the decoders, which an extremely wide picture would make large.
inline constexpr std::uint64_t kMaxPictureSide = 1'000'000;

constexpr bool IsPictureSizeAllowed(std::uint64_t width, std::uint64_t height) {
  return width >= 1 && height >= 1 && width <= kMaxPictureSide && height <= kMaxPictureSide &&
         width * height <= kMaxPicturePixels;
}
