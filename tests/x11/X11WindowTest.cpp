#include <parchlet/x11/X11Window.h>

#include <algorithm>
#include <atomic>
#include <iterator>

#include "x11/X11Test.h"

namespace {

class X11WindowTest : public XTest {};

std::ptrdiff_t CountOf(std::uint32_t color, const Screenshot& shot) {
  return std::count(shot.pixels.begin(), shot.pixels.end(), color & 0xFFFFFF);
}

// Frames through shared memory, and through a connection as from another machine.
class X11WindowWays : public XTest, public testing::WithParamInterface<bool> {
 protected:
  X11WindowWays() : XTest("-screen 0 2600x2100x24 -listen tcp") {}
};

TEST_P(X11WindowWays, SendsTheChangedRectanglesAndNoOthers) {
  const std::string display = (GetParam() ? "" : "127.0.0.1") + server.Display();
  X11Window target(display, client->ShowAlphaWindow({50, 40, 250, 140}));
  ASSERT_TRUE(Push(target, 200, 100, kRed)) << target.GetError();
  // Two rectangles, one of them partly past the frame, of a frame that has a new colour everywhere.
  ASSERT_TRUE(Push(target, 200, 100, kBlue, {{10, 20, 40, 60}, {150, 90, 900, 900}}))
      << target.GetError();
  std::ifstream maps("/proc/self/maps");
  const std::string memory(std::istreambuf_iterator<char>(maps), {});
  EXPECT_EQ(memory.find("memfd:parchlet-x11") != std::string::npos, GetParam());
  const Screenshot shot = client->Look({50, 40, 250, 140});
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 200; ++x) {
      const bool isChanged = (x >= 10 && x < 40 && y >= 20 && y < 60) || (x >= 150 && y >= 90);
      ASSERT_EQ(shot.At(50 + x, 40 + y), (isChanged ? kBlue : kRed) & 0xFFFFFF) << x << ", " << y;
    }
  }
  // Larger than one request.
  const RECT area = {0, 0, 2560, 2048};
  X11Window large(display, client->ShowAlphaWindow(area));
  ASSERT_TRUE(Push(large, 2560, 2048, kRed)) << large.GetError();
  EXPECT_EQ(CountOf(kRed, client->Look(area)), 2560 * 2048);
}

WITH_AND_WITHOUT_SHARED_MEMORY(X11WindowWays);

TEST_F(X11WindowTest, WhatWasLostIsRepairedWithTheNextFrame) {
  const xcb_window_t window = client->ShowAlphaWindow({50, 40, 250, 140});
  X11Window target(server.Display(), window);
  ASSERT_TRUE(Push(target, 200, 100, kRed));
  ASSERT_TRUE(Push(target, 200, 100, kRed, {}));  // hears of the window's own coming up

  client->LoseContent(window, {20, 10, 30, 20});
  ASSERT_EQ(client->ColorAt(70, 50), 0U);
  // All of it is another colour now, but the host was told of nothing.
  ASSERT_TRUE(Push(target, 200, 100, kBlue, {}));
  EXPECT_EQ(CountOf(kBlue, client->Look({50, 40, 250, 140})), 10 * 10);

  // So many places that they are no longer told apart.
  for (int i = 0; i < 200; ++i) {
    client->LoseContent(window, {i, i / 2, i + 2, i / 2 + 2});
  }
  ASSERT_TRUE(Push(target, 200, 100, kRed, {}));
  EXPECT_EQ(CountOf(kRed, client->Look({50, 40, 250, 140})), 200 * 100);
}

TEST_F(X11WindowTest, SaysWhyAWindowCannotBeHad) {
  const X11Window opaque(server.Display(), client->ShowWindow({0, 0, 50, 50}, kDesk));
  EXPECT_EQ(opaque.Handle(), nullptr);
  EXPECT_NE(opaque.GetError().find("has depth 24"), std::string::npos) << opaque.GetError();
  X11Window unknown(server.Display(), 0x1234);
  EXPECT_EQ(unknown.Handle(), nullptr);
  EXPECT_NE(unknown.GetError().find("the window 0x1234: BadWindow"), std::string::npos)
      << unknown.GetError();
  EXPECT_FALSE(Push(unknown, 10, 10, kRed));
  EXPECT_EQ(unknown.GetScreenRect().right, 0);
}

TEST_F(X11WindowTest, AWindowDestroyedByAnotherClientTakesNoMoreFrames) {
  const xcb_window_t window = client->ShowAlphaWindow({50, 40, 250, 140});
  X11Window target(server.Display(), window);
  Board board(target.Handle(), 200, 100);
  board.DrawLine({20, 75}, {180, 75}, kRed);
  EXPECT_TRUE(Eventually([&] { return client->ColorAt(150, 115) == 0xFF0000; }));
  client->DestroyWindow(window);
  EXPECT_FALSE(Push(target, 200, 100, kRed));
  EXPECT_NE(target.GetError().find("was destroyed"), std::string::npos) << target.GetError();
  EXPECT_EQ(target.GetScreenRect().right, 0);
  EXPECT_EQ(board.engine.DelPage("doc", "page"), 1) << "the engine goes on";
}

TEST_F(X11WindowTest, FollowsTheHostsWindowWhileFramesGoOn) {
  const xcb_window_t window = client->ShowAlphaWindow({0, 0, 200, 100});
  X11Window target(server.Display(), window);
  std::atomic<bool> isDone = false;
  std::thread pusher([&] {
    while (!isDone) {
      EXPECT_TRUE(Push(target, 200, 100, kRed)) << target.GetError();
    }
  });
  for (int step = 0; step < 250; ++step) {
    client->MoveWindow(window, {step, 2, step + 200, 103});
    EXPECT_EQ(target.GetScreenRect().left, step);
    EXPECT_EQ(target.GetScreenRect().bottom, 103);
    EXPECT_EQ(target.GetError(), "");
  }
  isDone = true;
  pusher.join();
  // Only a corner is said to have changed, but nothing is there any more after a resize.
  client->MoveWindow(window, {300, 200, 360, 290});
  ASSERT_TRUE(Push(target, 60, 90, kBlue, {{0, 0, 1, 1}}));
  EXPECT_EQ(client->ColorAt(359, 289), 0x0000FFU);
}

}  // namespace
