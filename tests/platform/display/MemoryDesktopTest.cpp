#include <parchlet/Display.h>

#include <future>

#include "platform/display/CurrentDisplay.h"
#include "support/Whiteboard.h"

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kGrey = 0xFF808080;
constexpr RECT kScreen = {0, 0, 1920, 1080};

// Pushes a frame of one colour and of the window's size.
void Push(const MemoryWindow& window, int width, int height, std::uint32_t color) {
  AnnotationPage page;
  page.InitPage(window.Handle(), PageOf(width, height, color), nullptr);
  EXPECT_NE(0, page.UpdateLayeredContent());
}

Pixels Capture(const RECT& area) {
  Pixels pixels(static_cast<std::size_t>((area.right - area.left) * (area.bottom - area.top)),
                0x12345678);
  EXPECT_TRUE(CurrentDisplay().Capture(area, pixels.data()));
  return pixels;
}

class MemoryDesktopTest : public testing::Test {
 protected:
  ~MemoryDesktopTest() override { SetMemoryDesktop({{"MEMORY-1", kScreen}}, nullptr, {}); }
};

TEST_F(MemoryDesktopTest, ShowsItsBackgroundOpaqueAndBlackAroundIt) {
  const Pixels background = {0x00000001, 0x80000002, 0xFF000003, 0x00000004};
  SetMemoryDesktop({{"A", {-10, -10, 10, 10}}}, background.data(), {-1, -1, 1, 1});
  EXPECT_EQ(Capture({-2, -1, 1, 1}),
            (Pixels{kBlack, 0xFF000001, 0xFF000002, kBlack, 0xFF000003, 0xFF000004}));
  EXPECT_EQ(Capture({0, 0, 2, 2}), (Pixels{0xFF000004, kBlack, kBlack, kBlack}));
  EXPECT_EQ(CurrentDisplay().GetMonitors()[0].name, "A");
}

TEST_F(MemoryDesktopTest, BlendsEveryWindowInTheOrderInWhichTheyWereMade) {
  const Pixels background(100, kGrey);
  SetMemoryDesktop({{"A", kScreen}}, background.data(), {0, 0, 10, 10});
  const MemoryWindow low({1, 0, 4, 1});
  auto high = std::make_unique<MemoryWindow>(RECT{2, 0, 5, 1});
  EXPECT_EQ(Capture({0, 0, 6, 1}), Pixels(6, kGrey)) << "nothing has been pushed yet";
  Push(*high, 3, 1, 0x80FF0000);
  Push(low, 3, 1, kGreen);
  // Half red over grey: 0x80 + 0x80 * 127 / 255 in red, 0x80 * 127 / 255 in the others.
  EXPECT_EQ(Capture({0, 0, 6, 1}),
            (Pixels{kGrey, kGreen, 0xFF807F00, 0xFF807F00, 0xFFC04040, kGrey}));
  high.reset();
  EXPECT_EQ(Capture({3, 0, 5, 1}), (Pixels{kGreen, kGrey}));
}

TEST_F(MemoryDesktopTest, AWindowShowsNoMoreThanItsFrameAndItsRectangle) {
  MemoryWindow window({-2, -2, 3, 3});
  Push(window, 5, 5, kBlue);
  EXPECT_EQ(Capture({2, 2, 4, 3}), (Pixels{kBlue, kBlack}));
  window.SetScreenRect({0, 0, 1, 1});
  EXPECT_EQ(Capture({0, 0, 2, 1}), (Pixels{kBlue, kBlack}));
  window.SetScreenRect({5, 5, 0, 0});
  EXPECT_EQ(Capture({0, 0, 6, 6}), Pixels(36, kBlack));
}

TEST_F(MemoryDesktopTest, IsCapturedWhileWindowsComeAndGo) {
  auto coming = std::async(std::launch::async, [] {
    for (int i = 0; i < 50; ++i) {
      const MemoryWindow window({0, 0, 8, 8});
      Push(window, 8, 8, kBlue);
    }
  });
  for (int i = 0; i < 50; ++i) {
    for (const std::uint32_t pixel : Capture({0, 0, 8, 8})) {
      ASSERT_TRUE(pixel == kBlack || pixel == kBlue);
    }
  }
  coming.get();
}

}  // namespace
