#include <gtest/gtest.h>

#include <algorithm>

#include <png.h>
#include <sys/resource.h>
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

// Where the chunk of that name begins, at its length.
std::size_t FindChunk(const Bytes& file, const char (&name)[5]) {
  const auto* bytes = reinterpret_cast<const std::byte*>(name);
  const auto at = std::search(file.begin(), file.end(), bytes, bytes + 4);
  return static_cast<std::size_t>(at - file.begin()) - 4;
}

// A chunk of text that unpacks to 7 MB.
Bytes MakePackedText() {
  const std::vector<Bytef> letters(7'000'000, 'a');
  uLongf size = 100'000;
  Bytes text(3 + size);
  text[0] = std::byte{'k'};
  compress2(reinterpret_cast<Bytef*>(text.data() + 3), &size, letters.data(), letters.size(), 9);
  text.resize(3 + size);
  Bytes chunk;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_set_write_fn(
      png, &chunk,
      [](png_structp writer, png_bytep bytes, png_size_t size) {
        auto& out = *static_cast<Bytes*>(png_get_io_ptr(writer));
        const auto* first = reinterpret_cast<const std::byte*>(bytes);
        out.insert(out.end(), first, first + size);
      },
      [](png_structp) {});
  png_write_chunk(png, reinterpret_cast<png_const_bytep>("zTXt"),
                  reinterpret_cast<png_const_bytep>(text.data()), text.size());
  png_destroy_write_struct(&png, nullptr);
  return chunk;
}

TEST(PngDecoder, TextsPackedIntoAFileAreNotUnpacked) {
  constexpr int kTexts = 60;
  PngFile dot{1, 1, PNG_COLOR_TYPE_GRAY, 8, false, {255}, {}, {}, {}};
  Bytes file = MakePng(dot);
  const Bytes text = MakePackedText();
  for (int i = 0; i < kTexts; ++i) {
    file.insert(file.begin() + static_cast<std::ptrdiff_t>(FindChunk(file, "IDAT")), text.begin(),
                text.end());
  }
  const auto peak = [] {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
  };
  const long before = peak();
  EXPECT_EQ(DecodePicture(file).pixels, std::vector{0xFFFFFFFFU});
  EXPECT_LT(peak() - before, 100) << "MB";
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
