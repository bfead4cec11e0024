#include "platform/image/BmpRle.h"

namespace {

// The second byte of a pair that starts with 0. A larger byte is the number of unpacked pixels that
// follow.
enum Escape : std::uint8_t { kEndOfLine = 0, kEndOfPicture = 1, kMove = 2 };

// Walks the pairs of the packed data while a pen moves over the picture, from its bottom row
// upwards.
class Unpacker {
 public:
  Unpacker(const BmpHeader& header, std::span<const std::byte> packed, Picture& picture)
      : header(header), rest(packed), picture(picture) {}

  bool Run() {
    while (rest.size() >= 2) {
      const std::uint8_t count = Take();
      const std::uint8_t value = Take();
      if (count > 0) {
        Repeat(count, value);
      } else if (value == kEndOfPicture) {
        return true;
      } else if (!Obey(value)) {
        return false;
      }
    }
    return false;
  }

 private:
  std::uint8_t Take() {
    const auto byte = std::to_integer<std::uint8_t>(rest.front());
    rest = rest.subspan(1);
    return byte;
  }

  // Draws one pixel, unless it is past an edge, and steps to the right.
  void Put(std::uint8_t index) {
    if (x < static_cast<std::size_t>(picture.width) &&
        y < static_cast<std::size_t>(picture.height)) {
      const std::size_t row = static_cast<std::size_t>(picture.height) - 1 - y;
      picture.pixels[row * static_cast<std::size_t>(picture.width) + x] = header.palette[index];
    }
    ++x;
  }

  bool IsNibbles() const { return header.packing == BmpPacking::kRle4; }

  static std::uint8_t Nibble(std::uint8_t byte, std::size_t i) {
    return i % 2 == 0 ? byte >> 4 : byte & 0x0F;
  }

  void Repeat(std::size_t count, std::uint8_t value) {
    for (std::size_t i = 0; i < count; ++i) {
      Put(IsNibbles() ? Nibble(value, i) : value);
    }
  }

  bool Obey(std::uint8_t escape) {
    if (escape == kEndOfLine) {
      x = 0;
      ++y;
      return true;
    }
    if (escape != kMove) {
      return Copy(escape);
    }
    if (rest.size() < 2) {
      return false;
    }
    x += Take();
    y += Take();
    return true;
  }

  // Draws unpacked pixels; padding fills them up to whole 16-bit words.
  bool Copy(std::size_t count) {
    const std::size_t size = IsNibbles() ? (count + 1) / 2 : count;
    if (rest.size() < size + size % 2) {
      return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
      const auto byte = std::to_integer<std::uint8_t>(rest[IsNibbles() ? i / 2 : i]);
      Put(IsNibbles() ? Nibble(byte, i) : byte);
    }
    rest = rest.subspan(size + size % 2);
    return true;
  }

  const BmpHeader& header;
  std::span<const std::byte> rest;
  Picture& picture;
  std::size_t x = 0;
  std::size_t y = 0;  // rows above the bottom one
};

}  // namespace

bool UnpackBmpRuns(const BmpHeader& header, std::span<const std::byte> packed, Picture& picture) {
  return Unpacker(header, packed, picture).Run();
}
