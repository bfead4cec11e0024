#include <atomic>
#include <memory>
#include <thread>

#include <parchlet/LayeredWindow.h>

#include "support/Whiteboard.h"

namespace {

// A window whose Present stays inside until it is let go.
class SlowWindow final : public LayeredWindow {
 public:
  RECT GetScreenRect() const override { return {0, 0, 20, 10}; }
  bool Present(const LayeredFrame& frame) override {
    isIn = true;
    isIn.notify_all();
    mayLeave.wait(false);
    lastPixel = frame.pixels[19];
    isIn = false;
    return true;
  }

  std::atomic<bool> isIn{false};
  std::atomic<bool> mayLeave{false};
  std::uint32_t lastPixel = 0;
};

TEST(SlowWindowTest, UnregisteringWaitsForAPresentUnderWay) {
  for (int round = 0; round < 20; ++round) {
    auto window = std::make_unique<SlowWindow>();
    HWND const handle = RegisterLayeredWindow(*window);
    AnnotationPage page;
    page.InitPage(handle, PageOf(20, 10), nullptr);
    std::thread painter([&] { page.UpdateLayeredContent(); });
    window->isIn.wait(false);
    std::thread release([&] {
      std::this_thread::yield();
      window->mayLeave = true;
      window->mayLeave.notify_all();
    });
    UnregisterLayeredWindow(handle);
    EXPECT_FALSE(window->isIn);
    EXPECT_EQ(kWhite, window->lastPixel);
    release.join();
    window.reset();
    EXPECT_EQ(0, page.UpdateLayeredContent());
    painter.join();
  }
}

}  // namespace
