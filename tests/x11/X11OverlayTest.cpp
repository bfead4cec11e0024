#include <parchlet/x11/X11Overlay.h>

#include <gtest/gtest.h>

#include <string>

#include "x11/Board.h"
#include "x11/TestFrame.h"
#include "x11/XClient.h"
#include "x11/XServer.h"

namespace {

constexpr std::uint32_t kDesk = 0x3060C0;
constexpr std::uint32_t kGreen = 0xFF00C000;

bool Covers(const X11Overlay& overlay, const RECT& area) {
  const RECT is = overlay.GetScreenRect();
  return is.left == area.left && is.top == area.top && is.right == area.right &&
         is.bottom == area.bottom;
}

}  // namespace

TEST(X11Overlay, InkLiesOverAllWindowsThoseThatComeUpLaterIncluded) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  ASSERT_TRUE(server.StartCompositor());
  XClient desk(server.Display());
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  ASSERT_EQ(overlay.GetError(), "");
  EXPECT_TRUE(overlay.IsBlended());
  Board board(overlay.Handle(), 640, 480);
  board.DrawLine({50, 200}, {600, 200}, kGreen, 9);
  const xcb_window_t before = desk.ShowWindow({100, 150, 300, 250}, kDesk);
  EXPECT_TRUE(desk.WaitForColor(200, 180, 0x2E5CB8));
  EXPECT_TRUE(desk.WaitForColor(200, 200, kGreen));
  desk.ShowWindow({250, 150, 450, 250}, 0xFFFFFF);
  desk.RaiseWindow(before);
  EXPECT_TRUE(desk.WaitForColor(275, 180, 0x2E5CB8));
  EXPECT_TRUE(desk.WaitForColor(400, 180, 0xF5F5F5));
  EXPECT_TRUE(desk.WaitForColor(275, 200, kGreen));
  EXPECT_TRUE(desk.WaitForColor(400, 200, kGreen));
}

TEST(X11Overlay, CoversTheExactPlaceOverAFullScreenWindowUnderAWindowManager) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  ASSERT_TRUE(server.StartWindowManager());
  XClient desk(server.Display());
  X11Overlay overlay(server.Display(), {100, 50, 600, 400});
  const TestFrame frame(500, 350, kGreen);
  ASSERT_TRUE(overlay.Present(frame.Get())) << overlay.GetError();
  desk.ShowFullScreenWindow(kDesk);
  ASSERT_TRUE(desk.WaitForColor(639, 479, kDesk)) << "the window manager shows it";
  EXPECT_TRUE(Eventually([&] {
    return overlay.Present(frame.Get()) && desk.Look({100, 50, 101, 51}).At(100, 50) == 0x00C000;
  })) << overlay.GetError();
  const Screenshot shot = desk.Look({0, 0, 640, 480});
  EXPECT_EQ(shot.At(599, 399), 0x00C000U);
  EXPECT_EQ(shot.At(99, 50), kDesk);
  EXPECT_EQ(shot.At(600, 399), kDesk);
}

TEST(X11Overlay, ClickThroughLetsTheWindowBelowHaveTheClick) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient desk(server.Display());
  XClient host(server.Display());
  const xcb_window_t below = desk.ShowWindow({100, 100, 300, 300}, kDesk);
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  EXPECT_FALSE(overlay.IsBlended());
  ASSERT_TRUE(overlay.Present(TestFrame(640, 480, 0).Get())) << overlay.GetError();
  host.HearButtons(overlay.WindowId());
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(server.Click(200, 200));
    EXPECT_EQ(host.WaitForPress(), overlay.WindowId());
    ASSERT_TRUE(overlay.SetClickThrough(true)) << overlay.GetError();
    ASSERT_TRUE(server.Click(200, 200));
    EXPECT_EQ(desk.WaitForPress(), below);
    ASSERT_TRUE(overlay.SetClickThrough(false)) << overlay.GetError();
  }
}

TEST(X11Overlay, FollowsItsMonitorHidesWithItAndComesBack) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient desk(server.Display());
  desk.ShowWindow({0, 0, 640, 480}, kDesk);
  ASSERT_TRUE(server.ChangeMonitors({"--setmonitor", "LEFT", "320/80x480/120+0+0", "none"}));
  ASSERT_TRUE(server.ChangeMonitors({"--setmonitor", "RIGHT", "320/80x480/120+320+0", "none"}));
  X11Overlay overlay(server.Display(), RECT{});
  EXPECT_NE(overlay.Handle(), nullptr);
  EXPECT_FALSE(overlay.FollowMonitor("MIDDLE"));
  EXPECT_EQ(overlay.GetError(), "there is no monitor \"MIDDLE\"");
  ASSERT_TRUE(overlay.FollowMonitor("RIGHT")) << overlay.GetError();
  EXPECT_TRUE(Covers(overlay, {320, 0, 640, 480}));
  ASSERT_TRUE(overlay.Present(TestFrame(320, 480, kGreen).Get()));
  EXPECT_EQ(desk.Look({0, 0, 640, 480}).At(320, 479), 0x00C000U);
  EXPECT_EQ(desk.Look({0, 0, 640, 480}).At(319, 479), kDesk);

  ASSERT_TRUE(server.ChangeMonitors({"--delmonitor", "RIGHT"}));
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {}); }));
  EXPECT_FALSE(overlay.Present(TestFrame(320, 480, kGreen).Get()));
  EXPECT_EQ(overlay.GetError(), "there is no monitor \"RIGHT\"");
  EXPECT_EQ(desk.Look({0, 0, 640, 480}).At(320, 479), kDesk);

  ASSERT_TRUE(server.ChangeMonitors({"--setmonitor", "RIGHT", "200/80x100/120+400+90", "none"}));
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {400, 90, 600, 190}); }));
  ASSERT_TRUE(overlay.Present(TestFrame(200, 100, kGreen).Get())) << overlay.GetError();
  const Screenshot shot = desk.Look({0, 0, 640, 480});
  EXPECT_EQ(shot.At(599, 189), 0x00C000U);
  EXPECT_EQ(shot.At(600, 189), kDesk);
}

