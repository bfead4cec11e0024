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

std::vector<std::string> OptionsOf(bool sharesMemory) {
  std::vector<std::string> options = {"-screen", "0", "640x480x24"};
  if (!sharesMemory) {
    options.insert(options.end(), {"-extension", "MIT-SHM"});
  }
  return options;
}

const std::string kLost = "the connection to the X server is lost";

}  // namespace

TEST_P(ServerLoss, AServerKilledMidStrokeLeavesTheHostAliveWithFalseResults) {
  XServer server(OptionsOf(GetParam()));
  NEEDS_X_SERVER(server);
  XClient client(server.Display());
  X11Window window(server.Display(), client.ShowAlphaWindow({50, 40, 250, 140}));
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
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

// Half a frame is on its way through the connection then: writing the rest raises a signal that
// ends a host which does not expect it.
TEST_P(ServerLoss, AServerKilledWhileFramesFlowEndsTheFlowAndNotTheHost) {
  XServer server(OptionsOf(GetParam()));
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

TEST(ServerLossOfADisplay, AServerThatIsGoneBeforeTheFirstFrameIsNoAbortEither) {
  XServer server({"-screen", "0", "640x480x24"});
  NEEDS_X_SERVER(server);
  const std::string name = server.Display();
  X11Overlay overlay(name, {0, 0, 640, 480});
  server.Kill();
  EXPECT_FALSE(overlay.KeepBelow(1));
  EXPECT_FALSE(overlay.SetScreenRect({0, 0, 10, 10}));
  EXPECT_FALSE(overlay.Present(TestFrame(640, 480, 0xFF0000FF).Get()));
  EXPECT_EQ(overlay.GetError(), kLost);
  const X11Overlay late(name, {0, 0, 640, 480});
  EXPECT_EQ(late.Handle(), nullptr);
}
