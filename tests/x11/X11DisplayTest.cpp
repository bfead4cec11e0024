#include <parchlet/x11/X11Display.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

#include "support/PictureFile.h"
#include "support/TemporaryFolder.h"
#include "x11/Board.h"
#include "x11/XClient.h"
#include "x11/XServer.h"

namespace {

constexpr std::uint32_t kDesk = 0x3060C0;

// A display given to the engine for as long as a test runs.
class UsedDisplay {
 public:
  explicit UsedDisplay(X11Display& display) { SetDisplay(&display); }
  ~UsedDisplay() { SetDisplay(nullptr); }
  UsedDisplay(const UsedDisplay&) = delete;
  UsedDisplay& operator=(const UsedDisplay&) = delete;
};

std::vector<std::uint32_t> WithoutAlpha(std::vector<std::uint32_t> pixels) {
  for (std::uint32_t& pixel : pixels) {
    pixel &= 0xFFFFFF;
  }
  return pixels;
}

// A few windows, one of which is drawn on.
class Desktop {
 public:
  explicit Desktop(const std::string& display)
      : client(display), overlay(display, {0, 0, 640, 480}), board(overlay.Handle(), 640, 480) {
    client.ShowWindow({50, 60, 330, 200}, kDesk);
    client.ShowWindow({300, 150, 620, 450}, 0xE0D080);
    board.DrawLine({20, 30}, {600, 440}, 0xC0FF0040, 12);
  }

  XClient client;
  X11Overlay overlay;
  Board board;
};

}  // namespace

class X11DisplayWays : public testing::TestWithParam<bool> {};

TEST_P(X11DisplayWays, CaptureAndExportsEqualAScreenshot) {
  XServer server(ScreenOptions("640x480", GetParam()));
  NEEDS_X_SERVER(server);
  ASSERT_TRUE(server.StartCompositor());
  Desktop desktop(server.Display());
  ASSERT_TRUE(desktop.client.WaitForColor(310, 235, 0xF5314E)) << "the ink over the upper window";
  const RECT part = {200, 100, 451, 300};
  const Screenshot whole = desktop.client.Look({0, 0, 640, 480});
  const Screenshot shot = desktop.client.Look(part);

  X11Display display(server.Display());
  std::vector<std::uint32_t> captured(shot.pixels.size());
  ASSERT_TRUE(display.Capture(part, captured.data())) << display.GetError();
  EXPECT_EQ(WithoutAlpha(captured), shot.pixels);

  const UsedDisplay used(display);
  const TemporaryFolder folder;
  const std::string path = folder.File("screen.bmp");
  ASSERT_EQ(desktop.board.Engine().SavePage("doc", "page", path, std::wstring(L"screen")), 1);
  EXPECT_EQ(WithoutAlpha(ReadPicture(path).pixels), whole.pixels);
  X11Window target(server.Display(), desktop.client.ShowAlphaWindow(part));
  ASSERT_TRUE(desktop.client.WaitForColor(310, 235, 0xF5314E));
  ASSERT_EQ(desktop.board.Engine().SavePage("doc", "page", path, target.Handle()), 1);
  EXPECT_EQ(WithoutAlpha(ReadPicture(path).pixels), desktop.client.Look(part).pixels);
}

INSTANTIATE_TEST_SUITE_P(SharedMemory, X11DisplayWays, testing::Values(true));
INSTANTIATE_TEST_SUITE_P(Connection, X11DisplayWays, testing::Values(false));

TEST(X11Display, TellsTheMonitorsByTheirNames) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  X11Display display(server.Display());
  std::vector<DisplayMonitor> monitors = display.GetMonitors();
  ASSERT_EQ(monitors.size(), 1U) << display.GetError();
  EXPECT_EQ(monitors[0].name, "screen");
  EXPECT_EQ(monitors[0].area.right, 640);

  ASSERT_TRUE(server.ChangeMonitors({"--setmonitor", "屏幕", "320/80x480/120+0+0", "none"}));
  ASSERT_TRUE(server.ChangeMonitors(
      {"--setmonitor", "a monitor whose name is so long that exports could not be told it",
       "320/80x380/120+320+100", "none"}));
  monitors = display.GetMonitors();
  const auto named = [&monitors](const std::string& name) {
    return std::find_if(monitors.begin(), monitors.end(),
                        [&](const DisplayMonitor& monitor) { return monitor.name == name; });
  };
  ASSERT_NE(named("屏幕"), monitors.end());
  EXPECT_EQ(named("屏幕")->area.right, 320);
  ASSERT_NE(named("a monitor whose name is so long"), monitors.end());
  EXPECT_EQ(named("a monitor whose name is so long")->area.top, 100);
}

TEST(X11Display, SaysWhatItCannotCapture) {
  XServer server(ScreenOptions("640x480"));
  XServer shallow({"-screen", "0", "640x480x16"});
  NEEDS_X_SERVER(server);
  NEEDS_X_SERVER(shallow);
  std::vector<std::uint32_t> pixels(100);
  X11Display display(server.Display());
  EXPECT_FALSE(display.Capture({635, 0, 645, 10}, pixels.data()));
  EXPECT_EQ(display.GetError(), "the X server refused to show its screen: BadMatch");
  EXPECT_TRUE(display.Capture({630, 0, 640, 10}, pixels.data()));
  EXPECT_EQ(display.GetError(), "");
  X11Display sixteenBits(shallow.Display());
  EXPECT_FALSE(sixteenBits.Capture({0, 0, 10, 10}, pixels.data()));
  EXPECT_NE(sixteenBits.GetError().find("the screen has depth 16"), std::string::npos);
  X11Display nowhere(":65000");
  EXPECT_TRUE(nowhere.GetMonitors().empty());
  EXPECT_FALSE(nowhere.Capture({0, 0, 10, 10}, pixels.data()));
  EXPECT_EQ(nowhere.GetError(), "cannot open the X display \":65000\"");
}
