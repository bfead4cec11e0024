#include <gtest/gtest.h>

#include "ImageFiles.h"
#include "platform/image/Picture.h"

namespace {

const std::vector<FileColor> kColors = {{10, 20, 30}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}};

std::uint32_t Opaque(FileColor color) {
  return 0xFF000000U | std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 |
         color.blue;
}

// A frame of 9 x 19 at (3, 2) on a screen of 20 x 30.
GifFile MakeFrame() {
  GifFile file{20, 30, 3, 2, 9, 19, {}, kColors};
  for (int i = 0; i < file.width * file.height; ++i) {
    file.indexes.push_back(static_cast<std::uint8_t>((i + i / 7) % 4));
  }
  return file;
}

void ExpectFrameOnScreen(const GifFile& file) {
  const Picture picture = DecodePicture(MakeGif(file));
  ASSERT_EQ(picture.format, PictureFormat::kGif);
  ASSERT_EQ(picture.width, file.screenWidth);
  ASSERT_EQ(picture.height, file.screenHeight);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const int column = x - file.left;
      const int row = y - file.top;
      std::uint32_t expected = 0;
      if (column >= 0 && column < file.width && row >= 0 && row < file.height) {
        const std::uint8_t index = file.indexes[Product(row, file.width) + column];
        expected = index == file.transparent ? 0 : Opaque(file.palette[index]);
      }
      ASSERT_EQ(picture.pixels[Product(y, picture.width) + x], expected) << "at " << x << ", " << y;
    }
  }
}

TEST(GifDecoder, TheFrameLiesAtItsPlaceOnATransparentScreen) {
  GifFile file = MakeFrame();
  ExpectFrameOnScreen(file);
  file.interlaced = true;
  ExpectFrameOnScreen(file);
  file.localPalette = true;
  file.transparent = 2;
  ExpectFrameOnScreen(file);
}

TEST(GifDecoder, AFrameThatLeavesTheScreenIsCutAndALaterOneIgnored) {
  GifFile file = MakeFrame();
  file.secondFrame = true;
  file.left = 15;
  file.top = 25;
  ExpectFrameOnScreen(file);
  file.left = 20;
  ExpectFrameOnScreen(file);
}

TEST(GifDecoder, AFileWithoutAnyPaletteFails) {
  Bytes bytes = MakeGif(MakeFrame());
  ASSERT_NE(DecodePicture(bytes).width, 0);
  // Bit 7 of the screen's flags announces the palette; its 4 colours follow the 13 bytes of the
  // header.
  bytes[10] &= std::byte{0x7F};
  bytes.erase(bytes.begin() + 13, bytes.begin() + 25);
  EXPECT_EQ(DecodePicture(bytes).width, 0);
}

}  // namespace
