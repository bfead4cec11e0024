// X11Test.h - what the adapter's tests share: a server, a client, and what is shown on them.
#pragma once

#include <optional>

#include <gtest/gtest.h>
#include <parchlet/LayeredWindow.h>
#include <parchlet/Parchlet.h>

#include "x11/XServer.h"

constexpr std::uint32_t kDesk = 0x3060C0;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00C000;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr const char* kSmallScreen = "-screen 0 640x480x24";

class X11Test : public testing::Test {
 protected:
  void SetUp() override {
    NEEDS_X_SERVER(server);
    client.emplace(server.Display());
  }

  XServer server{kSmallScreen};
  std::optional<XClient> client;  // the host, or whoever else is on the desktop
};

// Frames through shared memory (true), and without it.
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
