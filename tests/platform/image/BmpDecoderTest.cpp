#include <gtest/gtest.h>

#include <limits>

#include "ImageFiles.h"
#include "platform/image/Picture.h"

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kRle8 = 1;
constexpr std::uint32_t kRle4 = 2;
constexpr std::uint32_t kBitFields = 3;
constexpr std::uint32_t kBlack = 0xFF000000;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
const std::vector<FileColor> kPalette = {{0, 0, 0}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}};

void ExpectPixels(const BmpFile& file, const Pixels& expected) {
  const Picture picture = DecodePicture(MakeBmp(file));
  ASSERT_EQ(picture.format, PictureFormat::kBmp);
  EXPECT_EQ(picture.width, file.width);
  EXPECT_EQ(picture.height, std::abs(file.height));
  EXPECT_EQ(picture.pixels, expected);
}

BmpFile Make(int width, int height, int bits, Samples stored) {
  BmpFile file;
  file.width = width;
  file.height = height;
  file.bits = static_cast<std::uint16_t>(bits);
  file.stored = std::move(stored);
  if (bits <= 8) {
    file.palette = kPalette;
    file.palette.resize(std::min<std::size_t>(kPalette.size(), std::size_t{1} << bits));
    file.colorsUsed = static_cast<std::uint32_t>(file.palette.size());
  }
  return file;
}

TEST(BmpDecoder, IndexedPixelsTakeTheirColorFromThePalette) {
  // Ten pixels of one bit, in rows of four bytes, the bottom row first.
  ExpectPixels(Make(10, 2, 1, {0x00, 0x40, 0, 0, 0x80, 0x80, 0, 0}),
               {kRed,   kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kRed,   kBlack,
                kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kRed});
  ExpectPixels(Make(3, 1, 4, {0x12, 0x30, 0, 0}), {kRed, kGreen, kBlue});
  ExpectPixels(Make(3, 1, 8, {3, 2, 1, 0}), {kBlue, kGreen, kRed});
  BmpFile core = Make(2, 1, 8, {1, 2, 0, 0});
  core.headerSize = 12;
  ExpectPixels(core, {kRed, kGreen});
}

TEST(BmpDecoder, AnIndexPastThePaletteIsBlackAndColorsPastTheIndexesAreSkipped) {
  BmpFile file = Make(3, 1, 8, {2, 200, 255, 0});
  file.colorsUsed = std::numeric_limits<std::uint32_t>::max();
  ExpectPixels(file, {kGreen, kBlack, kBlack});
  file.palette.assign(300, {0, 0, 255});
  file.colorsUsed = 300;
  ExpectPixels(file, {kBlue, kBlue, kBlue});
}

TEST(BmpDecoder, RowsLieBottomUpOrTopDown) {
  const Samples stored = {255, 0, 0, 0, 0, 0, 255, 0};
  ExpectPixels(Make(1, 2, 24, stored), {kRed, kBlue});
  ExpectPixels(Make(1, -2, 24, stored), {kBlue, kRed});
}

TEST(BmpDecoder, MaskedChannelsAreScaledToTheirFullRange) {
  ExpectPixels(Make(4, 1, 16, {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x80, 0x10, 0x42}),
               {kRed, kGreen, kBlue, 0xFF848484});
  BmpFile file = Make(3, 1, 16, {0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00, 0, 0});
  file.compression = kBitFields;
  file.masks = {0xF800, 0x07E0, 0x001F};
  ExpectPixels(file, {kRed, kGreen, kBlue});
  file.headerSize = 52;
  ExpectPixels(file, {kRed, kGreen, kBlue});
  ExpectPixels(Make(1, 1, 32, {1, 2, 3, 4}), {0xFF030201});
  BmpFile wide = Make(1, 1, 32, {0xFF, 0x03, 0xF0, 0x3F});
  wide.compression = kBitFields;
  wide.masks = {0x3FF00000, 0, 0x3FF};
  ExpectPixels(wide, {0xFFFF00FF});
}

TEST(BmpDecoder, AnAlphaMaskMakesPixelsTransparent) {
  BmpFile file = Make(2, 1, 32, {0, 0, 255, 128, 255, 255, 255, 0});
  file.headerSize = 124;
  file.compression = kBitFields;
  file.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
  ExpectPixels(file, {0x80800000, 0});
}

TEST(BmpDecoder, RunsAreUnpacked) {
  // Two reds; the end of the line; three colours stored one by one (and a filling byte); the end.
  BmpFile file = Make(3, 2, 8, {2, 1, 0, 0, 0, 3, 3, 2, 1, 0, 0, 1});
  file.compression = kRle8;
  ExpectPixels(file, {kBlue, kGreen, kRed, kRed, kRed, kBlack});
  // Two colours in turn; a step of one to the right and one up; two colours stored; the end.
  file = Make(4, 2, 4, {3, 0x12, 0, 2, 0, 1, 0, 3, 0x32, 0x10, 0, 1});
  file.compression = kRle4;
  ExpectPixels(file, {kBlack, kBlack, kBlack, kBlue, kRed, kGreen, kRed, kBlack});
}

TEST(BmpDecoder, RunsPastTheEdgesAreCut) {
  BmpFile file = Make(2, 2, 8, {255, 1, 0, 0, 0, 2, 1, 0, 255, 2, 0, 2, 255, 255, 9, 3, 0, 1});
  file.compression = kRle8;
  ExpectPixels(file, {kBlack, kGreen, kRed, kRed});
}

TEST(BmpDecoder, WhatNoHeaderMayHoldFails) {
  const auto change = []<class T>(T BmpFile::*field, T value) {
    BmpFile file = Make(2, 2, 24, Samples(64));
    file.*field = value;
    return file;
  };
  BmpFile torn = change(&BmpFile::bits, std::uint16_t{32});
  torn.compression = kBitFields;
  torn.masks = {0xF0F, 0xF0, 0xF000};
  BmpFile maskless = change(&BmpFile::bits, std::uint16_t{16});
  maskless.compression = kBitFields;
  for (const BmpFile& file :
       {change(&BmpFile::width, 0), change(&BmpFile::width, -2), change(&BmpFile::height, 0),
        change(&BmpFile::height, std::numeric_limits<std::int32_t>::min()),
        change(&BmpFile::bits, std::uint16_t{7}), change(&BmpFile::compression, kBitFields),
        change(&BmpFile::compression, kRle8), change(&BmpFile::compression, 4U),
        change(&BmpFile::headerSize, 41U), torn, maskless}) {
    EXPECT_EQ(DecodePicture(MakeBmp(file)).width, 0) << file.width << " x " << file.height;
  }
}

}  // namespace
