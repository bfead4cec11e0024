// A painted frame, and what tests ask of its pixels.
#pragma once

#include <algorithm>
#include <cstdint>
#include <ostream>

#include <gmock/gmock.h>

#include <parchlet/AnnotationTypes.h>
#include <parchlet/LayeredWindow.h>
#include <parchlet/MemoryWindow.h>

// The interface's plain records.
inline bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline void PrintTo(const RECT& rect, std::ostream* out) {
  *out << "{" << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom << "}";
}

inline bool operator==(const AnnotationPoint& a, const AnnotationPoint& b) {
  return a.x == b.x && a.y == b.y && a.xRatio == b.xRatio && a.yRatio == b.yRatio;
}

inline constexpr std::uint32_t kWhite = 0xFFFFFFFF;
inline constexpr std::uint32_t kBlack = 0xFF000000;
inline constexpr std::uint32_t kRed = 0xFFFF0000;
inline constexpr std::uint32_t kGreen = 0xFF00FF00;
inline constexpr std::uint32_t kBlue = 0xFF0000FF;
inline constexpr std::uint32_t kFrameGrey = 0xFF939393;
inline constexpr std::uint32_t kClear = 0x00000000;

struct Frame : MemoryFrame {
  explicit Frame(MemoryFrame frame) : MemoryFrame(std::move(frame)) {}

  // 0 off the frame.
  std::uint32_t At(int x, int y) const {
    return x < 0 || y < 0 || x >= width || y >= height
               ? 0
               : pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                        static_cast<std::size_t>(x)];
  }

  // The box of the pixels that differ from `background`; right and bottom lie one past the last.
  RECT InkBox(std::uint32_t background = kWhite) const {
    RECT box = {width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        if (At(x, y) != background) {
          const RECT pixel = {x, y, x + 1, y + 1};
          box = {std::min(box.left, pixel.left), std::min(box.top, pixel.top),
                 std::max(box.right, pixel.right), std::max(box.bottom, pixel.bottom)};
        }
      }
    }
    return box.right == 0 ? RECT{0, 0, 0, 0} : box;
  }

  // The area that black ink covers on white, in pixels, by the coverage of each.
  double BlackArea() const {
    double area = 0;
    for (const std::uint32_t pixel : pixels) {
      area += (255 - static_cast<int>(pixel & 0xFF)) / 255.0;
    }
    return area;
  }
};

inline void PrintTo(const Frame& frame, std::ostream* out) {
  *out << "a frame of " << frame.width << " x " << frame.height << " pixels";
}

// The colour, premultiplied, of the pixel at (x, y).
MATCHER_P3(Shows, x, y, color, "") {
  *result_listener << "pixel (" << x << ", " << y << ") is 0x" << std::hex << arg.At(x, y);
  return arg.At(x, y) == static_cast<std::uint32_t>(color);
}

// All pixels have one colour.
MATCHER_P(IsAll, color, "") {
  for (const std::uint32_t pixel : arg.pixels) {
    if (pixel != static_cast<std::uint32_t>(color)) {
      *result_listener << "a pixel is 0x" << std::hex << pixel;
      return false;
    }
  }
  return !arg.pixels.empty();
}
