// PNG files, against their own library's simplest reader.
#include <gtest/gtest.h>

#include <filesystem>

#include <png.h>

#include "ImageFiles.h"
#include "platform/image/Picture.h"
#include "platform/image/PixelMath.h"

namespace {

using Pixels = std::vector<std::uint32_t>;

// By the library's one-call interface, which chooses every conversion by itself.
Pixels ReadSimply(const Bytes& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()), 0);
  image.format = PNG_FORMAT_RGBA;
  std::vector<std::uint8_t> samples(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, samples.data(), 0, nullptr), 0);
  Pixels pixels;
  for (std::size_t i = 0; i < samples.size(); i += 4) {
    pixels.push_back(Premultiply({samples[i], samples[i + 1], samples[i + 2], samples[i + 3]}));
  }
  return pixels;
}

TEST(PngDecoder, EveryKindOfFileShowsTheColorsThatItHolds) {
  for (const auto& entry : std::filesystem::directory_iterator(PARCHLET_CORPUS "/png")) {
    const Bytes bytes = ReadWholeFile(entry.path());
    const bool isEightBitOrLess = std::to_integer<int>(bytes[24]) <= 8;
    if (isEightBitOrLess && entry.path().filename() != "ChunkOfTwoGigabytes") {
      EXPECT_EQ(DecodePicture(bytes).pixels, ReadSimply(bytes)) << entry.path();
    }
  }
}

}  // namespace
