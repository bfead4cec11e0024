// X11Test.h - what the adapter's tests share: frames and a board to show.
#pragma once

#include <parchlet/LayeredWindow.h>
#include <parchlet/Parchlet.h>

#include "x11/XTest.h"

constexpr std::uint32_t kDesk = 0x3060C0;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00C000;
constexpr std::uint32_t kBlue = 0xFF0000FF;

// Frames through shared memory (true), and without it.
class X11Ways : public XTest, public testing::WithParamInterface<bool> {
 protected:
  X11Ways() : XTest(kSmallScreen + (GetParam() ? "" : " -extension MIT-SHM")) {}
};
#define WITH_AND_WITHOUT_SHARED_MEMORY(suite)                           \
  INSTANTIATE_TEST_SUITE_P(SharedMemory, suite, testing::Values(true)); \
  INSTANTIATE_TEST_SUITE_P(Connection, suite, testing::Values(false))

// Pushes a frame of one premultiplied colour, as the engine would. Its rows are longer than the
// frame is wide, as those of a surface larger than its window.
inline bool Push(LayeredWindow& window, int width, int height, std::uint32_t color,
                 const std::vector<RECT>& changed) {
  const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width + 7) * height, color);
  return window.Present({pixels.data(), width, height, std::ptrdiff_t{width + 7} * 4,
                         changed.data(), changed.size()});
}
inline bool Push(LayeredWindow& window, int width, int height, std::uint32_t color) {
  return Push(window, width, height, color, {{0, 0, width, height}});
}

// An engine with one transparent page over a window.
class Board {
 public:
  Board(HWND window, int width, int height) {
    engine.SetUserInfo("ada", "", "Ada");
    engine.Init();
    engine.NewDoc("ada", "doc");
    engine.NewPage("doc", "page", "ada", window,
                   {0, 0, width, height, true, {0, 0, width, height}, 0});
  }

  void DrawLine(POINT from, POINT to, unsigned long color) {
    engine.SetPen(color, 12);
    engine.StartDrawing("doc", "page", from);
    engine.MoveDrawing(to);
    engine.EndDrawing();
  }

  Parchlet engine;
};
