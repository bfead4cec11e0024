#include "SampleFiles.h"

#include <png.h>

namespace {

constexpr int kWidth = 19;
constexpr int kHeight = 10;

Samples MakeSamples(int count, int limit) {
  Samples samples;
  for (int i = 0; i < count; ++i) {
    samples.push_back(static_cast<std::uint8_t>((i * 7 + i / 13) % limit));
  }
  return samples;
}

const std::vector<FileColor> kColors = {{0, 0, 0}, {255, 0, 0}, {0, 200, 0}, {9, 9, 255}};

Bytes Png(int colorType, int bitDepth, bool interlaced) {
  PngFile file;
  file.width = kWidth;
  file.height = kHeight;
  file.colorType = colorType;
  file.bitDepth = bitDepth;
  file.interlaced = interlaced;
  file.rows = MakeSamples(kWidth * kHeight * 8, 256);
  if (colorType == PNG_COLOR_TYPE_PALETTE) {
    file.palette = kColors;
    file.paletteAlpha = {0, 100};
  }
  return MakePng(file);
}

Bytes Jpeg(int components, bool progressive) {
  JpegFile file;
  file.width = kWidth;
  file.height = kHeight;
  file.components = components;
  file.progressive = progressive;
  file.printed = components == 4;
  file.samples = MakeSamples(kWidth * kHeight * components, 256);
  return MakeJpeg(file);
}

Bytes Gif(bool interlaced) {
  GifFile file;
  file.screenWidth = kWidth + 3;
  file.screenHeight = kHeight + 2;
  file.left = 1;
  file.top = 2;
  file.width = kWidth;
  file.height = kHeight;
  file.indexes = MakeSamples(kWidth * kHeight, 4);
  file.palette = kColors;
  file.interlaced = interlaced;
  file.transparent = interlaced ? 1 : -1;
  return MakeGif(file);
}

Bytes Bmp(int bits) {
  BmpFile file;
  file.width = kWidth;
  file.height = kHeight;
  file.bits = static_cast<std::uint16_t>(bits);
  // No byte of filling after the last row, which a reader can do without.
  file.stored =
      MakeSamples((kWidth * bits + 31) / 32 * 4 * (kHeight - 1) + (kWidth * bits + 7) / 8, 256);
  if (bits <= 8) {
    file.palette = kColors;
    file.colorsUsed = 4;
  }
  if (bits == 16) {
    file.compression = 3;
    file.masks = {0xF800, 0x07E0, 0x001F};
  }
  return MakeBmp(file);
}

Bytes PackedBmp(int bits) {
  BmpFile file;
  file.width = kWidth;
  file.height = 3;
  file.bits = static_cast<std::uint16_t>(bits);
  file.compression = bits == 8 ? 1 : 2;
  file.palette = kColors;
  file.colorsUsed = 4;
  file.stored = {5, 0x12, 0, 3, 0x21, 0x30, 3, 0, 0, 0, 0, 2, 1, 1, 2, 0x33, 0, 1};
  return MakeBmp(file);
}

}  // namespace

std::vector<SampleFile> MakeSampleFiles() {
  return {
      {"PngColorAlpha", "png", Png(PNG_COLOR_TYPE_RGB_ALPHA, 8, false)},
      {"PngGrey16Interlaced", "png", Png(PNG_COLOR_TYPE_GRAY, 16, true)},
      {"PngPalette", "png", Png(PNG_COLOR_TYPE_PALETTE, 2, false)},
      {"JpegColor", "jpeg", Jpeg(3, false)},
      {"JpegGreyProgressive", "jpeg", Jpeg(1, true)},
      {"JpegInks", "jpeg", Jpeg(4, false)},
      {"GifPlain", "gif", Gif(false)},
      {"GifInterlaced", "gif", Gif(true)},
      {"Bmp1", "bmp", Bmp(1)},
      {"Bmp8", "bmp", Bmp(8)},
      {"Bmp16", "bmp", Bmp(16)},
      {"Bmp24", "bmp", Bmp(24)},
      {"BmpRle4", "bmp", PackedBmp(4)},
      {"BmpRle8", "bmp", PackedBmp(8)},
  };
}
