#include "common/Input.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <limits>
#include <system_error>

namespace apps {

namespace {

// Returns up to kMaxFileBytes, and one byte more when there is more.
std::string ReadBytes(std::istream& file) {
  constexpr std::size_t kChunk = std::size_t{1} << 20;
  std::string bytes;
  while (file && bytes.size() <= kMaxFileBytes) {
    const std::size_t size = bytes.size();
    bytes.resize(std::min(size + kChunk, kMaxFileBytes + 1));
    file.read(&bytes[size], static_cast<std::streamsize>(bytes.size() - size));
    bytes.resize(size + static_cast<std::size_t>(file.gcount()));
  }
  return bytes;
}

// Returns 0 for anything but a whole number of 1 or more.
int ReadExtent(std::string_view text) {
  const std::uint64_t number = ReadNumber(text).value_or(0);
  return number <= std::numeric_limits<int>::max() ? static_cast<int>(number) : 0;
}

}  // namespace

std::optional<std::uint64_t> ReadNumber(std::string_view text) {
  std::uint64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

std::optional<PageSize> ReadSize(std::string_view text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string_view::npos) {
    return std::nullopt;
  }
  const PageSize size = {ReadExtent(text.substr(0, cross)), ReadExtent(text.substr(cross + 1))};
  return size.width > 0 && size.height > 0 ? std::optional(size) : std::nullopt;
}

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
  if (bytes.size() > kMaxFileBytes) {
    throw Failure(path + ": is larger than " + std::to_string(kMaxFileBytes) + " bytes");
  }
  return bytes;
}

parchlet::Picture DecodeFileBytes(const std::string& bytes, const std::string& path) {
  parchlet::Picture picture = parchlet::DecodePicture(bytes);
  if (picture.width == 0) {
    throw Failure(path + ": is no PNG, JPEG, BMP or GIF picture that can be shown");
  }
  return picture;
}

}  // namespace apps
