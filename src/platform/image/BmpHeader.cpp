#include "platform/image/BmpHeader.h"

#include <algorithm>
#include <bit>

#include "platform/image/Limits.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr std::size_t kFileHeaderSize = 14;
constexpr std::uint32_t kCoreHeaderSize = 12;
constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kMasksHeaderSize = 52;
constexpr std::uint32_t kAlphaMaskHeaderSize = 56;
constexpr std::array<std::uint32_t, 6> kHeaderSizes = {
    kCoreHeaderSize, kInfoHeaderSize, kMasksHeaderSize, kAlphaMaskHeaderSize, 108, 124};
constexpr std::size_t kMasksOffset = kFileHeaderSize + kInfoHeaderSize;
constexpr std::size_t kColorMasksSize = 12;

enum Compression : std::uint32_t { kRgb = 0, kRle8 = 1, kRle4 = 2, kBitFields = 3 };

// Returns the little-endian number at `offset`; bytes past the end of the file count as 0.
std::uint32_t Number(std::span<const std::byte> bytes, std::size_t offset, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size && offset + i < bytes.size(); ++i) {
    value |= std::to_integer<std::uint32_t>(bytes[offset + i]) << 8 * i;
  }
  return value;
}

std::uint32_t Word(std::span<const std::byte> bytes, std::size_t offset) {
  return Number(bytes, offset, 2);
}

std::uint32_t DoubleWord(std::span<const std::byte> bytes, std::size_t offset) {
  return Number(bytes, offset, 4);
}

bool ReadSize(std::span<const std::byte> bytes, std::uint32_t headerSize, BmpHeader& header) {
  std::int64_t width = Word(bytes, 18);
  std::int64_t height = Word(bytes, 20);
  if (headerSize != kCoreHeaderSize) {
    width = static_cast<std::int32_t>(DoubleWord(bytes, 18));
    height = static_cast<std::int32_t>(DoubleWord(bytes, 22));
  }
  header.topDown = height < 0;
  height = header.topDown ? -height : height;
  if (width < 1 || !IsPictureSizeAllowed(static_cast<std::uint64_t>(width),
                                         static_cast<std::uint64_t>(height))) {
    return false;
  }
  header.width = static_cast<int>(width);
  header.height = static_cast<int>(height);
  return true;
}

bool SetChannel(BmpChannel& channel, std::uint32_t mask) {
  channel.shift = mask == 0 ? 0 : std::countr_zero(mask);
  channel.max = mask >> channel.shift;
  return (channel.max & (channel.max + 1)) == 0;  // one run of bits
}

// Reads the file's masks, or sets the usual ones if it has none. Returns false for masks with gaps.
bool ReadChannels(std::span<const std::byte> bytes, std::uint32_t headerSize, bool ownMasks,
                  BmpHeader& header) {
  std::array<std::uint32_t, 4> masks = {0xFF0000, 0x00FF00, 0x0000FF, 0};
  if (header.bitsPerPixel == 16) {
    masks = {0x7C00, 0x03E0, 0x001F, 0};
  }
  if (ownMasks) {
    for (std::size_t i = 0; i < masks.size(); ++i) {
      masks[i] = DoubleWord(bytes, kMasksOffset + 4 * i);
    }
    if (headerSize < kAlphaMaskHeaderSize) {
      masks[3] = 0;
    }
  }
  return std::equal(
      masks.begin(), masks.end(), header.channels.begin(),
      [](std::uint32_t mask, BmpChannel& channel) { return SetChannel(channel, mask); });
}

bool ReadPacking(std::uint32_t compression, BmpHeader& header) {
  switch (compression) {
    case kRgb:
      return true;
    case kRle8:
      header.packing = BmpPacking::kRle8;
      return header.bitsPerPixel == 8 && !header.topDown;
    case kRle4:
      header.packing = BmpPacking::kRle4;
      return header.bitsPerPixel == 4 && !header.topDown;
    case kBitFields:
      return header.bitsPerPixel == 16 || header.bitsPerPixel == 32;
    default:
      return false;
  }
}

// Reads the colours that lie between the headers and the pixels.
void ReadPalette(std::span<const std::byte> bytes, std::uint32_t headerSize, BmpHeader& header) {
  header.palette.fill(PackPixel(255, 0, 0, 0));
  const std::size_t entrySize = headerSize == kCoreHeaderSize ? 3 : 4;
  const std::size_t start = kFileHeaderSize + headerSize;
  const std::size_t end = std::min(header.pixelOffset, bytes.size());
  std::size_t count = std::size_t{1} << header.bitsPerPixel;
  const std::uint32_t used = headerSize == kCoreHeaderSize ? 0 : DoubleWord(bytes, 46);
  if (used != 0) {
    count = std::min<std::size_t>(count, used);
  }
  for (std::size_t i = 0; i < count && start + (i + 1) * entrySize <= end; ++i) {
    header.palette[i] = PackPixel(255, 0, 0, 0) | Number(bytes, start + i * entrySize, 3);
  }
}

}  // namespace

std::optional<BmpHeader> ReadBmpHeader(std::span<const std::byte> bytes) {
  const std::uint32_t headerSize = DoubleWord(bytes, kFileHeaderSize);
  const bool isCore = headerSize == kCoreHeaderSize;
  const bool isKnown =
      std::find(kHeaderSizes.begin(), kHeaderSizes.end(), headerSize) != kHeaderSizes.end();
  const std::uint32_t compression = isCore ? std::uint32_t{kRgb} : DoubleWord(bytes, 30);
  std::size_t end = kFileHeaderSize + std::size_t{headerSize};
  if (headerSize == kInfoHeaderSize && compression == kBitFields) {
    end += kColorMasksSize;
  }
  BmpHeader header;
  header.pixelOffset = DoubleWord(bytes, 10);
  if (!isKnown || bytes.size() < end || header.pixelOffset < end ||
      !ReadSize(bytes, headerSize, header)) {
    return std::nullopt;
  }
  header.bitsPerPixel = static_cast<int>(Word(bytes, isCore ? 24 : 28));
  constexpr std::array<int, 6> kDepths = {1, 4, 8, 16, 24, 32};
  if (std::find(kDepths.begin(), kDepths.end(), header.bitsPerPixel) == kDepths.end() ||
      !ReadPacking(compression, header) ||
      !ReadChannels(bytes, headerSize, compression == kBitFields, header)) {
    return std::nullopt;
  }
  if (header.bitsPerPixel <= 8) {
    ReadPalette(bytes, headerSize, header);
  }
  return header;
}
