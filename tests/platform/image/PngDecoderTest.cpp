#include <gtest/gtest.h>

#include <png.h>

#include "ImageFiles.h"
#include "platform/image/Picture.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr int kWidth =
    13;  // not a multiple of what a byte holds, and larger than one interlacing cell
constexpr int kHeight = 11;
// The colour key where a case has one: this grey, or the colour of this pixel and of all like it.
constexpr std::uint16_t kClearSample = 1;
constexpr int kClearX = 2;
constexpr int kClearY = 3;

struct PngCase {
  int colorType;
  int bitDepth;
  bool interlaced;
  bool colorKey;
};

int ChannelCount(int colorType) {
  switch (colorType) {
    case PNG_COLOR_TYPE_GRAY_ALPHA:
      return 2;
    case PNG_COLOR_TYPE_RGB:
      return 3;
    case PNG_COLOR_TYPE_RGB_ALPHA:
      return 4;
    default:
      return 1;
  }
}

// Any pattern that gives neighbours different values, rows and channels too.
std::uint32_t SampleAt(int x, int y, int channel, int bitDepth) {
  const auto value = static_cast<std::uint32_t>(x * 37 + y * 91 + channel * 59);
  return bitDepth == 16 ? (value & 0xFF) * 257 : value & ((1U << bitDepth) - 1);
}

std::uint8_t To8Bits(std::uint32_t sample, int bitDepth) {
  return static_cast<std::uint8_t>(sample * 255 / ((1U << bitDepth) - 1));
}

FileColor PaletteColor(std::uint32_t index) {
  return {static_cast<std::uint8_t>(index * 3), static_cast<std::uint8_t>(255 - index),
          static_cast<std::uint8_t>(index * 7)};
}

std::uint8_t PaletteAlpha(std::uint32_t index) {
  return static_cast<std::uint8_t>(index * 50);
}

// Stores a row's sample number `i` as the format packs it.
void PackSample(std::uint8_t* row, int i, std::uint32_t sample, int bitDepth) {
  if (bitDepth == 16) {
    row[Product(2, i)] = static_cast<std::uint8_t>(sample >> 8);
    row[Product(2, i) + 1] = static_cast<std::uint8_t>(sample);
    return;
  }
  const int bit = i * bitDepth;
  row[bit / 8] |= static_cast<std::uint8_t>(sample << (8 - bitDepth - bit % 8));
}

void AddColors(const PngCase& png, PngFile& file) {
  for (std::uint32_t i = 0; png.colorType == PNG_COLOR_TYPE_PALETTE && i < 1U << png.bitDepth;
       ++i) {
    file.palette.push_back(PaletteColor(i));
    if (png.colorKey && i < 5) {
      file.paletteAlpha.push_back(PaletteAlpha(i));
    }
  }
  if (png.colorKey && png.colorType == PNG_COLOR_TYPE_GRAY) {
    file.transparentColor = {{kClearSample}};
  }
  if (png.colorKey && png.colorType == PNG_COLOR_TYPE_RGB) {
    file.transparentColor.emplace();
    for (int channel = 0; channel < 3; ++channel) {
      const std::uint32_t sample = SampleAt(kClearX, kClearY, channel, png.bitDepth);
      file.transparentColor->push_back(static_cast<std::uint16_t>(sample));
    }
  }
}

PngFile MakeFile(const PngCase& png) {
  PngFile file{kWidth, kHeight, png.colorType, png.bitDepth, png.interlaced, {}, {}, {}, {}};
  const int channels = ChannelCount(png.colorType);
  const int stride = (kWidth * channels * png.bitDepth + 7) / 8;
  file.rows.resize(Product(stride, kHeight));
  for (int y = 0; y < kHeight; ++y) {
    for (int i = 0; i < kWidth * channels; ++i) {
      PackSample(&file.rows[Product(y, stride)], i,
                 SampleAt(i / channels, y, i % channels, png.bitDepth), png.bitDepth);
    }
  }
  AddColors(png, file);
  return file;
}

