// What every decoder owes to files that are cut, changed or over
// the limits.
#include <gtest/gtest.h>

#include "ImageFiles.h"
#include "platform/image/Limits.h"
#include "platform/image/Picture.h"
#include "tests/support/PeakSize.h"

namespace {

using Pixels = std::vector<std::uint32_t>;

TEST(PngDecoder, SamplesOf16BitsAreRoundedToTheNearestOf8) {
  EXPECT_EQ(DecodePicture(ReadSeed("png/Samples16")).pixels, Pixels{0xFF13FF01});
}

bool IsNone(const Picture& picture) {
  return picture.width == 0 && picture.height == 0 && picture.pixels.empty() &&
         picture.format == PictureFormat::kUnknown;
}

TEST(DamagedPictures, AFileCutAnywhereFailsAndAChangedOneIsWholeOrNoneAndSaysNothing) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  for (const std::string name :
       {"png/PngColorAlpha", "png/PngGrey16Interlaced", "png/PngPalette", "jpeg/JpegColor",
        "jpeg/JpegGreyProgressive", "jpeg/JpegInks", "gif/GifPlain", "gif/GifInterlaced",
        "bmp/Bmp1", "bmp/Bmp8", "bmp/Bmp16", "bmp/Bmp24", "bmp/BmpRle4", "bmp/BmpRle8"}) {
    const Bytes bytes = ReadSeed(name);
    // A reader of the first frame never needs the byte that ends a GIF file.
    const std::size_t needed = bytes.size() - (name.starts_with("gif") ? 1 : 0);
    EXPECT_FALSE(IsNone(DecodePicture(bytes))) << name;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      EXPECT_TRUE(i >= needed || IsNone(DecodePicture(std::span(bytes).first(i))))
          << name << " cut to " << i;
      for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
        Bytes changed = bytes;
        changed[i] ^= static_cast<std::byte>(change);
        const Picture picture = DecodePicture(changed);
        const bool isWhole =
            IsPictureSizeAllowed(picture.width, picture.height) &&
            picture.pixels.size() == static_cast<std::size_t>(picture.width) * picture.height;
        EXPECT_TRUE(IsNone(picture) || isWhole) << name << " changed at " << i;
      }
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

Bytes ReadLarge(const std::string& name) {
  return ReadWholeFile(PARCHLET_LARGE_PICTURES "/" + name);
}

// Puts a number at that place of a file, the low byte first.
Bytes Patched(Bytes bytes, std::size_t offset, std::size_t size, std::uint32_t number) {
  for (std::size_t i = 0; i < size; ++i) {
    bytes.at(offset + i) = static_cast<std::byte>(number >> 8 * i);
  }
  return bytes;
}

TEST(DamagedPictures, WhatNoFileMayHoldFails) {
  const std::uint32_t faults[][3] = {// offset, size, number
                                     {14, 4, 41}, {18, 4, 0},          {18, 4, 0xFFFFFFFE},
                                     {22, 4, 0},  {22, 4, 0x80000000}, {28, 2, 7},
                                     {30, 4, 1},  {30, 4, 3},          {30, 4, 4}};
  for (const auto& [offset, size, number] : faults) {
    EXPECT_TRUE(IsNone(DecodePicture(Patched(ReadSeed("bmp/Bmp24"), offset, size, number))))
        << number << " at " << offset;
  }
  const Bytes masked = ReadSeed("bmp/Fields565");
  EXPECT_TRUE(IsNone(DecodePicture(Patched(masked, 54, 4, 0xF0F)))) << "a mask with a hole";
  EXPECT_TRUE(IsNone(DecodePicture(Patched(masked, 10, 4, 54)))) << "pixels where masks should be";
  // 127 scans, and 64 of 16 megapixels and more.
  EXPECT_TRUE(IsNone(DecodePicture(ReadLarge("JpegScans"))));
  EXPECT_TRUE(IsNone(DecodePicture(ReadLarge("JpegScannedPixels"))));
}

TEST(PictureLimits, WhatIsTooLargeFailsBeforeMemoryIsAskedFor) {
  constexpr std::uint32_t kSide = 8192;
  // Height and width, the high byte first.
  const Bytes jpeg = Patched(ReadSeed("jpeg/Greys"), 94, 4, 0x00200120);
  const Bytes bmp = Patched(Patched(ReadSeed("bmp/Runs8"), 18, 4, kSide), 22, 4, kSide + 1);
  const Bytes gif = Patched(ReadSeed("gif/Placed"), 6, 4, (kSide + 1) << 16 | kSide);
  // Behind the signature and the header, 33 bytes, is a text that unpacks to 7 MB.
  Bytes texts = ReadLarge("PngText");
  const Bytes chunk(texts.begin() + 33, texts.end() - 12 - 22);
  for (int i = 0; i < 60; ++i) {
    texts.insert(texts.begin() + 33, chunk.begin(), chunk.end());
  }
  const long before = PeakSize();
  for (const Bytes& file : {ReadLarge("PngOneRowTooMany"), jpeg, bmp, gif, ReadLarge("GifFrame"),
                            ReadSeed("png/ChunkOfTwoGigabytes")}) {
    EXPECT_TRUE(IsNone(DecodePicture(file)));
    EXPECT_LT(PeakSize() - before, 100);
  }
  EXPECT_EQ(DecodePicture(texts).pixels, std::vector{0xFFFFFFFFU});
  EXPECT_LT(PeakSize() - before, 100) << "texts were unpacked";
  EXPECT_EQ(DecodePicture(ReadLarge("PngWidestRow")).width, 1'000'000);
}

}  // namespace
