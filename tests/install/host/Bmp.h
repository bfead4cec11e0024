// Bmp.h - 24-bit BMP files by a reader and a writer that know nothing of the library.
#pragma once

#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

struct Bmp {
  int width = 0;  // 0: no such file
  int height = 0;
  std::vector<std::uint32_t> pixels;  // 0xFFRRGGBB, top row first

  std::uint32_t At(int x, int y) const {
    return x < width && y < height ? pixels[static_cast<std::size_t>(y) * width + x] : 0;
  }
};

inline std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The bytes of a file whose pixel (x, y) has the colour 0xRRGGBB that `colorAt` gives.
inline std::string MakeBmp(int width, int height,
                           const std::function<std::uint32_t(int, int)>& colorAt) {
  const auto number = [](std::uint32_t value, int size) {
    std::string bytes;
    for (; size > 0; --size, value >>= 8) {
      bytes += static_cast<char>(value & 0xFF);
    }
    return bytes;
  };
  const int stride = (3 * width + 3) / 4 * 4;
  std::string file = "BM" + number(54 + stride * height, 4) + number(0, 4) + number(54, 4) +
                     number(40, 4) + number(width, 4) + number(height, 4) + number(1, 2) +
                     number(24, 2) + std::string(24, '\0');
  for (int y = height - 1; y >= 0; --y) {
    std::string row;
    for (int x = 0; x < width; ++x) {
      row += number(colorAt(x, y), 3);
    }
    row.resize(stride);
    file += row;
  }
  return file;
}

inline Bmp ReadBmp(const std::string& path) {
  const std::string bytes = ReadBytes(path);
  const auto number = [&](std::size_t offset, int size) {
    std::uint32_t value = 0;
    while (size-- > 0) {
      value = value << 8 | static_cast<unsigned char>(bytes.at(offset + size));
    }
    return value;
  };
  if (bytes.size() < 54 || bytes.compare(0, 2, "BM") != 0 || number(28, 2) != 24) {
    return {};
  }
  Bmp bmp;
  bmp.width = static_cast<int>(number(18, 4));
  bmp.height = static_cast<int>(number(22, 4));
  const std::size_t start = number(10, 4);
  const std::size_t stride = (3 * static_cast<std::size_t>(bmp.width) + 3) / 4 * 4;
  for (int y = bmp.height - 1; y >= 0; --y) {
    for (int x = 0; x < bmp.width; ++x) {
      bmp.pixels.push_back(0xFF000000 | number(start + y * stride + 3 * x, 3));
    }
  }
  return bmp;
}