StraightColor ExpectedColor(const PngCase& png, int x, int y) {
  const auto sample = [&](int channel) { return SampleAt(x, y, channel, png.bitDepth); };
  const auto channel = [&](int i) { return To8Bits(sample(i), png.bitDepth); };
  // The pattern repeats its first channel's values together with all others.
  const bool isKey = sample(0) == SampleAt(kClearX, kClearY, 0, png.bitDepth);
  switch (png.colorType) {
    case PNG_COLOR_TYPE_GRAY:
      return {channel(0), channel(0), channel(0),
              static_cast<std::uint8_t>(png.colorKey && sample(0) == kClearSample ? 0 : 255)};
    case PNG_COLOR_TYPE_GRAY_ALPHA:
      return {channel(0), channel(0), channel(0), channel(1)};
    case PNG_COLOR_TYPE_RGB:
      return {channel(0), channel(1), channel(2),
              static_cast<std::uint8_t>(png.colorKey && isKey ? 0 : 255)};
    case PNG_COLOR_TYPE_RGB_ALPHA:
      return {channel(0), channel(1), channel(2), channel(3)};
    default: {
      const FileColor color = PaletteColor(sample(0));
      const bool clear = png.colorKey && sample(0) < 5;
      return {color.red, color.green, color.blue,
              clear ? PaletteAlpha(sample(0)) : static_cast<std::uint8_t>(255)};
    }
  }
}

class PngDecoderTest : public testing::TestWithParam<PngCase> {};

TEST_P(PngDecoderTest, EveryPixelHasTheColorThatTheFileGivesIt) {
  const Picture picture = DecodePicture(MakePng(MakeFile(GetParam())));
  ASSERT_EQ(picture.format, PictureFormat::kPng);
  ASSERT_EQ(picture.width, kWidth);
  ASSERT_EQ(picture.height, kHeight);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const auto pixel = picture.pixels[Product(y, kWidth) + x];
      ASSERT_EQ(pixel, Premultiply(ExpectedColor(GetParam(), x, y))) << "at " << x << ", " << y;
    }
  }
}

std::vector<PngCase> AllCases() {
  std::vector<PngCase> cases;
  const auto add = [&cases](int colorType, std::initializer_list<int> depths, bool hasColorKey) {
    for (const int depth : depths) {
      for (const bool interlaced : {false, true}) {
        cases.push_back({colorType, depth, interlaced, false});
        if (hasColorKey) {
          cases.push_back({colorType, depth, interlaced, true});
        }
      }
    }
  };
  add(PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8}, true);
  add(PNG_COLOR_TYPE_GRAY, {16}, false);
  add(PNG_COLOR_TYPE_GRAY_ALPHA, {8, 16}, false);
  add(PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}, true);
  add(PNG_COLOR_TYPE_RGB, {8, 16}, true);
  add(PNG_COLOR_TYPE_RGB_ALPHA, {8, 16}, false);
  return cases;
}

INSTANTIATE_TEST_SUITE_P(AllKinds, PngDecoderTest, testing::ValuesIn(AllCases()),
                         [](const testing::TestParamInfo<PngCase>& info) {
                           const PngCase& png = info.param;
                           return "Type" + std::to_string(png.colorType) + "Bits" +
                                  std::to_string(png.bitDepth) +
                                  (png.interlaced ? "Interlaced" : "") +
                                  (png.colorKey ? "Transparent" : "");
                         });

TEST(PremultipliedColor, IsTheChannelTimesAlphaRoundedToTheNearest) {
  EXPECT_EQ(Premultiply({255, 128, 1, 128}), 0x80804001U);
  EXPECT_EQ(Premultiply({255, 255, 255, 0}), 0U);
  EXPECT_EQ(Premultiply({1, 2, 3, 255}), 0xFF010203U);
}

}  // namespace
