#include <gtest/gtest.h>

#include <algorithm>

#include "SavedPicture.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(SavePicture, APngKeepsEveryPremultipliedColor) {
  std::vector<std::uint32_t> pixels;
  for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
    for (std::uint32_t channel = 0; channel < 256; ++channel) {
      const std::uint32_t value = std::min(alpha, channel);
      pixels.push_back(alpha << 24 | value << 16 | value / 2 << 8 | (alpha - value));
    }
  }
  const TemporaryFolder folder;
  const std::string path = folder.File("colors.png");
  ASSERT_TRUE(SavePicture({pixels.data(), 256, 256, 1024}, PictureEncoder::kPng, path));
  EXPECT_EQ(Load(path).format, PictureFormat::kPng);
  EXPECT_EQ(Load(path).pixels, pixels);
}

TEST(SavePicture, JpegAndBmpAreComposedOverWhite) {
  const TemporaryFolder folder;
  const std::string path = folder.File("picture");
  const std::pair<std::uint32_t, std::uint32_t> cases[] = {
      {0x00000000, 0xFFFFFFFF}, {0x80800000, 0xFFFF7F7F}, {0xFF123456, 0xFF123456}};
  for (const auto& [stored, shown] : cases) {
    ASSERT_TRUE(Save(PictureEncoder::kBmp, path, stored));
    EXPECT_EQ(Load(path).pixels, std::vector(std::size_t{kSide} * kSide, shown));
    ASSERT_TRUE(Save(PictureEncoder::kJpeg, path, stored));
    const std::uint32_t seen = Load(path).pixels.at(0);
    for (const int shift : {0, 8, 16}) {
      // Quality 90 keeps the mean of a block in steps of 3 / 8, and two colour conversions round.
      EXPECT_NEAR(seen >> shift & 0xFF, shown >> shift & 0xFF, 3) << std::hex << shown;
    }
  }
  const std::uint32_t pixels[] = {0xFFFF0000, 0xFFAAAAAA, 0xFF0000FF};  // rows may lie apart
  ASSERT_TRUE(SavePicture({pixels, 1, 2, 8}, PictureEncoder::kBmp, path));
  Bytes expected = ReadSeed("bmp/BottomUp");
  expected[2] = std::byte{62};  // the size of the whole file, which the seed leaves out
  EXPECT_EQ(ReadWholeFile(path), expected);
}

TEST(FailedSaveTest, WhatNoFileCanStandAtOrNoFormatHoldsFails) {
  const TemporaryFolder folder;
  for (const std::string& path : {std::string(), folder.File("missing/board"),
                                  folder.Path().string(), folder.File({"bo\0ard", 6})}) {
    EXPECT_FALSE(Save(PictureEncoder::kBmp, path)) << path;
  }
  const std::uint32_t pixel = 0;
  for (const PictureEncoder encoder : kEncoders) {
    EXPECT_FALSE(SavePicture({}, encoder, folder.File("board")));
    // Every row is the same one pixel: no format holds so many rows of it.
    EXPECT_FALSE(SavePicture({&pixel, 1, 0x7FFFFFFF, 0}, encoder, folder.File("board")));
  }
  EXPECT_EQ(folder.FileCount(), 0U);
}

}  // namespace
