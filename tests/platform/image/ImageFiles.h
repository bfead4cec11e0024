// Builds image files in memory, with the system's own libraries or byte by byte, for tests and for
// the seeds of the fuzzers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

using Bytes = std::vector<std::byte>;
using Samples = std::vector<std::uint8_t>;

// The product of two sizes, where the plain one would be an int.
constexpr std::size_t Product(int first, int second) {
  return static_cast<std::size_t>(first) * static_cast<std::size_t>(second);
}

Bytes ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const Bytes& bytes);

struct FileColor {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

// Rows as the format packs them: without filter bytes, each starting on a byte, 16-bit samples with
// the high byte first.
struct PngFile {
  int width = 0;
  int height = 0;
  int colorType = 0;  // PNG_COLOR_TYPE_*
  int bitDepth = 8;
  bool interlaced = false;
  Samples rows;
  std::vector<FileColor> palette;
  Samples paletteAlpha;
  std::optional<std::vector<std::uint16_t>> transparentColor;  // grey, or red, green and blue
};
Bytes MakePng(const PngFile& file);

struct JpegFile {
  int width = 0;
  int height = 0;
  int components = 3;  // 1 grey, 3 colours, 4 inks
  Samples samples;
  bool progressive = false;
  bool printed = false;  // four components go through YCCK
  int refinements =
      0;  // progressive, grey: each coefficient gets a scan and this many refining ones
};
// Quality 100 without subsampling.
Bytes MakeJpeg(const JpegFile& file);

struct GifFile {
  int screenWidth = 0;
  int screenHeight = 0;
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  Samples indexes;
  std::vector<FileColor> palette;  // 2, 4, 8, ... of them
  bool localPalette = false;
  bool interlaced = false;
  int transparent = -1;
  bool secondFrame = false;  // the same frame once more, all of index 0
};
Bytes MakeGif(const GifFile& file);

struct BmpFile {
  std::uint32_t headerSize = 40;
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::uint16_t bits = 24;
  std::uint32_t compression = 0;
  std::vector<std::uint32_t> masks;  // behind a header of 40 bytes, in a longer one
  std::vector<FileColor> palette;
  std::uint32_t colorsUsed = 0;
  Samples stored;
};
Bytes MakeBmp(const BmpFile& file);
