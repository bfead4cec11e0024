#include <parchlet/x11/X11Display.h>

#include <algorithm>

#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

#include "support/PictureFile.h"
#include "x11/X11Test.h"

namespace {

class X11DisplayTest : public XTest {};
class X11DisplayWays : public X11Ways {};

std::vector<std::uint32_t> WithoutAlpha(std::vector<std::uint32_t> pixels) {
  for (std::uint32_t& pixel : pixels) {
    pixel &= 0xFFFFFF;
  }
  return pixels;
}

TEST_P(X11DisplayWays, CaptureAndExportsEqualAScreenshotOfInkBlendedOverWindows) {
  ASSERT_TRUE(server.StartCompositor());
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  EXPECT_TRUE(overlay.IsBlended());
  Board board(overlay.Handle(), 640, 480);
  client->ShowWindow({50, 60, 330, 200}, kDesk);
  client->ShowWindow({300, 150, 620, 450}, 0xE0D080);
  board.DrawLine({20, 30}, {600, 440}, 0xC0FF0040);
  const auto showsInk = [&] {
    return IsNear(client->ColorAt(310, 235), 0xF5314E) &&
           IsNear(client->ColorAt(310, 180), 0xD7C87B);
  };
  ASSERT_TRUE(Eventually(showsInk)) << "the ink, and the page over the upper window";
  const RECT part = {200, 100, 451, 300};
  const Screenshot whole = client->Look({0, 0, 640, 480});
  const Screenshot shot = client->Look(part);

  X11Display display(server.Display());
  std::vector<std::uint32_t> captured(shot.pixels.size());
  ASSERT_TRUE(display.Capture(part, captured.data())) << display.GetError();
  EXPECT_EQ(WithoutAlpha(captured), shot.pixels);

  SetDisplay(&display);
  const TemporaryFolder folder;
  const std::string path = folder.File("screen.bmp");
  EXPECT_EQ(board.engine.SavePage("doc", "page", path, std::wstring(L"screen")), 1);
  EXPECT_EQ(WithoutAlpha(ReadPicture(path).pixels), whole.pixels);
  X11Window target(server.Display(), client->ShowAlphaWindow(part));
  EXPECT_TRUE(Eventually(showsInk));
  EXPECT_EQ(board.engine.SavePage("doc", "page", path, target.Handle()), 1);
  EXPECT_EQ(WithoutAlpha(ReadPicture(path).pixels), client->Look(part).pixels);
  SetDisplay(nullptr);
}

WITH_AND_WITHOUT_SHARED_MEMORY(X11DisplayWays);

TEST_F(X11DisplayTest, TellsTheMonitorsByTheirNames) {
  X11Display display(server.Display());
  ASSERT_EQ(display.GetMonitors().size(), 1U) << display.GetError();
  EXPECT_EQ(display.GetMonitors()[0].name, "screen");
  ASSERT_EQ(server.Run("xrandr --setmonitor 屏幕 320/80x480/120+0+0 none"), 0);
  ASSERT_EQ(server.Run("xrandr --setmonitor 'a monitor whose name is so long that exports could "
                       "not be told it' 320/80x380/120+320+100 none"),
            0);
  const std::vector<DisplayMonitor> monitors = display.GetMonitors();
  const auto areaOf = [&monitors](const std::string& name) {
    const auto found = std::find_if(monitors.begin(), monitors.end(),
                                    [&](const auto& monitor) { return monitor.name == name; });
    return found != monitors.end() ? found->area : RECT{};
  };
  EXPECT_EQ(areaOf("屏幕").right, 320);
  EXPECT_EQ(areaOf("a monitor whose name is so long").top, 100);
}

TEST_F(X11DisplayTest, SaysWhatItCannotCapture) {
  const XServer shallow("-screen 0 640x480x16");
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

}  // namespace
