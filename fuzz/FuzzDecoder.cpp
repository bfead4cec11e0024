// Feeds one decoder, named by the build, with whatever the fuzzer invents. The sanitizers find
// misuse of memory; this finds a picture that is neither whole nor absent.
#include <algorithm>
#include <cstdlib>

#include "platform/image/Decoders.h"
#include "platform/image/Limits.h"

namespace {

constexpr std::size_t kChecked = 65536;

bool IsConsistent(const Picture& picture) {
  if (picture.width == 0) {
    return picture.height == 0 && picture.pixels.empty() &&
           picture.format == PictureFormat::kUnknown;
  }
  return IsPictureSizeAllowed(static_cast<std::uint64_t>(picture.width),
                              static_cast<std::uint64_t>(picture.height)) &&
         picture.pixels.size() ==
             static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
}

bool IsPremultiplied(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  return (pixel >> 16 & 0xFF) <= alpha && (pixel >> 8 & 0xFF) <= alpha && (pixel & 0xFF) <= alpha;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Picture picture = PARCHLET_FUZZED_DECODER(std::as_bytes(std::span(data, size)));
  if (!IsConsistent(picture)) {
    std::abort();
  }
  // The corner of a large picture stands for the rest: the time is better spent on more files.
  const auto corner = std::span(picture.pixels).first(std::min(picture.pixels.size(), kChecked));
  if (!std::all_of(corner.begin(), corner.end(), IsPremultiplied)) {
    std::abort();
  }
  return 0;
}
