// Every picture of the corpus has the same pixels on every system. The list was written by libpng,
// libjpeg, giflib and our own reader of BMP files.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>

#include "ImageFiles.h"
#include "platform/image/Picture.h"

namespace {

// Of a lossy file, the means of the channels over a grid of so many cells a side.
constexpr int kCells = 4;

std::string Exactly(const Picture& picture) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const std::uint32_t pixel : picture.pixels) {
    hash = (hash ^ pixel) * 0x100000001B3;
  }
  std::ostringstream text;
  text << std::hex << hash;
  return text.str();
}

std::string Roughly(const Picture& picture) {
  std::array<std::array<long, 4>, kCells * kCells> sums{};
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const std::uint32_t pixel = picture.pixels[static_cast<std::size_t>(y) * picture.width + x];
      const int cell = y * kCells / picture.height * kCells + x * kCells / picture.width;
      auto& sum = sums.at(static_cast<std::size_t>(cell));
      for (std::size_t i = 0; i < 3; ++i) {
        sum.at(i) += pixel >> 8 * i & 0xFF;
      }
      ++sum[3];
    }
  }
  std::string text;
  for (const auto& [blue, green, red, count] : sums) {
    for (const long sum : {red, green, blue}) {
      text += (text.empty() ? "" : ",") + std::to_string(sum / std::max(count, 1L));
    }
  }
  return text;
}

// Decoders of JPEG round in ways of their own, and may smooth what they enlarge.
bool AreNear(const std::string& means, const std::string& expected) {
  constexpr int kTolerance = 3;
  std::istringstream a(means);
  std::istringstream b(expected);
  for (std::string x, y; std::getline(a, x, ',');) {
    if (!std::getline(b, y, ',') || std::abs(std::stoi(x) - std::stoi(y)) > kTolerance) {
      return false;
    }
  }
  return b.peek() == std::istringstream::traits_type::eof();
}

TEST(Corpus, EveryPictureHasTheSamePixelsOnEverySystem) {
  std::map<std::string, std::string> expected;
  std::ifstream list(PARCHLET_CORPUS_PIXELS);
  for (std::string name, size, pixels; list >> name >> size >> pixels;) {
    expected[name] = size.append(" ").append(pixels);
  }
  for (const std::string folder : {"bmp", "gif", "jpeg", "png"}) {
    for (const auto& entry : std::filesystem::directory_iterator(PARCHLET_CORPUS "/" + folder)) {
      const std::string name = folder + "/" + entry.path().filename().string();
      const Picture picture = DecodePicture(ReadSeed(name));
      const bool isLossy = folder == "jpeg";
      const std::string size =
          std::to_string(picture.width) + "x" + std::to_string(picture.height) + " ";
      const std::string pixels = isLossy ? Roughly(picture) : Exactly(picture);
      const bool isSame = isLossy && expected[name].starts_with(size)
                              ? AreNear(pixels, expected[name].substr(size.size()))
                              : size + pixels == expected[name];
      EXPECT_TRUE(isSame) << "corpus-pixels.txt: " << name << " " << size << pixels;
      expected.erase(name);
    }
  }
  EXPECT_TRUE(expected.empty()) << "files are missing";
}

}  // namespace
