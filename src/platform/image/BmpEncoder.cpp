#include <limits>
#include <vector>

#include "platform/image/Encoders.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr std::uint32_t kFileHeaderSize = 14;
constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kHeadersSize = kFileHeaderSize + kInfoHeaderSize;
constexpr std::uint32_t kBitsPerPixel = 24;

void Append(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) {
    bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
  }
}

std::vector<std::uint8_t> MakeHeaders(const PictureView& view, std::uint32_t pixelBytes) {
  std::vector<std::uint8_t> headers = {'B', 'M'};
  Append(headers, kHeadersSize + pixelBytes, 4);
  Append(headers, 0, 4);
  Append(headers, kHeadersSize, 4);
  Append(headers, kInfoHeaderSize, 4);
  Append(headers, static_cast<std::uint32_t>(view.width), 4);
  Append(headers, static_cast<std::uint32_t>(view.height), 4);
  Append(headers, 1, 2);
  Append(headers, kBitsPerPixel, 2);
  headers.resize(kHeadersSize);  // the rest is zero: not packed, no resolution, no palette
  return headers;
}

}  // namespace

bool EncodeBmp(const PictureView& view, ReplacingFile& file) {
  const std::uint64_t stride =
      (std::uint64_t{static_cast<std::uint32_t>(view.width)} * 3 + 3) / 4 * 4;
  const std::uint64_t pixelBytes = stride * static_cast<std::uint32_t>(view.height);
  if (pixelBytes > std::numeric_limits<std::uint32_t>::max() - kHeadersSize) {
    return false;
  }
  const auto headers = MakeHeaders(view, static_cast<std::uint32_t>(pixelBytes));
  if (!file.Write(headers.data(), headers.size())) {
    return false;
  }
  std::vector<std::uint8_t> row(stride);
  for (int y = view.height - 1; y >= 0; --y) {
    auto* byte = row.data();
    for (int x = 0; x < view.width; ++x) {
      const StraightColor color = ComposeOverWhite(PixelAt(view, x, y));
      *byte++ = color.blue;
      *byte++ = color.green;
      *byte++ = color.red;
    }
    if (!file.Write(row.data(), row.size())) {
      return false;
    }
  }
  return true;
}
