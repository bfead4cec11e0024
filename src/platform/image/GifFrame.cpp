#include "platform/image/GifFrame.h"

#include "platform/image/ContainerReader.h"
#include "platform/image/Limits.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr std::size_t kSignatureSize = 6;
constexpr std::uint32_t kHasColors = 0x80;
constexpr std::uint32_t kColorsMask = 0x07;
constexpr std::uint32_t kHasTransparent = 0x01;
constexpr std::size_t kControlSize = 4;

// The first byte of each part of the file.
enum Part : std::uint32_t { kExtension = 0x21, kFrame = 0x2C, kEnd = 0x3B };
constexpr std::uint32_t kGraphicsControl = 0xF9;

class Parser {
 public:
  explicit Parser(std::span<const std::byte> bytes) : reader(bytes), file(bytes) {}

  std::optional<GifFrame> Run() {
    reader.Take(kSignatureSize);
    frame.screenWidth = static_cast<int>(reader.TakeLittleEndian(2));
    frame.screenHeight = static_cast<int>(reader.TakeLittleEndian(2));
    const std::uint32_t flags = reader.TakeByte();
    reader.Take(2);  // the ground's colour and the shape of a pixel
    const bool hasColors = TakeColors(flags);
    AppendSince(file.size());
    if (reader.IsPastEnd() || !IsAllowed(frame.screenWidth, frame.screenHeight)) {
      return std::nullopt;
    }
    std::uint32_t part = reader.TakeByte();
    for (; part == kExtension; part = reader.TakeByte()) {
      TakeExtension();
    }
    if (part != kFrame || reader.IsPastEnd() || !TakeFrame(hasColors)) {
      return std::nullopt;
    }
    frame.alone.push_back(std::byte{kEnd});
    return std::move(frame);
  }

 private:
  static bool IsAllowed(int width, int height) {
    return IsPictureSizeAllowed(static_cast<std::uint64_t>(width),
                                static_cast<std::uint64_t>(height));
  }

  // Copies what was taken since `left` bytes were left.
  void AppendSince(std::size_t left) {
    const auto part = file.last(left).first(left - reader.Rest().size());
    frame.alone.insert(frame.alone.end(), part.begin(), part.end());
  }

  // Takes the table of colours that `flags` announce. Returns false if they announce none.
  bool TakeColors(std::uint32_t flags) {
    if ((flags & kHasColors) == 0) {
      return false;
    }
    frame.palette.fill(0);
    const std::size_t count = std::size_t{2} << (flags & kColorsMask);
    ContainerReader colors(reader.Take(3 * count));
    for (std::size_t i = 0; i < count; ++i) {
      frame.palette[i] = PackPixel(255, 0, 0, 0) | colors.TakeBigEndian(3);
    }
    return true;
  }

  void TakeExtension() {
    const std::uint32_t kind = reader.TakeByte();
    for (;;) {
      const auto block = reader.Take(reader.TakeByte());
      if (block.empty()) {
        return;
      }
      if (kind == kGraphicsControl && block.size() == kControlSize) {
        const bool hasOne = (std::to_integer<std::uint32_t>(block[0]) & kHasTransparent) != 0;
        transparent = hasOne ? std::to_integer<int>(block[3]) : -1;
      }
    }
  }

  bool TakeFrame(bool hasColors) {
    const std::size_t start = reader.Rest().size() + 1;
    frame.left = static_cast<int>(reader.TakeLittleEndian(2));
    frame.top = static_cast<int>(reader.TakeLittleEndian(2));
    frame.width = static_cast<int>(reader.TakeLittleEndian(2));
    frame.height = static_cast<int>(reader.TakeLittleEndian(2));
    const bool hasAnyColors = TakeColors(reader.TakeByte()) || hasColors;
    reader.TakeByte();  // bits of the first codes
    while (!reader.Take(reader.TakeByte()).empty()) {
    }
    if (reader.IsPastEnd() || !hasAnyColors || !IsAllowed(frame.width, frame.height)) {
      return false;
    }
    if (transparent >= 0) {
      frame.palette[static_cast<std::size_t>(transparent)] = 0;
    }
    AppendSince(start);
    return true;
  }

  ContainerReader reader;
  std::span<const std::byte> file;
  GifFrame frame;
  int transparent = -1;
};

}  // namespace

std::optional<GifFrame> ReadGifFrame(std::span<const std::byte> bytes) {
  return Parser(bytes).Run();
}
