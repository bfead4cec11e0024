#include "platform/PictureFiles.h"

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/files/RegularFile.h"
#include "platform/gdi/DevicePixels.h"
#include "platform/image/Picture.h"
#include "platform/text/Paths.h"

namespace {

// Larger files are refused unread.
constexpr std::size_t kMaxBytes = std::size_t{256} << 20;

struct ReleaseStream {
  void operator()(IStream* stream) const { stream->Release(); }
};
using StreamPointer = std::unique_ptr<IStream, ReleaseStream>;

std::vector<BYTE> ReadFile(const std::wstring& path) {
  const OwnedFile file = OpenRegularFile(path.c_str());
  if (file == nullptr) {
    return {};
  }
  constexpr std::size_t kChunk = std::size_t{64} << 10;
  std::vector<BYTE> bytes;
  std::size_t got = kChunk;
  while (got == kChunk) {
    const std::size_t before = bytes.size();
    bytes.resize(before + kChunk);
    got = std::fread(bytes.data() + before, 1, kChunk, file.get());
    bytes.resize(before + got);
    if (bytes.size() > kMaxBytes) {
      return {};
    }
  }
  return bytes;
}

// By the identifiers of GDI+'s own encoders.
std::optional<PictureEncoder> EncoderOf(const CLSID& encoder) {
  switch (encoder.Data1) {
    case 0x557cf400:
      return PictureEncoder::kBmp;
    case 0x557cf401:
      return PictureEncoder::kJpeg;
    case 0x557cf406:
      return PictureEncoder::kPng;
    default:
      return std::nullopt;
  }
}

}  // namespace

// GDI+ keeps a file that it loads open and locked for as long as the image lives: it gets a stream.
std::unique_ptr<Gdiplus::Image> LoadPictureFile(const std::wstring& path) {
  const std::vector<BYTE> bytes = ReadFile(path);
  const StreamPointer stream(
      bytes.empty() ? nullptr : SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size())));
  return std::make_unique<Gdiplus::Image>(stream.get());
}

// GDI+ would take neither a bitmap that is selected into a context nor its alpha, and it empties
// the file before it writes.
bool SaveBitmap(HBITMAP bitmap, int width, int height, const std::wstring& path,
                const CLSID& encoder) {
  const std::optional<PictureEncoder> format = EncoderOf(encoder);
  const BitmapCopy copy = CopyBitmap(bitmap);
  if (!format || copy.width != width || copy.height != height) {
    return false;
  }
  const PictureView view = {copy.pixels.data(), width, height,
                            static_cast<std::ptrdiff_t>(width) * 4};
  return SavePicture(view, *format, NativePath(path.c_str()));
}
