#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <png.h>
#include <zlib.h>

#include "ImageFiles.h"
#include "platform/image/Picture.h"
#include "platform/image/PixelMath.h"

namespace {

// Not a multiple of what a byte holds, and larger than one interlacing cell.
constexpr int kWidth = 13;
constexpr int kHeight = 11;

PngFile MakeFile(int colorType, int bitDepth, bool interlaced, bool hasClearPixels) {
  const int channels = colorType == PNG_COLOR_TYPE_RGB_ALPHA    ? 4
                       : colorType == PNG_COLOR_TYPE_RGB        ? 3
                       : colorType == PNG_COLOR_TYPE_GRAY_ALPHA ? 2
                                                                : 1;
  PngFile file{kWidth, kHeight, colorType, bitDepth, interlaced, {}, {}, {}, {}};
  const int stride = (kWidth * channels * bitDepth + 7) / 8;
  for (int i = 0; i < stride * kHeight; ++i) {
    file.rows.push_back(static_cast<std::uint8_t>(i * 37 + i / 13 * 91));
  }
  for (int i = 0; colorType == PNG_COLOR_TYPE_PALETTE && i < 1 << bitDepth; ++i) {
    file.palette.push_back({static_cast<std::uint8_t>(i * 3), static_cast<std::uint8_t>(255 - i),
                            static_cast<std::uint8_t>(i * 7)});
  }
  if (hasClearPixels && colorType == PNG_COLOR_TYPE_PALETTE) {
    file.paletteAlpha = {0, 100};
  } else if (hasClearPixels) {
    const auto sample = [&](std::size_t i) {
      return static_cast<std::uint16_t>(file.rows[i] >> (8 - bitDepth));
    };
    file.transparentColor =
        channels == 1 ? std::vector{sample(0)} : std::vector{sample(0), sample(1), sample(2)};
  }
  return file;
}

// By the library's one-call interface, which chooses every conversion by itself.
std::vector<std::uint32_t> ReadSimply(const Bytes& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()), 0);
  image.format = PNG_FORMAT_RGBA;
  Samples samples(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, samples.data(), 0, nullptr), 0);
  std::vector<std::uint32_t> pixels;
  for (std::size_t i = 0; i < samples.size(); i += 4) {
    pixels.push_back(Premultiply({samples[i], samples[i + 1], samples[i + 2], samples[i + 3]}));
  }
  return pixels;
}

TEST(PngDecoder, EveryKindOfFileGivesTheColorsThatItHolds) {
  const struct {
    int colorType;
    std::vector<int> depths;
    bool mayHaveClearPixels;
  } kinds[] = {{PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8}, true},
               {PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}, true},
               {PNG_COLOR_TYPE_RGB, {8}, true},
               {PNG_COLOR_TYPE_GRAY_ALPHA, {8}, false},
               {PNG_COLOR_TYPE_RGB_ALPHA, {8}, false}};
  for (const auto& [colorType, depths, mayHaveClearPixels] : kinds) {
    for (const int depth : depths) {
      for (int variant = 0; variant < (mayHaveClearPixels ? 4 : 2); ++variant) {
        SCOPED_TRACE(testing::Message() << colorType << ", " << depth << " bits, " << variant);
        const Bytes bytes = MakePng(MakeFile(colorType, depth, variant % 2 == 1, variant >= 2));
        const Picture picture = DecodePicture(bytes);
        EXPECT_EQ(picture.format, PictureFormat::kPng);
        EXPECT_EQ(picture.width, kWidth);
        EXPECT_EQ(picture.height, kHeight);
        EXPECT_EQ(picture.pixels, ReadSimply(bytes));
      }
    }
  }
}

// The largest size that the process has had so far, in MB: memory that was asked for counts, used
// or not.
long PeakSize() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word == "VmPeak:") {
      long kilobytes = 0;
      status >> kilobytes;
      return kilobytes / 1024;
    }
  }
  throw std::runtime_error("no VmPeak");
}

