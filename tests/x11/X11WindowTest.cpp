#include <parchlet/x11/X11Window.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <string>
#include <thread>

#include "x11/Board.h"
#include "x11/TestFrame.h"
#include "x11/XClient.h"
#include "x11/XServer.h"

namespace {

constexpr std::uint32_t kDesk = 0x3060C0;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kBlue = 0xFF0000FF;

bool SharesMemoryWithTheServer() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find("memfd:parchlet-x11") != std::string::npos) {
      return true;
    }
  }
  return false;
}

std::ptrdiff_t CountOf(std::uint32_t color, const Screenshot& shot) {
  return std::count(shot.pixels.begin(), shot.pixels.end(), color & 0xFFFFFF);
}

// How one line of ink at y = 75 and a translucent one at y = 110 look in a window at (150, 100)
// over one of the desk's colour.
struct InkLook {
  std::uint32_t blank;
  std::uint32_t translucentRed;
};

void ExpectInkOverDesk(XServer& server, const InkLook& look) {
  XClient desk(server.Display());
  desk.ShowWindow({100, 80, 500, 380}, kDesk);
  const xcb_window_t window = desk.ShowAlphaWindow({150, 100, 350, 250});
  X11Window target(server.Display(), window);
  ASSERT_EQ(target.GetError(), "");
  Board board(target.Handle(), 200, 150);
  board.DrawLine({20, 75}, {180, 75}, 0xFFFFC000, 9);
  board.DrawLine({20, 110}, {180, 110}, 0x80FF0000, 9);

  ASSERT_TRUE(desk.WaitForColor(250, 210, look.translucentRed))
      << std::hex << desk.Look({250, 210, 251, 211}).At(250, 210);
  const Screenshot shot = desk.Look({0, 0, 640, 480});
  EXPECT_TRUE(IsNear(shot.At(250, 175), 0xFFC000)) << std::hex << shot.At(250, 175);
  // The line's ends, its edges and the window's: nothing is shifted.
  for (const POINT& blank : {POINT{166, 175}, POINT{334, 175}, POINT{250, 169}, POINT{250, 181},
                             POINT{150, 100}, POINT{349, 249}}) {
    EXPECT_TRUE(IsNear(shot.At(blank.x, blank.y), look.blank))
        << blank.x << ", " << blank.y << ": " << std::hex << shot.At(blank.x, blank.y);
  }
  for (const POINT& outside : {POINT{149, 175}, POINT{350, 175}, POINT{250, 99}, POINT{250, 250}}) {
    EXPECT_EQ(shot.At(outside.x, outside.y), kDesk) << outside.x << ", " << outside.y;
  }
}

}  // namespace

TEST(X11Window, InkIsBlendedOverOtherWindowsAtItsPlace) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  ASSERT_TRUE(server.StartCompositor());
  // A transparent page is black at 10 of 255; the ink is at 128 of 255 over that.
  ExpectInkOverDesk(server, {0x2E5CB8, 0x962E5C});
}

TEST(X11Window, WithoutACompositorAWindowShowsItsOwnPixelsAlone) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  ExpectInkOverDesk(server, {0x000000, 0x800000});
}

// Frames through shared memory, and through a connection as from another machine.
class X11WindowWays : public testing::TestWithParam<bool> {
 protected:
  std::string Display() const { return GetParam() ? server.Display() : server.RemoteDisplay(); }

  XServer server{{"-screen", "0", "2600x2100x24", "-listen", "tcp"}};
};

TEST_P(X11WindowWays, SendsTheChangedRectanglesAndNoOthers) {
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  X11Window target(Display(), client.ShowAlphaWindow({50, 40, 250, 140}));
  ASSERT_TRUE(target.Present(TestFrame(200, 100, kRed).Get())) << target.GetError();
  // Two rectangles, one of them partly past the frame, of a frame that has a new colour everywhere.
  ASSERT_TRUE(target.Present(
      TestFrame(200, 100, kBlue).Changed({{10, 20, 40, 60}, {150, 90, 900, 900}}).Get()))
      << target.GetError();

  EXPECT_EQ(SharesMemoryWithTheServer(), GetParam());
  const RECT window = {50, 40, 250, 140};
  const Screenshot shot = client.Look(window);
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 200; ++x) {
      const bool isChanged = (x >= 10 && x < 40 && y >= 20 && y < 60) || (x >= 150 && y >= 90);
      ASSERT_EQ(shot.At(50 + x, 40 + y), (isChanged ? kBlue : kRed) & 0xFFFFFF) << x << ", " << y;
    }
  }
  const TestFrame unchanged = TestFrame(200, 100, kRed).Changed({});
  EXPECT_TRUE(target.Present(unchanged.Get()));
  EXPECT_EQ(client.Look(window).pixels, shot.pixels);
}

