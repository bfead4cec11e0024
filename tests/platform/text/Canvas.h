// Pixels to draw text on, and what tests ask of them.
#pragma once

#include <algorithm>
#include <cstdlib>

#include "platform/gdi/Gdi.h"
#include "support/Frame.h"

struct Canvas : Frame {
  Canvas(int width, int height, std::uint32_t background = kWhite)
      : Frame({width, height,
               std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height, background)}),
        background(background) {}

  PixelView View() { return {pixels.data(), width, height}; }
  // The box of the pixels that differ from the background; empty when none does.
  RECT InkBox() const { return Frame::InkBox(background); }
  bool IsBlank() const { return InkBox().right == 0; }
  std::size_t Count(std::uint32_t color) const {
    return static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), color));
  }
  // The largest difference in red between the pixels from (left, top) on and the other canvas.
  int DifferenceAt(int left, int top, const Canvas& other) const {
    const auto red = [](std::uint32_t pixel) { return static_cast<int>(pixel >> 16 & 0xFF); };
    int largest = 0;
    for (int y = 0; y < other.height; ++y) {
      for (int x = 0; x < other.width; ++x) {
        largest = std::max(largest, std::abs(red(At(left + x, top + y)) - red(other.At(x, y))));
      }
    }
    return largest;
  }

  std::uint32_t background;
};
