// Pixels that text is painted on.
#pragma once

#include <algorithm>

#include "platform/text/TextPainter.h"
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
  std::uint32_t background;
};