TEST_P(X11WindowWays, ShowsAFrameLargerThanOneRequest) {
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  const RECT area = {0, 0, 2560, 2048};
  X11Window target(Display(), client.ShowAlphaWindow(area));
  ASSERT_TRUE(target.Present(TestFrame(2560, 2048, kRed).Get())) << target.GetError();
  EXPECT_EQ(CountOf(kRed, client.Look(area)), 2560 * 2048);
}

INSTANTIATE_TEST_SUITE_P(SharedMemory, X11WindowWays, testing::Values(true));
INSTANTIATE_TEST_SUITE_P(Connection, X11WindowWays, testing::Values(false));

TEST(X11Window, WhatWasLostIsRepairedWithTheNextFrame) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  const xcb_window_t window = client.ShowAlphaWindow({50, 40, 250, 140});
  X11Window target(server.Display(), window);
  const TestFrame unchanged = TestFrame(200, 100, kRed).Changed({});
  ASSERT_TRUE(target.Present(TestFrame(200, 100, kRed).Get()));
  ASSERT_TRUE(target.Present(unchanged.Get()));  // hears of the window's own coming up

  client.LoseContent(window, {20, 10, 30, 20});
  ASSERT_EQ(client.Look({70, 50, 71, 51}).At(70, 50), 0U);
  // All of it is another colour now, but the host was told of nothing.
  ASSERT_TRUE(target.Present(TestFrame(200, 100, kBlue).Changed({}).Get()));
  EXPECT_EQ(CountOf(kBlue, client.Look({50, 40, 250, 140})), 10 * 10);

  // So many places that they are no longer told apart.
  for (int i = 0; i < 200; ++i) {
    client.LoseContent(window, {i, i / 2, i + 2, i / 2 + 2});
  }
  ASSERT_TRUE(target.Present(unchanged.Get()));
  EXPECT_EQ(CountOf(kRed, client.Look({50, 40, 250, 140})), 200 * 100);
}

TEST(X11Window, SaysWhyAWindowCannotBeHad) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  const X11Window opaque(server.Display(), client.ShowWindow({0, 0, 50, 50}, kDesk));
  EXPECT_EQ(opaque.Handle(), nullptr);
  EXPECT_NE(opaque.GetError().find("has depth 24"), std::string::npos) << opaque.GetError();
  X11Window unknown(server.Display(), 0x1234);
  EXPECT_EQ(unknown.Handle(), nullptr);
  EXPECT_NE(unknown.GetError().find("the window 0x1234: BadWindow"), std::string::npos)
      << unknown.GetError();
  EXPECT_FALSE(unknown.Present(TestFrame(10, 10, kRed).Get()));
  const X11Window nowhere(":65000", 1);
  EXPECT_EQ(nowhere.Handle(), nullptr);
  EXPECT_EQ(nowhere.GetError(), "cannot open the X display \":65000\"");
  EXPECT_EQ(nowhere.GetScreenRect().right, 0);
}

TEST(X11Window, AWindowDestroyedByAnotherClientTakesNoMoreFrames) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  const xcb_window_t window = client.ShowAlphaWindow({50, 40, 250, 140});
  X11Window target(server.Display(), window);
  Board board(target.Handle(), 200, 100);
  client.DestroyWindow(window);
  EXPECT_FALSE(target.Present(TestFrame(200, 100, kRed).Get()));
  EXPECT_NE(target.GetError().find("was destroyed"), std::string::npos) << target.GetError();
  EXPECT_EQ(target.GetScreenRect().right, 0);
  // The engine goes on, and the host too.
  board.DrawLine({10, 10}, {90, 90}, kRed, 5);
  EXPECT_EQ(board.Engine().DelPage("doc", "page"), 1);
}

TEST(X11Window, FollowsTheHostsWindowWhileFramesGoOn) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  const xcb_window_t window = client.ShowAlphaWindow({0, 0, 200, 100});
  X11Window target(server.Display(), window);
  std::atomic<bool> isDone = false;
  std::thread pusher([&] {
    const TestFrame frame(200, 100, kRed);
    while (!isDone) {
      EXPECT_TRUE(target.Present(frame.Get())) << target.GetError();
    }
  });
  for (int step = 0; step < 250; ++step) {
    client.MoveWindow(window, {step, 2, step + 200, 103});
    EXPECT_EQ(target.GetScreenRect().left, step);
    EXPECT_EQ(target.GetScreenRect().bottom, 103);
    EXPECT_EQ(target.GetError(), "");
  }
  isDone = true;
  pusher.join();
  // Only a corner is said to have changed, but nothing is there any more after a resize.
  client.MoveWindow(window, {300, 200, 360, 290});
  ASSERT_TRUE(target.Present(TestFrame(60, 90, kBlue).Changed({{0, 0, 1, 1}}).Get()));
  EXPECT_EQ(client.Look({359, 289, 360, 290}).At(359, 289), 0x0000FFU);
}
