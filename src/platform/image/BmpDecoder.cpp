#include "platform/image/BmpHeader.h"
#include "platform/image/BmpRle.h"
#include "platform/image/Decoders.h"
#include "platform/image/PixelMath.h"

namespace {

std::uint32_t ByteAt(const std::byte* bytes, std::size_t offset) {
  return std::to_integer<std::uint32_t>(bytes[offset]);
}

std::uint32_t IndexedPixel(const BmpHeader& header, const std::byte* row, std::size_t x) {
  const auto bits = static_cast<std::size_t>(header.bitsPerPixel);
  const std::size_t bit = x * bits;
  const std::size_t shift = 8 - bits - bit % 8;
  const std::uint32_t mask = (1U << bits) - 1;
  return header.palette[ByteAt(row, bit / 8) >> shift & mask];
}

std::uint32_t MaskedPixel(const BmpHeader& header, const std::byte* row, std::size_t x) {
  const std::size_t size = static_cast<std::size_t>(header.bitsPerPixel) / 8;
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value |= ByteAt(row, x * size + i) << 8 * i;
  }
  const auto& channels = header.channels;
  return Premultiply({channels[0].Extract(value, 0), channels[1].Extract(value, 0),
                      channels[2].Extract(value, 0), channels[3].Extract(value, 255)});
}

std::uint32_t FilePixel(const BmpHeader& header, const std::byte* row, std::size_t x) {
  if (header.bitsPerPixel <= 8) {
    return IndexedPixel(header, row, x);
  }
  if (header.bitsPerPixel == 24) {
    return PackPixel(255, ByteAt(row, 3 * x + 2), ByteAt(row, 3 * x + 1), ByteAt(row, 3 * x));
  }
  return MaskedPixel(header, row, x);
}

void ReadRows(const BmpHeader& header, const std::byte* stored, std::size_t stride,
              Picture& picture) {
  const auto width = static_cast<std::size_t>(header.width);
  const auto height = static_cast<std::size_t>(header.height);
  for (std::size_t y = 0; y < height; ++y) {
    const std::byte* row = stored + (header.topDown ? y : height - 1 - y) * stride;
    for (std::size_t x = 0; x < width; ++x) {
      picture.pixels[y * width + x] = FilePixel(header, row, x);
    }
  }
}

// Pixels that a packed file leaves out have the palette's first colour.
Picture MakePicture(const BmpHeader& header) {
  const std::size_t count = static_cast<std::size_t>(header.width) * header.height;
  return {PictureFormat::kBmp, header.width, header.height,
          std::vector<std::uint32_t>(count, header.palette[0])};
}

}  // namespace

Picture DecodeBmp(std::span<const std::byte> bytes) {
  const auto header = ReadBmpHeader(bytes);
  if (!header || header->pixelOffset > bytes.size()) {
    return {};
  }
  const std::span<const std::byte> stored = bytes.subspan(header->pixelOffset);
  if (header->packing != BmpPacking::kNone) {
    Picture picture = MakePicture(*header);
    return UnpackBmpRuns(*header, stored, picture) ? picture : Picture{};
  }
  const std::size_t rowBits = static_cast<std::size_t>(header->width) * header->bitsPerPixel;
  const std::size_t stride = (rowBits + 31) / 32 * 4;
  // The last row may lack the bytes that fill it up to a whole number of words.
  const std::size_t needed =
      stride * (static_cast<std::size_t>(header->height) - 1) + (rowBits + 7) / 8;
  if (stored.size() < needed) {
    return {};
  }
  Picture picture = MakePicture(*header);
  ReadRows(*header, stored.data(), stride, picture);
  return picture;
}
