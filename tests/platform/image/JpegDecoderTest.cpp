#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "ImageFiles.h"
#include "platform/image/Picture.h"

namespace {

// At quality 100 a block of one colour comes back within the rounding of two colour conversions.
constexpr int kTolerance = 2;
constexpr int kBlock = 8;

bool IsNear(std::uint32_t pixel, FileColor expected) {
  const auto differs = [pixel](int shift, std::uint8_t value) {
    return std::abs(static_cast<int>(pixel >> shift & 0xFF) - value) > kTolerance;
  };
  return pixel >> 24 == 255 && !differs(16, expected.red) && !differs(8, expected.green) &&
         !differs(0, expected.blue);
}

// A picture of one block a colour, side by side; the last two columns are cut off.
JpegFile MakeBlocks(const std::vector<Samples>& blocks) {
  JpegFile file;
  file.components = static_cast<int>(blocks[0].size());
  file.width = kBlock * static_cast<int>(blocks.size()) - 2;
  file.height = kBlock;
  for (int y = 0; y < file.height; ++y) {
    for (int x = 0; x < file.width; ++x) {
      const Samples& samples = blocks[static_cast<std::size_t>(x / kBlock)];
      file.samples.insert(file.samples.end(), samples.begin(), samples.end());
    }
  }
  return file;
}

void ExpectBlocks(const JpegFile& file, const std::vector<FileColor>& colors) {
  const Picture picture = DecodePicture(MakeJpeg(file));
  ASSERT_EQ(picture.format, PictureFormat::kJpeg);
  ASSERT_EQ(picture.width, file.width);
  ASSERT_EQ(picture.height, file.height);
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    const std::size_t block = i % static_cast<std::size_t>(file.width) / kBlock;
    ASSERT_TRUE(IsNear(picture.pixels[i], colors[block]))
        << "pixel " << i << " is " << std::hex << picture.pixels[i];
  }
}

TEST(JpegDecoder, ColorsAndGreysComeBackAsTheyWere) {
  JpegFile colors = MakeBlocks({{255, 0, 0}, {10, 200, 30}, {0, 0, 255}, {250, 250, 5}});
  JpegFile greys = MakeBlocks({{0}, {77}, {255}});
  for (const bool progressive : {false, true}) {
    colors.progressive = greys.progressive = progressive;
    ExpectBlocks(colors, {{255, 0, 0}, {10, 200, 30}, {0, 0, 255}, {250, 250, 5}});
    ExpectBlocks(greys, {{0, 0, 0}, {77, 77, 77}, {255, 255, 255}});
  }
}

TEST(JpegDecoder, InksAreLaidOnWhitePaper) {
  // Cyan, magenta, yellow, black: 255 is full ink without the marker, no ink with it.
  JpegFile plain = MakeBlocks({{0, 0, 0, 0}, {255, 0, 0, 0}, {0, 255, 255, 0}, {0, 0, 0, 155}});
  ExpectBlocks(plain, {{255, 255, 255}, {0, 255, 255}, {255, 0, 0}, {100, 100, 100}});
  JpegFile printed = MakeBlocks(
      {{255, 255, 255, 255}, {0, 255, 255, 255}, {255, 0, 0, 255}, {255, 255, 255, 100}});
  printed.printed = true;
  ExpectBlocks(printed, {{255, 255, 255}, {0, 255, 255}, {255, 0, 0}, {100, 100, 100}});
}

TEST(JpegDecoder, AFileOfMoreThanAHundredScansFails) {
  JpegFile file = MakeBlocks({{10}, {200}});
  file.progressive = true;
  EXPECT_EQ(DecodePicture(MakeJpeg(file)).width, file.width) << "64 scans";
  file.refinements = 1;
  EXPECT_EQ(DecodePicture(MakeJpeg(file)).width, 0) << "127 scans";
}

TEST(JpegDecoder, ALargeFileMayHaveFewerScans) {
  JpegFile file;
  file.components = 1;
  file.progressive = true;
  file.width = file.height = 4096 + kBlock;
  file.samples.resize(Product(file.width, file.height), 200);
  EXPECT_EQ(DecodePicture(MakeJpeg(file)).width, 0) << "64 scans of 16 megapixels and more";
}

}  // namespace
