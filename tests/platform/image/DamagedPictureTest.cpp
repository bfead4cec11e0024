// What every decoder owes to files that are cut, changed or over the limits.
#include <gtest/gtest.h>

#include <png.h>

#include "ImageFiles.h"
#include "platform/image/Limits.h"
#include "platform/image/Picture.h"

namespace {

// Each is one of the fuzzers' first files.
class DamagedPictureTest : public testing::TestWithParam<const char*> {
 protected:
  const std::string path = std::string(PARCHLET_CORPUS "/") + GetParam();
  const Bytes bytes = ReadWholeFile(path);
};

TEST_P(DamagedPictureTest, AFileCutAnywhereFails) {
  ASSERT_NE(DecodePicture(bytes).width, 0);
  // A reader of the first frame never needs the byte that ends a GIF file.
  const std::size_t unusedTail = path.find("gif") != std::string::npos ? 1 : 0;
  for (std::size_t size = 0; size + unusedTail < bytes.size(); ++size) {
    const Picture picture = DecodePicture(std::span(bytes).first(size));
    ASSERT_EQ(picture.width, 0) << "cut to " << size << " of " << bytes.size() << " bytes";
    ASSERT_EQ(picture.height, 0);
    ASSERT_EQ(picture.format, PictureFormat::kUnknown);
    ASSERT_TRUE(picture.pixels.empty());
  }
}

TEST_P(DamagedPictureTest, AChangedFileGivesAWholePictureOrNoneAndSaysNothing) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  bool consistent = true;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
      Bytes changed = bytes;
      changed[i] ^= static_cast<std::byte>(change);
      const Picture picture = DecodePicture(changed);
      const bool isNone = picture.width == 0 && picture.height == 0 && picture.pixels.empty() &&
                          picture.format == PictureFormat::kUnknown;
      const bool isWhole =
          IsPictureSizeAllowed(picture.width, picture.height) &&
          picture.pixels.size() == static_cast<std::size_t>(picture.width) * picture.height;
      consistent = consistent && (isNone || isWhole);
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(consistent);
}

INSTANTIATE_TEST_SUITE_P(AllFormats, DamagedPictureTest,
                         testing::Values("png/PngColorAlpha", "png/PngGrey16Interlaced",
                                         "png/PngPalette", "jpeg/JpegColor",
                                         "jpeg/JpegGreyProgressive", "jpeg/JpegInks",
                                         "gif/GifPlain", "gif/GifInterlaced", "bmp/Bmp1",
                                         "bmp/Bmp8", "bmp/Bmp16", "bmp/Bmp24", "bmp/BmpRle4",
                                         "bmp/BmpRle8"));

TEST(PictureLimits, AllowSixtyFourMegapixelsInAnyShape) {
  EXPECT_TRUE(IsPictureSizeAllowed(8192, 8192));
  EXPECT_TRUE(IsPictureSizeAllowed(1'000'000, 67));
  EXPECT_FALSE(IsPictureSizeAllowed(8192, 8193));
  EXPECT_FALSE(IsPictureSizeAllowed(1'000'001, 1));
  EXPECT_FALSE(IsPictureSizeAllowed(0, 1));
  EXPECT_FALSE(IsPictureSizeAllowed(1, 0));
  EXPECT_FALSE(IsPictureSizeAllowed(1ULL << 32, 1ULL << 32));
}

constexpr int kSide = 8192;

TEST(PictureLimits, AWholeFileOfOneRowTooManyFails) {
  PngFile png{kSide, kSide + 1, PNG_COLOR_TYPE_GRAY, 1, false, {}, {}, {}, {}};
  png.rows.resize(Product(png.width / 8, png.height));
  EXPECT_EQ(DecodePicture(MakePng(png)).width, 0);

  const JpegFile jpeg{kSide, kSide + 1, 1, Samples(Product(kSide, kSide + 1))};
  EXPECT_EQ(DecodePicture(MakeJpeg(jpeg)).width, 0);

  const BmpFile bmp{40, kSide, kSide + 1, 8, 1, {}, {}, 0, {0, 1}};
  EXPECT_EQ(DecodePicture(MakeBmp(bmp)).width, 0);

  const GifFile gif{kSide, kSide + 1, 0, 0, 1, 1, {0}, {{}, {}}};
  EXPECT_EQ(DecodePicture(MakeGif(gif)).width, 0);
}

TEST(PictureLimits, AGifFrameLargerThanAnyPictureFailsOnASmallScreen) {
  const GifFile gif{1, 1, 0, 0, kSide + 1, kSide, Samples(Product(kSide + 1, kSide)), {{}, {}}};
  EXPECT_EQ(DecodePicture(MakeGif(gif)).width, 0);
}

TEST(PictureLimits, APngHeaderThatPromisesMoreThanItsBytesCanHoldFails) {
  PngFile png{1, 1, PNG_COLOR_TYPE_GRAY, 8, false, {0}, {}, {}, {}};
  Bytes lying = MakePng(png);
  png.width = png.height = 4096;
  png.rows.resize(std::size_t{4096} * 4096);
  const Bytes large = MakePng(png);
  constexpr std::size_t kHeaderEnd = 33;  // the signature and the first chunk with its checksum
  std::copy_n(large.begin(), kHeaderEnd, lying.begin());
  EXPECT_EQ(DecodePicture(lying).width, 0);
}

TEST(Pictures, AreToldByTheirContent) {
  EXPECT_EQ(DecodePicture({}).format, PictureFormat::kUnknown);
  for (const std::string text : {"", "B", "BM", "GIF89a", "GIF88a", "\x89PNG\r\n\x1A\n",
                                 "\xFF\xD8\xFF", "<svg xmlns='http://www.w3.org/2000/svg'/>"}) {
    EXPECT_EQ(DecodePicture(std::as_bytes(std::span(text))).width, 0) << text;
  }
}

}  // namespace