void AppendNumber(Bytes& file, std::size_t number) {
  for (const int shift : {24, 16, 8, 0}) {
    file.push_back(static_cast<std::byte>(number >> shift));
  }
}

// A chunk that says it is `length` bytes long.
Bytes MakeChunk(const std::string& nameAndData, std::size_t length) {
  const auto* bytes = reinterpret_cast<const Bytef*>(nameAndData.data());
  Bytes chunk;
  AppendNumber(chunk, length);
  std::transform(nameAndData.begin(), nameAndData.end(), std::back_inserter(chunk),
                 [](char c) { return static_cast<std::byte>(c); });
  AppendNumber(chunk, crc32(0, bytes, static_cast<uInt>(nameAndData.size())));
  return chunk;
}

// The data of a chunk zTXt that unpacks to 7 MB.
std::string PackText() {
  const std::vector<Bytef> letters(7'000'000, 'a');
  std::string packed(100'000, 0);
  uLongf size = packed.size();
  if (compress(reinterpret_cast<Bytef*>(packed.data()), &size, letters.data(), letters.size()) !=
      Z_OK) {
    throw std::runtime_error("cannot pack");
  }
  return std::string("k\0\0", 3) + packed.substr(0, size);
}

TEST(PngDecoder, ChunksGetNoMoreMemoryThanAFileNeeds) {
  constexpr std::size_t kTwoGigabytes = 0x7FFF'0000;
  const Bytes dot = MakePng({1, 1, PNG_COLOR_TYPE_GRAY, 8, false, {255}, {}, {}, {}});
  const auto behindHeader = [&dot](const Bytes& inserted) {
    constexpr std::ptrdiff_t kHeader = 33;
    Bytes file = dot;
    file.insert(file.begin() + kHeader, inserted.begin(), inserted.end());
    return file;
  };
  const std::string text = "zTXt" + PackText();
  Bytes texts;
  for (int i = 0; i < 60; ++i) {
    const Bytes chunk = MakeChunk(text, text.size() - 4);
    texts.insert(texts.end(), chunk.begin(), chunk.end());
  }
  const Bytes manyTexts = behindHeader(texts);
  const Bytes liar = behindHeader(MakeChunk("pCALk", kTwoGigabytes));
  const long before = PeakSize();
  EXPECT_EQ(DecodePicture(manyTexts).pixels, std::vector{0xFFFFFFFFU});
  EXPECT_LT(PeakSize() - before, 100) << "texts were unpacked";
  EXPECT_EQ(DecodePicture(liar).width, 0);
  EXPECT_LT(PeakSize() - before, 100) << "a chunk got what it asked for";
}

TEST(PngDecoder, TheWidestRowsAreRead) {
  constexpr int kWidest = 1'000'000;
  PngFile file{kWidest, 1, PNG_COLOR_TYPE_RGB_ALPHA, 16, false, Samples(8 * kWidest), {}, {}, {}};
  EXPECT_EQ(DecodePicture(MakePng(file)).width, kWidest);
}

TEST(PngDecoder, SamplesOf16BitsAreRoundedToTheNearest) {
  PngFile file{1, 1, PNG_COLOR_TYPE_RGB_ALPHA, 16, false, {}, {}, {}, {}};
  file.rows = {0x12, 0xB4, 0xFF, 0xFF, 0x00, 0x81, 0xFF, 0x80};
  EXPECT_EQ(DecodePicture(MakePng(file)).pixels, std::vector{0xFF13FF01U});
}

TEST(PremultipliedColor, IsTheChannelTimesAlphaRoundedToTheNearest) {
  EXPECT_EQ(Premultiply({255, 128, 1, 128}), 0x80804001U);
  EXPECT_EQ(Premultiply({255, 255, 255, 0}), 0U);
  EXPECT_EQ(Premultiply({1, 2, 3, 255}), 0xFF010203U);
}

}  // namespace
