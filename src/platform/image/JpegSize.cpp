#include "platform/image/JpegSize.h"

#include <algorithm>

#include "platform/image/ContainerReader.h"
#include "platform/image/Limits.h"

namespace {

// The second byte of a marker; the first is 0xFF.
enum Marker : std::uint32_t {
  kStuffed = 0x00,  // no marker, a byte of packed pixels
  kTemporary = 0x01,
  kFirstFrame = 0xC0,
  kHuffmanTables = 0xC4,
  kReserved = 0xC8,
  kArithmeticTables = 0xCC,
  kLastFrame = 0xCF,
  kFirstRestart = 0xD0,
  kStart = 0xD8,
  kEnd = 0xD9,
  kScan = 0xDA
};

bool IsFrame(std::uint32_t marker) {
  return marker >= kFirstFrame && marker <= kLastFrame && marker != kHuffmanTables &&
         marker != kReserved && marker != kArithmeticTables;
}

// Markers without a length and data.
bool IsAlone(std::uint32_t marker) {
  return marker == kStuffed || marker == kTemporary ||
         (marker >= kFirstRestart && marker <= kStart);
}

// Passes over everything up to the next marker, which may follow any number of 0xFF.
std::uint32_t TakeMarker(ContainerReader& reader) {
  const auto rest = reader.Rest();
  const auto start = std::find(rest.begin(), rest.end(), std::byte{0xFF});
  reader.Take(static_cast<std::size_t>(start - rest.begin()));
  std::uint32_t byte = 0xFF;
  while (byte == 0xFF && !reader.IsPastEnd()) {
    byte = reader.TakeByte();
  }
  return byte;
}

bool ReadFrame(std::span<const std::byte> data, JpegSize& size) {
  ContainerReader fields(data);
  fields.TakeByte();  // bits a sample
  const std::uint32_t height = fields.TakeBigEndian(2);
  const std::uint32_t width = fields.TakeBigEndian(2);
  size = {static_cast<int>(width), static_cast<int>(height)};
  return !fields.IsPastEnd() && IsPictureSizeAllowed(width, height);
}

bool AreScansAllowed(std::uint64_t scans, const JpegSize& size) {
  return scans <= kMaxJpegScans &&
         scans * static_cast<std::uint64_t>(size.width) * static_cast<std::uint64_t>(size.height) <=
             kMaxScannedPixels;
}

}  // namespace

std::optional<JpegSize> ReadJpegSize(std::span<const std::byte> bytes) {
  ContainerReader reader(bytes);
  JpegSize size;
  std::uint64_t scans = 0;
  while (!reader.IsPastEnd()) {
    const std::uint32_t marker = TakeMarker(reader);
    if (IsAlone(marker)) {
      continue;
    }
    if (marker == kEnd) {
      return scans > 0 && !reader.IsPastEnd() ? std::optional(size) : std::nullopt;
    }
    const std::uint32_t length = reader.TakeBigEndian(2);
    const auto data = reader.Take(std::max(length, 2U) - 2);
    if (IsFrame(marker) && (size.width != 0 || !ReadFrame(data, size))) {
      return std::nullopt;
    }
    if (marker == kScan && (size.width == 0 || !AreScansAllowed(++scans, size))) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}
