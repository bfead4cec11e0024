#include "platform/window/Window.h"

#include <functional>
#include <stdexcept>

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

  RECT GetScreenRect() const override {
    return isLost ? throw std::runtime_error("there is no screen") : area;
  }
  bool Present(const LayeredFrame& pushed) override {
    frame = pushed;
    changed.assign(pushed.changed, pushed.changed + pushed.changedCount);
    return show();
  }

  RECT area;
  HWND handle;
  std::function<bool()> show = [] { return true; };
  bool isLost = false;
  LayeredFrame frame{};
  std::vector<RECT> changed;
};

TEST(LayeredWindowTest, AFrameSaysWhatChangedAndIsPushedWholeUntilTheWindowTakesIt) {
  HostWindow window({7, 8, 67, 48});
  AnnotationPage page;
  page.InitPage(window.handle, PageOf(60, 40), nullptr);
  for (const RECT& area : {RECT{0, 0, 20, 90}, RECT{7, 8, 67, 48}}) {
    window.area = area;
    EXPECT_EQ(1, page.UpdateLayeredContent());
    EXPECT_EQ(area.right - area.left, window.frame.width);
    EXPECT_EQ(area.bottom - area.top, window.frame.height);
    EXPECT_GE(window.frame.stride, window.frame.width * 4);
    const RECT all = {0, 0, window.frame.width, window.frame.height};
    EXPECT_THAT(window.changed, testing::ElementsAre(all));
  }
  page.UpdateLayeredContent();
  EXPECT_THAT(window.changed, testing::IsEmpty()) << "a frame like the one before";
  const auto whole = testing::ElementsAre(RECT{0, 0, 60, 40});
  window.show = [] { return false; };
  EXPECT_EQ(0, page.UpdateLayeredContent());
  window.show = []() -> bool { throw std::runtime_error("the display is gone"); };
  EXPECT_EQ(0, page.UpdateLayeredContent());
  EXPECT_THAT(window.changed, whole);
  window.isLost = true;
  EXPECT_EQ(0, page.UpdateLayeredContent());
  EXPECT_EQ(0, page.SavePage(L"/tmp/never.png", window.handle));
  window.isLost = false;
  window.show = [] { return true; };
  const RECT usual = window.area;
  for (const RECT& tooLarge :
       {RECT{0, 0, 40'000, 1}, RECT{INT32_MIN, 0, INT32_MAX, 9}, RECT{0, 0, 32'767, 32'767}}) {
    window.area = tooLarge;
    EXPECT_EQ(0, page.UpdateLayeredContent());
  }
  window.area = usual;
  EXPECT_EQ(1, page.UpdateLayeredContent());
  EXPECT_THAT(window.changed, whole);
}

}  // namespace
