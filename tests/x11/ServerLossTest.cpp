// The X server dies; the host does not.
#include <atomic>

#include <parchlet/x11/X11Display.h>
#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

#include "x11/QuietPipe.h"
#include "x11/X11Test.h"

namespace {

using ServerLoss = X11Ways;

const std::string kLost = "the connection to the X server is lost";

TEST_P(ServerLoss, AServerKilledMidStrokeLeavesTheHostAliveWithFalseResults) {
  X11Window window(server.Display(), client->ShowAlphaWindow({50, 40, 250, 140}));
  X11Overlay overlay(server.Display(), {0, 0, 640, 480});
  X11Overlay unshown(server.Display(), {0, 0, 640, 480});
  X11Display display(server.Display());
  Board board(overlay.Handle(), 640, 480);
  board.engine.StartDrawing("doc", "page", {10, 10});
  ASSERT_TRUE(Push(overlay, 640, 480, kGreen)) << overlay.GetError();

  server.Kill();
  board.engine.MoveDrawing({200, 100});
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_FALSE(Push(overlay, 640, 480, kBlue));
    EXPECT_FALSE(Push(window, 200, 100, kBlue));
    EXPECT_EQ(overlay.GetError(), kLost);
    EXPECT_EQ(window.GetError(), kLost);
  }
  EXPECT_FALSE(unshown.KeepBelow(1));
  EXPECT_FALSE(unshown.SetScreenRect({0, 0, 10, 10}));
  EXPECT_FALSE(Push(unshown, 640, 480, kBlue));
  EXPECT_EQ(unshown.GetError(), kLost);
  EXPECT_FALSE(overlay.SetClickThrough(true));
  EXPECT_FALSE(overlay.FollowMonitor(""));
  EXPECT_FALSE(overlay.IsBlended());
  EXPECT_EQ(overlay.GetScreenRect().right, 0);
  EXPECT_EQ(window.GetScreenRect().right, 0);
  std::vector<std::uint32_t> pixels(100);
  EXPECT_FALSE(display.Capture({0, 0, 10, 10}, pixels.data()));
  EXPECT_EQ(display.GetError(), kLost);
  EXPECT_TRUE(display.GetMonitors().empty());
  EXPECT_EQ(board.engine.EndDrawing(), 1);
}

TEST_P(ServerLoss, AServerKilledWhileFramesFlowEndsTheFlowAndNotTheHost) {
  X11Window window(server.Display(), client->ShowAlphaWindow({0, 0, 2000, 1500}));
  std::atomic<int> frameCount = 0;
  std::thread pusher([&] {
    while (Push(window, 2000, 1500, kBlue)) {
      ++frameCount;
    }
  });
  EXPECT_TRUE(Eventually([&] { return frameCount > 3; }));
  server.Kill();
  pusher.join();
  EXPECT_EQ(window.GetError(), kLost);
}

WITH_AND_WITHOUT_SHARED_MEMORY(ServerLoss);

bool IsBlocked() {
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  return sigismember(&blocked, SIGPIPE) == 1;
}

TEST(QuietPipe, LeavesTheHostsSignalsAsTheyWere) {
  sigset_t pipeSignal;
  sigemptyset(&pipeSignal);
  sigaddset(&pipeSignal, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipeSignal, nullptr);
  raise(SIGPIPE);
  { const QuietPipe quiet; }
  EXPECT_TRUE(IsBlocked());
  const timespec now = {0, 0};
  EXPECT_EQ(sigtimedwait(&pipeSignal, nullptr, &now), SIGPIPE) << "the host's own is still to come";
  pthread_sigmask(SIG_UNBLOCK, &pipeSignal, nullptr);
  { const QuietPipe quiet; }
  EXPECT_FALSE(IsBlocked());
}

}  // namespace
