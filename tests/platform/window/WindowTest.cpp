#include "platform/window/Window.h"

#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>

#include <parchlet/LayeredWindow.h>

#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

// Keeps what the last frame was like, and does what it is told.
class HostWindow final : public LayeredWindow {
 public:
  explicit HostWindow(RECT area) : area(area), handle(RegisterLayeredWindow(*this)) {}
  ~HostWindow() { UnregisterLayeredWindow(handle); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  RECT GetScreenRect() const override { return area; }
  bool Present(const LayeredFrame& pushed) override {
    frame = pushed;
    changed.assign(pushed.changed, pushed.changed + pushed.changedCount);
    if (throws) {
      throw std::runtime_error("the display is gone");
    }
    return shows;
  }

  RECT area;
  HWND handle;
  bool shows = true;
  bool throws = false;
  LayeredFrame frame{};
  std::vector<RECT> changed;
};

TEST(LayeredWindowTest, AFrameSaysItsSizeStrideAndChanges) {
  HostWindow window({7, 8, 67, 48});
  AnnotationPage page;
  page.InitPage(window.handle, PageOf(60, 40), nullptr);
  EXPECT_EQ(1, page.UpdateLayeredContent());
  EXPECT_EQ(60, window.frame.width);
  EXPECT_EQ(40, window.frame.height);
  EXPECT_GE(window.frame.stride, 60 * 4);
  EXPECT_THAT(window.changed, testing::ElementsAre(RECT{0, 0, 60, 40}));
  window.area = {0, 0, 20, 90};
  EXPECT_EQ(1, page.UpdateLayeredContent());
  EXPECT_THAT(window.changed, testing::ElementsAre(RECT{0, 0, 20, 90}));
}

TEST(LayeredWindowTest, AFrameThatTheWindowDidNotTakeIsPushedWhole) {
  HostWindow window({0, 0, 60, 40});
  AnnotationPage page;
  page.InitPage(window.handle, PageOf(60, 40), nullptr);
  const auto whole = testing::ElementsAre(RECT{0, 0, 60, 40});
  page.UpdateLayeredContent();
  page.UpdateLayeredContent();
  EXPECT_THAT(window.changed, testing::IsEmpty()) << "a frame like the one before";
  window.shows = false;
  EXPECT_EQ(0, page.UpdateLayeredContent());
  window.throws = true;
  EXPECT_THROW(page.UpdateLayeredContent(), std::runtime_error);
  EXPECT_THAT(window.changed, whole);
  window.throws = false;
  window.shows = true;
  EXPECT_EQ(1, page.UpdateLayeredContent());
  EXPECT_THAT(window.changed, whole);
}

TEST(LayeredWindowTest, AWindowThatFailsOrThrowsCostsItsFrameAlone) {
  HostWindow window({0, 0, 60, 40});
  Parchlet engine;
  engine.NewDoc("ada", "doc");
  engine.NewPage("doc", "page", "ada", window.handle, PageOf(60, 40));
  window.shows = false;
  EXPECT_EQ(0, ParchletTestAccess::Refresh(engine));
  window.throws = true;
  EXPECT_EQ(0, ParchletTestAccess::Refresh(engine));
  window.throws = false;
  window.shows = true;
  EXPECT_EQ(1, ParchletTestAccess::Refresh(engine));
}

TEST(LayeredWindowTest, AHandleLivesFromRegisteringToUnregistering) {
  std::set<HWND> handles;
  for (int i = 0; i < 50; ++i) {
    HostWindow window({1, 2, 3, 4});
    EXPECT_TRUE(handles.insert(window.handle).second) << "never given out twice";
    EXPECT_NE(0, IsWindow(window.handle));
    RECT area{};
    EXPECT_NE(0, GetWindowRect(window.handle, &area));
    EXPECT_EQ((RECT{1, 2, 3, 4}), area);
    UnregisterLayeredWindow(window.handle);
    UnregisterLayeredWindow(window.handle);
    EXPECT_EQ(0, IsWindow(window.handle));
    EXPECT_EQ(nullptr, GetDC(window.handle));
    area = {9, 9, 9, 9};
    EXPECT_EQ(0, GetWindowRect(window.handle, &area));
    EXPECT_EQ((RECT{9, 9, 9, 9}), area) << "nothing is written";
  }
  EXPECT_EQ(0, IsWindow(nullptr));
  UnregisterLayeredWindow(nullptr);
}

TEST(LayeredWindowTest, OneWindowMayBeRegisteredTwice) {
  HostWindow window({0, 0, 60, 40});
  HWND const second = RegisterLayeredWindow(window);
  EXPECT_NE(window.handle, second);
  UnregisterLayeredWindow(window.handle);
  EXPECT_NE(0, IsWindow(second));
  UnregisterLayeredWindow(second);
}

TEST(LayeredWindowTest, PastTheSurfaceAFrameIsTransparent) {
  constexpr CurrentAnnotPageSize kSize = {60, 40};
  PaintedPage painted(kSize);
  painted.page.AddAnnotation(Mark("m").Box(kSize, 50, 30, 10, kRed).Release(), true);
  painted.window.SetScreenRect({0, 0, 80, 50});
  for (int push = 0; push < 2; ++push) {
    const Frame frame = painted.Paint();
    EXPECT_EQ((RECT{0, 0, 60, 40}), frame.InkBox(kClear));
    EXPECT_THAT(frame, Shows(59, 39, kRed));
  }
  painted.window.SetScreenRect({0, 0, 55, 90});
  EXPECT_THAT(painted.Paint(), Shows(54, 39, kRed));
  painted.window.SetScreenRect({0, 0, 55, 35});
  EXPECT_THAT(painted.Paint(), Shows(54, 34, kRed));
}

TEST(MemoryWindowTest, AFreshWindowShowsNothingYet) {
  MemoryWindow window({0, 0, 60, 40});
  EXPECT_EQ(0U, window.PresentCount());
  EXPECT_EQ(0, window.CopyFrame().width);
  EXPECT_TRUE(window.CopyFrame().pixels.empty());
  EXPECT_TRUE(window.WaitForPresent(0, 0));
  EXPECT_FALSE(window.WaitForPresent(1, 0));
  EXPECT_FALSE(window.WaitForPresent(1, -5));
}

}  // namespace