TEST(X11Overlay, FollowsTheModeOfTheMainMonitor) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  X11Overlay overlay(server.Display(), RECT{});
  ASSERT_TRUE(overlay.FollowMonitor("")) << overlay.GetError();
  EXPECT_TRUE(Covers(overlay, {0, 0, 640, 480}));
  ASSERT_TRUE(server.ChangeMonitors(
      {"--newmode", "small", "10", "320", "328", "360", "400", "240", "241", "245", "250"}));
  ASSERT_TRUE(server.ChangeMonitors({"--addmode", "screen", "small"}));
  ASSERT_TRUE(server.ChangeMonitors({"--output", "screen", "--mode", "small"}));
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {0, 0, 320, 240}); }));
}

TEST(X11Overlay, GoesWhereItIsToldWhereAWindowCanBeUntilItIsDestroyed) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  X11Overlay overlay(server.Display(), {10, 10, 60, 60});
  EXPECT_FALSE(overlay.SetScreenRect({0, 0, 70'000, 10}));
  EXPECT_EQ(overlay.GetError(), "no X11 window can cover that rectangle");
  EXPECT_TRUE(Covers(overlay, {10, 10, 60, 60}));
  EXPECT_TRUE(overlay.SetScreenRect({-20, -10, 700, 500}));
  EXPECT_TRUE(Covers(overlay, {-20, -10, 700, 500}));
  EXPECT_TRUE(overlay.SetScreenRect({}));
  EXPECT_FALSE(overlay.Present(TestFrame(50, 50, kGreen).Get()));
  EXPECT_EQ(overlay.GetError(), "there is nothing to cover");
  const X11Overlay tooLarge(server.Display(), {0, 0, 70'000, 10});
  EXPECT_EQ(tooLarge.Handle(), nullptr);

  XClient stranger(server.Display());
  stranger.DestroyWindow(overlay.WindowId());
  EXPECT_FALSE(overlay.SetScreenRect({0, 0, 10, 10}));
  EXPECT_NE(overlay.GetError().find("was destroyed"), std::string::npos) << overlay.GetError();
  EXPECT_FALSE(overlay.Present(TestFrame(10, 10, kGreen).Get()));
}

TEST(X11Overlay, StaysBelowTheHostsToolbarAndRaisesIt) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient host(server.Display());
  const xcb_window_t toolbar = host.ShowWindow({0, 0, 640, 40}, 0xFFFF00);
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  EXPECT_FALSE(overlay.KeepBelow(0x1234));
  ASSERT_TRUE(overlay.KeepBelow(toolbar)) << overlay.GetError();
  const TestFrame frame(640, 480, kGreen);
  ASSERT_TRUE(overlay.Present(frame.Get()));
  host.ShowWindow({0, 0, 100, 100}, kDesk);
  ASSERT_TRUE(overlay.Present(frame.Get()));
  ASSERT_TRUE(overlay.Present(frame.Get()));
  const Screenshot shot = host.Look({0, 0, 640, 480});
  EXPECT_EQ(shot.At(50, 20), 0xFFFF00U);
  EXPECT_EQ(shot.At(50, 70), 0x00C000U);
  ASSERT_TRUE(server.Click(50, 20));
  EXPECT_EQ(host.WaitForPress(), toolbar);
  // As a window manager does that takes the tool into a frame of its own.
  host.LowerWindow(toolbar);
  EXPECT_TRUE(Eventually([&] {
    return overlay.Present(frame.Get()) && host.Look({50, 20, 51, 21}).At(50, 20) == 0xFFFF00;
  })) << overlay.GetError();
}

TEST(X11Overlay, TwoOverlaysLeaveEachOtherInPeace) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  XClient desk(server.Display());
  X11Overlay first(server.Display(), {0, 0, 640, 480});
  X11Overlay second(server.Display(), {0, 0, 640, 480});
  const TestFrame green(640, 480, kGreen);
  const TestFrame blue(640, 480, 0xFF0000FF);
  for (int round = 0; round < 5; ++round) {
    ASSERT_TRUE(first.Present(green.Get()));
    ASSERT_TRUE(second.Present(blue.Get()));
  }
  EXPECT_EQ(desk.Look({0, 0, 1, 1}).At(0, 0), 0x0000FFU);
}

TEST(X11Overlay, ADisplayWithout32BitVisualsIsRefusedInWords) {
  XServer server({"-screen", "0", "640x480x24", "-extension", "Composite"});
  NEEDS_X_SERVER(server);
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  EXPECT_EQ(overlay.Handle(), nullptr);
  EXPECT_EQ(overlay.WindowId(), 0U);
  EXPECT_EQ(overlay.GetError(), "the X display has no 32-bit visual for windows with alpha");
  EXPECT_FALSE(overlay.SetClickThrough(true));
  EXPECT_FALSE(overlay.FollowMonitor(""));
}
