#include <atomic>
#include <memory>
#include <thread>

#include <parchlet/LayeredWindow.h>

#include "support/Tireless.h"
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

TEST(WindowThreadsTest, UnregisteringWaitsForAPresentUnderWay) {
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

TEST(WindowThreadsTest, WindowsMayGoWhileTheyArePushedTo) {
  Parchlet engine;
  const Tireless painter([&engine] { ParchletTestAccess::Refresh(engine); });
  engine.NewDoc("ada", "doc");
  for (int round = 0; round < 200; ++round) {
    const std::string page = std::to_string(round);
    MemoryWindow window({0, 0, 20, 10});
    EXPECT_EQ(1, engine.NewPage("doc", page, "ada", window.Handle(), PageOf(20, 10)));
    if (round % 2 == 0) {
      EXPECT_TRUE(window.WaitForPresent(1, 60'000));
    }
    window.SetScreenRect({0, 0, 1 + round % 40, 10});
  }
}

TEST(WindowThreadsTest, EnginesDoNotMeet) {
  const auto work = [](unsigned seed) {
    MemoryWindow window({0, 0, 20, 10});
    Parchlet engine;
    engine.Init();
    engine.NewDoc("ada", "doc");
    engine.NewPage("doc", "page", "ada", window.Handle(), PageOf(20, 10));
    for (LONG i = 0; i < 200; ++i) {
      engine.StartDrawing("doc", "page", {i % 20, static_cast<LONG>(seed)});
      engine.MoveDrawing({10, 5});
      engine.EndDrawing();
      engine.GetPagePtr("doc", "missing");
    }
    EXPECT_TRUE(window.WaitForPresent(1, 60'000));
  };
  std::thread other(work, 1);
  work(2);
  other.join();
}

}  // namespace
