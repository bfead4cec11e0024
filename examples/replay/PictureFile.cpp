#include "PictureFile.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <span>
#include <system_error>

#include "Failure.h"
#include "platform/image/Picture.h"

namespace replay {

namespace {

// Up to the most that a picture may have, and one byte more when there is more.
std::string ReadBytes(std::istream& file) {
  constexpr std::size_t kChunk = std::size_t{1} << 20;
  std::string bytes;
  while (file && bytes.size() <= kMaxPictureBytes) {
    const std::size_t size = bytes.size();
    bytes.resize(std::min(size + kChunk, kMaxPictureBytes + 1));
    file.read(&bytes[size], static_cast<std::streamsize>(bytes.size() - size));
    bytes.resize(size + static_cast<std::size_t>(file.gcount()));
  }
  return bytes;
}

}  // namespace

std::string ReadFileBytes(const std::string& path) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw Failure(path + ": cannot be opened: " + std::generic_category().message(errno));
  }
  std::string bytes = ReadBytes(file);
  if (file.bad()) {
    throw Failure(path + ": cannot be read: " + std::generic_category().message(errno));
  }
  if (bytes.size() > kMaxPictureBytes) {
    throw Failure(path + ": is larger than " + std::to_string(kMaxPictureBytes) + " bytes");
  }
  return bytes;
}

PictureBytes ReadPictureFile(const std::string& path) {
  std::string bytes = ReadFileBytes(path);
  if (DecodePicture(std::as_bytes(std::span(bytes))).width == 0) {
    throw Failure(path + ": is no PNG, JPEG, BMP or GIF picture that can be shown");
  }
  return std::make_shared<const std::string>(std::move(bytes));
}

}  // namespace replay
