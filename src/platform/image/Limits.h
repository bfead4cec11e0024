// How large a picture may be. Checked against its header, before its pixels are decoded.
#pragma once

#include <cstdint>

inline constexpr std::uint64_t kMaxPicturePixels = 64ULL * 1024 * 1024;
// The size of kMaxPicturePixels at 4 bytes each. A decoder may use as much again for itself.
inline constexpr std::uint64_t kMaxPictureBytes = 4 * kMaxPicturePixels;
// Bounds the row buffers inside the decoders, which an extremely wide picture would make large.
inline constexpr std::uint64_t kMaxPictureSide = 1'000'000;
// A progressive JPEG stores its picture in scans. Each may be empty, yet costs a walk over the
// whole picture. Real files have about ten.
inline constexpr std::uint64_t kMaxJpegScans = 100;
inline constexpr std::uint64_t kMaxScannedPixels = 16 * kMaxPicturePixels;

constexpr bool IsPictureSizeAllowed(std::uint64_t width, std::uint64_t height) {
  return width >= 1 && height >= 1 && width <= kMaxPictureSide && height <= kMaxPictureSide &&
         width * height <= kMaxPicturePixels;
}
