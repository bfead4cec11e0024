#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <jpeglib.h>
#include <sys/stat.h>

#include "ImageFiles.h"
#include "platform/image/Picture.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr int kSide = 64;

class PictureToSave {
 public:
  explicit PictureToSave(std::uint32_t pixel) : pixels(Product(kSide, kSide), pixel) {}
  PictureView View() const { return {pixels.data(), kSide, kSide, std::ptrdiff_t{kSide} * 4}; }

  std::vector<std::uint32_t> pixels;
};

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
  const Picture picture = DecodePicture(ReadWholeFile(path));
  EXPECT_EQ(picture.format, PictureFormat::kPng);
  EXPECT_EQ(picture.pixels, pixels);
}

TEST(SavePicture, JpegAndBmpAreComposedOverWhite) {
  const TemporaryFolder folder;
  const std::string path = folder.File("picture");
  const std::pair<std::uint32_t, std::uint32_t> cases[] = {
      {0x00000000, 0xFFFFFFFF}, {0x80800000, 0xFFFF7F7F}, {0xFF123456, 0xFF123456}};
  for (const auto& [stored, shown] : cases) {
    const PictureToSave source(stored);
    ASSERT_TRUE(SavePicture(source.View(), PictureEncoder::kBmp, path));
    Picture picture = DecodePicture(ReadWholeFile(path));
    EXPECT_EQ(picture.format, PictureFormat::kBmp);
    EXPECT_EQ(picture.pixels, std::vector<std::uint32_t>(Product(kSide, kSide), shown));

    ASSERT_TRUE(SavePicture(source.View(), PictureEncoder::kJpeg, path));
    picture = DecodePicture(ReadWholeFile(path));
    EXPECT_EQ(picture.format, PictureFormat::kJpeg);
    for (const int shift : {0, 8, 16}) {
      // Quality 90 keeps the mean of a block in steps of 3 / 8, and two colour conversions round.
      EXPECT_NEAR(picture.pixels[0] >> shift & 0xFF, shown >> shift & 0xFF, 3) << std::hex << shown;
    }
  }
}

TEST(SavePicture, ABmpHas24BitsAndRowsOfWholeWords) {
  const std::uint32_t pixels[] = {0xFF010203, 0xFFAAAAAA, 0xFF040506};  // rows may lie apart
  const TemporaryFolder folder;
  ASSERT_TRUE(SavePicture({pixels, 1, 2, 8}, PictureEncoder::kBmp, folder.File("a.bmp")));
  Bytes expected = MakeBmp({40, 1, 2, 24, 0, {}, {}, 0, {6, 5, 4, 0, 3, 2, 1, 0}});
  expected[2] = std::byte{62};  // the size of the whole file
  EXPECT_EQ(ReadWholeFile(folder.File("a.bmp")), expected);
}

TEST(SavePicture, AJpegHasQuality90) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a.jpg");
  ASSERT_TRUE(SavePicture(PictureToSave(0xFF808080).View(), PictureEncoder::kJpeg, path));
  const Bytes bytes = ReadWholeFile(path);
  jpeg_decompress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&codec);
  jpeg_mem_src(&codec, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  jpeg_read_header(&codec, TRUE);
  // The standard table's first two steps, 16 and 11, at a fifth.
  EXPECT_EQ(codec.quant_tbl_ptrs[0]->quantval[0], 3);
  EXPECT_EQ(codec.quant_tbl_ptrs[0]->quantval[1], 2);
  jpeg_destroy_decompress(&codec);
}

class FailedSaveTest : public testing::TestWithParam<PictureEncoder> {
 protected:
  const TemporaryFolder folder;
  const PictureToSave source{0xFF336699};
};

TEST_P(FailedSaveTest, AFullDiskLeavesTheFileThatWasThereAndNothingBesideIt) {
  const std::string path = folder.File(std::string(255, 'n'));  // the longest name there is
  ASSERT_TRUE(SavePicture(source.View(), GetParam(), path));
  const std::size_t size = ReadWholeFile(path).size();
  const Bytes before(3, std::byte{'o'});
  WriteWholeFile(path, before);
  for (const std::size_t room : {std::size_t{0}, std::size_t{20}, size / 2, size - 1}) {
    bool saved = true;
    {
      const SmallDisk disk(room);
      saved = SavePicture(source.View(), GetParam(), path);
    }
    EXPECT_FALSE(saved) << "with room for " << room << " of " << size << " bytes";
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(folder.FileCount(), 1U);
  }
  const SmallDisk disk(size);
  EXPECT_TRUE(SavePicture(source.View(), GetParam(), path));
  EXPECT_EQ(DecodePicture(ReadWholeFile(path)).width, kSide);
}

TEST_P(FailedSaveTest, WhatNoFileCanStandAtFails) {
  EXPECT_FALSE(SavePicture(source.View(), GetParam(), ""));
  EXPECT_FALSE(SavePicture(source.View(), GetParam(), folder.File("missing/board")));
  EXPECT_FALSE(SavePicture(source.View(), GetParam(), folder.Path().string()));
  EXPECT_FALSE(SavePicture(source.View(), GetParam(), "/proc/board"))
      << "no file can be made there";
  EXPECT_FALSE(SavePicture(source.View(), GetParam(), folder.File(std::string("bo\0ard", 6))));
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(SavePicture(source.View(), GetParam(), pipe));
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  EXPECT_EQ(folder.FileCount(), 1U);
}

TEST_P(FailedSaveTest, EmptyPicturesAndOnesTooLargeForTheFormatFail) {
  const std::uint32_t pixel = 0;
  const std::string path = folder.File("board");
  EXPECT_FALSE(SavePicture({}, GetParam(), path));
  EXPECT_FALSE(SavePicture({&pixel, 0, 1, 4}, GetParam(), path));
  EXPECT_FALSE(SavePicture({&pixel, 1, -1, 4}, GetParam(), path));
  // Every row is the same one pixel: no format holds so many rows of it.
  EXPECT_FALSE(SavePicture({&pixel, 1, 0x7FFFFFFF, 0}, GetParam(), path));
  EXPECT_EQ(folder.FileCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(AllEncoders, FailedSaveTest,
                         testing::Values(PictureEncoder::kPng, PictureEncoder::kJpeg,
                                         PictureEncoder::kBmp));

}  // namespace
