#include <algorithm>

#include "ImageFiles.h"

namespace {

constexpr std::uint32_t kFileHeaderSize = 14;
constexpr std::uint32_t kCoreHeaderSize = 12;

void Append(Bytes& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) {
    bytes.push_back(static_cast<std::byte>(value >> 8 * i));
  }
}

void AppendInfo(Bytes& bytes, const BmpFile& file) {
  const int sideSize = file.headerSize == kCoreHeaderSize ? 2 : 4;
  Append(bytes, file.headerSize, 4);
  Append(bytes, static_cast<std::uint32_t>(file.width), sideSize);
  Append(bytes, static_cast<std::uint32_t>(file.height), sideSize);
  Append(bytes, 1, 2);
  Append(bytes, file.bits, 2);
  if (file.headerSize != kCoreHeaderSize) {
    Append(bytes, file.compression, 4);
    Append(bytes, 0, 4);
    Append(bytes, 0, 4);
    Append(bytes, 0, 4);
    Append(bytes, file.colorsUsed, 4);
    Append(bytes, 0, 4);
  }
  for (const std::uint32_t mask : file.masks) {
    Append(bytes, mask, 4);
  }
  if (bytes.size() < kFileHeaderSize + file.headerSize) {
    bytes.resize(kFileHeaderSize + file.headerSize);
  }
}

}  // namespace

Bytes MakeBmp(const BmpFile& file) {
  Bytes bytes = {std::byte{'B'}, std::byte{'M'}};
  Append(bytes, 0, 4);
  Append(bytes, 0, 4);
  Append(bytes, 0, 4);
  AppendInfo(bytes, file);
  for (const FileColor& color : file.palette) {
    Append(bytes, std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 | color.blue,
           file.headerSize == kCoreHeaderSize ? 3 : 4);
  }
  Bytes offset;
  Append(offset, static_cast<std::uint32_t>(bytes.size()), 4);
  std::copy(offset.begin(), offset.end(), bytes.begin() + 10);
  for (const std::uint8_t byte : file.stored) {
    bytes.push_back(std::byte{byte});
  }
  return bytes;
}
