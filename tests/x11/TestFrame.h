// TestFrame.h - a frame of one colour to push, as the engine would.
#pragma once

#include <cstdint>
#include <vector>

#include <parchlet/LayeredWindow.h>

// Its rows are longer than the frame is wide, as those of a surface larger than its window.
class TestFrame {
 public:
  // `color` is premultiplied.
  TestFrame(int width, int height, std::uint32_t color)
      : width(width),
        height(height),
        pixels(RowLength() * static_cast<std::size_t>(height), color) {
    changed = {{0, 0, width, height}};
  }

  TestFrame& Changed(std::vector<RECT> areas) {
    changed = std::move(areas);
    return *this;
  }

  LayeredFrame Get() const {
    return {pixels.data(),  width,         height, static_cast<std::ptrdiff_t>(RowLength() * 4),
            changed.data(), changed.size()};
  }

 private:
  std::size_t RowLength() const { return static_cast<std::size_t>(width) + 7; }

  int width;
  int height;
  std::vector<std::uint32_t> pixels;
  std::vector<RECT> changed;
};
