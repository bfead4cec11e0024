// Pixels to draw text on, and what tests ask of them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "platform/gdi/Gdi.h"

class Canvas {
 public:
  Canvas(int width, int height, std::uint32_t background = 0xFFFFFFFF)
      : width(width),
        height(height),
        background(background),
        pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), background) {}

  PixelView View() { return {pixels.data(), width, height}; }

  std::uint32_t At(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }

  // The largest difference in red between the pixels from (left, top) on and the other canvas.
  int DifferenceAt(int left, int top, const Canvas& other) const {
    int largest = 0;
    for (int y = 0; y < other.height; ++y) {
      for (int x = 0; x < other.width; ++x) {
        const auto red = [](std::uint32_t pixel) { return static_cast<int>(pixel >> 16 & 0xFF); };
        largest = std::max(largest, std::abs(red(At(left + x, top + y)) - red(other.At(x, y))));
      }
    }
    return largest;
  }

  // The box of the pixels that differ from the background; empty when none does.
  RECT InkBox() const {
    RECT box = {width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        if (At(x, y) != background) {
          box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                 std::max(box.bottom, y + 1)};
        }
      }
    }
    return box;
  }

  bool IsBlank() const { return InkBox().right == 0; }

  std::size_t Count(std::uint32_t color) const {
    return static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), color));
  }

  int width;
  int height;
  std::uint32_t background;
  std::vector<std::uint32_t> pixels;
};
