// A painted frame, and what tests ask of its pixels.
#pragma once

#include <cstdint>
#include <ostream>

#include <gmock/gmock.h>

#include <parchlet/AnnotationTypes.h>
#if defined(_WIN32)
#include "windows/NativeWindow.h"
#else
#include <parchlet/LayeredWindow.h>
#include <parchlet/MemoryWindow.h>
#endif

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

// A frame in a failed expectation is saved as a picture; the message names the file.
struct Frame : MemoryFrame {
  explicit Frame(MemoryFrame frame) : MemoryFrame(std::move(frame)) {}

  // 0 off the frame.
  std::uint32_t At(int x, int y) const;

  // The box of the pixels that differ from `background`; right and bottom lie one past the last.
  RECT InkBox(std::uint32_t background = kWhite) const;

  // The area that black ink covers on white, in pixels, by the coverage of each.
  double BlackArea() const;
};

void PrintTo(const Frame& frame, std::ostream* out);

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
