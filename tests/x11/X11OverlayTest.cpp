#include <parchlet/x11/X11Overlay.h>

#include "x11/X11Test.h"

namespace {

class X11OverlayTest : public XTest {};

bool Covers(const X11Overlay& overlay, const RECT& area) {
  const RECT is = overlay.GetScreenRect();
  return is.left == area.left && is.top == area.top && is.right == area.right &&
         is.bottom == area.bottom;
}

TEST_F(X11OverlayTest, ClickThroughLetsTheWindowBelowHaveTheClick) {
  XClient host(server.Display());
  const xcb_window_t below = client->ShowWindow({100, 100, 300, 300}, kDesk);
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  EXPECT_FALSE(overlay.IsBlended());
  ASSERT_TRUE(Push(overlay, 640, 480, 0)) << overlay.GetError();
  host.HearButtons(overlay.WindowId());
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(server.Click(200, 200));
    EXPECT_TRUE(Eventually([&] { return host.NextPress() == overlay.WindowId(); }));
    ASSERT_TRUE(overlay.SetClickThrough(true)) << overlay.GetError();
    ASSERT_TRUE(server.Click(200, 200));
    EXPECT_TRUE(Eventually([&] { return client->NextPress() == below; }));
    ASSERT_TRUE(overlay.SetClickThrough(false)) << overlay.GetError();
  }
}

// Beside a window manager, which leaves it where it is.
TEST_F(X11OverlayTest, FollowsItsMonitorHidesWithItAndComesBack) {
  ASSERT_TRUE(server.StartWindowManager());
  client->ShowWindow({0, 0, 640, 480}, kDesk);
  ASSERT_EQ(server.Run("xrandr --setmonitor RIGHT 320/80x480/120+320+0 none"), 0);
  X11Overlay overlay(server.Display(), RECT{});
  EXPECT_NE(overlay.Handle(), nullptr);
  EXPECT_FALSE(overlay.FollowMonitor("MIDDLE"));
  EXPECT_EQ(overlay.GetError(), "there is no monitor \"MIDDLE\"");
  ASSERT_TRUE(overlay.FollowMonitor("RIGHT")) << overlay.GetError();
  EXPECT_TRUE(Covers(overlay, {320, 0, 640, 480}));
  ASSERT_TRUE(Push(overlay, 320, 480, kGreen));
  EXPECT_EQ(client->ColorAt(320, 479), 0x00C000U);
  EXPECT_EQ(client->ColorAt(319, 479), kDesk);

  ASSERT_EQ(server.Run("xrandr --delmonitor RIGHT"), 0);
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {}); }));
  EXPECT_FALSE(Push(overlay, 320, 480, kGreen));
  EXPECT_EQ(overlay.GetError(), "there is no monitor \"RIGHT\"");
  EXPECT_EQ(client->ColorAt(320, 479), kDesk);

  ASSERT_EQ(server.Run("xrandr --setmonitor RIGHT 200/80x100/120+400+90 none"), 0);
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {400, 90, 600, 190}); }));
  ASSERT_TRUE(Push(overlay, 200, 100, kGreen)) << overlay.GetError();
  EXPECT_EQ(client->ColorAt(599, 189), 0x00C000U);
  EXPECT_EQ(client->ColorAt(600, 189), kDesk);

  ASSERT_TRUE(overlay.FollowMonitor("")) << overlay.GetError();
  ASSERT_EQ(server.Run("xrandr --delmonitor RIGHT"), 0);
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {0, 0, 640, 480}); }));
  ASSERT_EQ(server.Run("xrandr --newmode small 10 320 328 360 400 240 241 245 250"), 0);
  ASSERT_EQ(server.Run("xrandr --addmode screen small"), 0);
  ASSERT_EQ(server.Run("xrandr --output screen --mode small"), 0);
  EXPECT_TRUE(Eventually([&] { return Covers(overlay, {0, 0, 320, 240}); }));
}

TEST_F(X11OverlayTest, GoesWhereItIsToldWhereAWindowCanBe) {
  X11Overlay overlay(server.Display(), {10, 10, 60, 60});
  EXPECT_FALSE(overlay.SetScreenRect({0, 0, 70'000, 10}));
  EXPECT_EQ(overlay.GetError(), "no X11 window can cover that rectangle");
  EXPECT_TRUE(Covers(overlay, {10, 10, 60, 60}));
  EXPECT_TRUE(overlay.SetScreenRect({-20, -10, 700, 500}));
  EXPECT_TRUE(Covers(overlay, {-20, -10, 700, 500}));
  EXPECT_TRUE(overlay.SetScreenRect({}));
  EXPECT_FALSE(Push(overlay, 50, 50, kGreen));
  EXPECT_EQ(overlay.GetError(), "there is nothing to cover");
  EXPECT_EQ(X11Overlay(server.Display(), {0, 0, 70'000, 10}).Handle(), nullptr);
}

TEST_F(X11OverlayTest, StaysOverNewWindowsBelowTheHostsToolbarAndOtherOverlays) {
  const xcb_window_t toolbar = client->ShowWindow({0, 0, 640, 40}, 0xFFFF00);
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  X11Overlay other(server.Display(), {0, 400, 640, 480});
  EXPECT_FALSE(overlay.KeepBelow(0x1234));
  ASSERT_TRUE(overlay.KeepBelow(toolbar)) << overlay.GetError();
  ASSERT_TRUE(Push(overlay, 640, 480, kGreen));
  client->ShowWindow({0, 0, 100, 100}, kDesk);
  ASSERT_TRUE(Push(overlay, 640, 480, kGreen) && Push(other, 640, 80, kBlue));
  ASSERT_TRUE(Push(overlay, 640, 480, kGreen));
  EXPECT_EQ(client->ColorAt(50, 20), 0xFFFF00U);
  EXPECT_EQ(client->ColorAt(50, 70), 0x00C000U);
  EXPECT_EQ(client->ColorAt(50, 470), 0x0000FFU);
  // As a window manager does that takes the tool into a frame of its own.
  client->LowerWindow(toolbar);
  EXPECT_TRUE(Eventually([&] {
    return Push(overlay, 640, 480, kGreen) && client->ColorAt(50, 20) == 0xFFFF00;
  })) << overlay.GetError();
}

TEST_F(X11OverlayTest, ADisplayWithout32BitVisualsIsRefusedInWords) {
  const XServer flat(kSmallScreen + " -extension Composite");
  X11Overlay overlay(flat.Display(), {0, 0, 640, 480});
  EXPECT_EQ(overlay.Handle(), nullptr);
  EXPECT_EQ(overlay.WindowId(), 0U);
  EXPECT_EQ(overlay.GetError(), "the X display has no 32-bit visual for windows with alpha");
  EXPECT_FALSE(overlay.SetClickThrough(true));
  EXPECT_FALSE(overlay.FollowMonitor(""));
}

}  // namespace
