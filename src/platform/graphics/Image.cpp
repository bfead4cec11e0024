#include <array>
#include <cstdio>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/files/RegularFile.h"
#include "platform/graphics/Graphics.h"
#include "platform/image/Picture.h"

namespace parchlet::graphics {

namespace {

// Larger files are refused unread: no picture within the decoders' limits needs as much.
constexpr std::size_t kMaxBytes = std::size_t{256} << 20;
constexpr std::size_t kChunk = std::size_t{64} << 10;

// Collects what `read` returns, chunk by chunk, until it is less than was asked for. Empty when
// there is too much of it.
template <class Read>
std::vector<std::byte> ReadAll(Read read) {
  std::vector<std::byte> bytes;
  for (;;) {
    const std::size_t before = bytes.size();
    bytes.resize(before + kChunk);
    const std::size_t got = read(bytes.data() + before, kChunk);
    bytes.resize(before + got);
    if (bytes.size() > kMaxBytes) {
      return {};
    }
    if (got < kChunk) {
      return bytes;
    }
  }
}

std::vector<std::byte> ReadFile(const wchar_t* path) {
  const OwnedFile file = OpenRegularFile(path);
  if (file == nullptr) {
    return {};
  }
  return ReadAll(
      [&](std::byte* to, std::size_t size) { return std::fread(to, 1, size, file.get()); });
}

std::vector<std::byte> ReadStream(IStream* stream) {
  return ReadAll([&](std::byte* to, std::size_t size) -> std::size_t {
    // A stream may return less than was asked for before its end.
    std::size_t filled = 0;
    ULONG got = 0;
    while (filled < size &&
           SUCCEEDED(stream->Read(to + filled, static_cast<ULONG>(size - filled), &got)) &&
           got > 0 && got <= size - filled) {
      filled += got;
    }
    return filled;
  });
}

constexpr GUID RawFormat(std::uint32_t first) {
  return {first, 0x0728, 0x11d3, {0x9d, 0x7b, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
}

GUID RawFormatOf(PictureFormat format) {
  switch (format) {
    case PictureFormat::kBmp:
      return RawFormat(0xb96b3cab);
    case PictureFormat::kJpeg:
      return RawFormat(0xb96b3cae);
    case PictureFormat::kPng:
      return RawFormat(0xb96b3caf);
    case PictureFormat::kGif:
      return RawFormat(0xb96b3cb0);
    case PictureFormat::kUnknown:
      break;
  }
  return RawFormat(0xb96b3ca9);
}

}  // namespace

Image::Image(std::shared_ptr<const ::Picture> picture)
    : picture(std::move(picture)), lastStatus(this->picture->width > 0 ? Ok : InvalidParameter) {}

Image::Image(const wchar_t* path)
    : Image(std::make_shared<const ::Picture>(::DecodePicture(ReadFile(path)))) {}

Image::Image(IStream* stream)
    : Image(std::make_shared<const ::Picture>(::DecodePicture(ReadStream(stream)))) {}

Image::~Image() = default;

UINT Image::GetWidth() {
  return static_cast<UINT>(picture->width);
}

UINT Image::GetHeight() {
  return static_cast<UINT>(picture->height);
}

Image* Image::GetThumbnailImage(UINT width, UINT height, GetThumbnailImageAbort /*abort*/,
                                void* /*data*/) {
  if (picture->width == 0 || width != GetWidth() || height != GetHeight()) {
    lastStatus = InvalidParameter;
    return nullptr;
  }
  return new Image(picture);
}

Status Image::GetRawFormat(GUID* format) {
  if (picture->width == 0) {
    lastStatus = InvalidParameter;
    return InvalidParameter;
  }
  *format = RawFormatOf(picture->format);
  return Ok;
}

Status Image::GetLastStatus() {
  const Status status = lastStatus;
  lastStatus = Ok;
  return status;
}

}  // namespace parchlet::graphics
