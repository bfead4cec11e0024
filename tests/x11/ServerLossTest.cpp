#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <parchlet/x11/X11Display.h>
#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

#include "x11/Board.h"
#include "x11/TestFrame.h"
#include "x11/XClient.h"
#include "x11/XServer.h"

namespace {

class ServerLoss : public testing::TestWithParam<bool> {};

const std::string kLost = "the connection to the X server is lost";

}  // namespace

TEST_P(ServerLoss, AServerKilledMidStrokeLeavesTheHostAliveWithFalseResults) {
  XServer server(ScreenOptions("640x480", GetParam()));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  X11Window window(server.Display(), client.ShowAlphaWindow({50, 40, 250, 140}));
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  X11Overlay unshown(server.Display(), {0, 0, 640, 480});
  X11Display display(server.Display());
  Board onWindow(window.Handle(), 200, 100);
  Board onOverlay(overlay.Handle(), 640, 480);
  onOverlay.Engine().StartDrawing("doc", "page", {10, 10});
  onOverlay.Engine().MoveDrawing({100, 100});
  ASSERT_TRUE(overlay.Present(TestFrame(640, 480, 0xFF00FF00).Get())) << overlay.GetError();

  server.Kill();
  onOverlay.Engine().MoveDrawing({200, 100});
  const TestFrame frame(640, 480, 0xFF0000FF);
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_FALSE(overlay.Present(frame.Get()));
    EXPECT_FALSE(window.Present(frame.Get()));
    EXPECT_EQ(overlay.GetError(), kLost);
    EXPECT_EQ(window.GetError(), kLost);
  }
  EXPECT_FALSE(unshown.KeepBelow(1));
  EXPECT_FALSE(unshown.SetScreenRect({0, 0, 10, 10}));
  EXPECT_FALSE(unshown.Present(frame.Get()));
  EXPECT_EQ(unshown.GetError(), kLost);
  EXPECT_EQ(X11Overlay(":65000", {0, 0, 640, 480}).Handle(), nullptr);
  EXPECT_FALSE(overlay.SetClickThrough(true));
  EXPECT_FALSE(overlay.FollowMonitor(""));
  EXPECT_FALSE(overlay.IsBlended());
  EXPECT_EQ(overlay.GetScreenRect().right, 0);
  EXPECT_EQ(window.GetScreenRect().right, 0);
  std::vector<std::uint32_t> pixels(100);
  EXPECT_FALSE(display.Capture({0, 0, 10, 10}, pixels.data()));
  EXPECT_EQ(display.GetError(), kLost);
  EXPECT_TRUE(display.GetMonitors().empty());
  EXPECT_EQ(onOverlay.Engine().EndDrawing(), 1);
}

TEST_P(ServerLoss, AServerKilledWhileFramesFlowEndsTheFlowAndNotTheHost) {
  XServer server(ScreenOptions("640x480", GetParam()));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  X11Window window(server.Display(), client.ShowAlphaWindow({0, 0, 2000, 1500}));
  std::atomic<int> frameCount = 0;
  std::thread pusher([&] {
    const TestFrame frame(2000, 1500, 0xFF0000FF);
    while (window.Present(frame.Get())) {
      ++frameCount;
    }
  });
  EXPECT_TRUE(Eventually([&] { return frameCount > 3; }));
  server.Kill();
  pusher.join();
  EXPECT_EQ(window.GetError(), kLost);
}

INSTANTIATE_TEST_SUITE_P(SharedMemory, ServerLoss, testing::Values(true));
INSTANTIATE_TEST_SUITE_P(Connection, ServerLoss, testing::Values(false));
