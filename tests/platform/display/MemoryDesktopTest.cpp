#include <gtest/gtest.h>
#include <parchlet/Display.h>
#include <parchlet/MemoryWindow.h>

#include <future>

#include "platform/display/CurrentDisplay.h"
#include "platform/Platform.h"

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kBlack = 0xFF000000;
constexpr std::uint32_t kGrey = 0xFF808080;
constexpr RECT kScreen = {0, 0, 1920, 1080};

// Pushes a frame of one premultiplied colour.
void Push(const MemoryWindow& window, SIZE size, std::uint32_t color) {
  const auto count = static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy);
  PixelSection bitmap{size.cx, size.cy, AllocatePixels(count)};
  std::fill_n(bitmap.pixels.get(), count, color);
  DeviceContext context;
  SelectObject(&context, &bitmap);
  BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  POINT origin = {0, 0};
  ASSERT_EQ(UpdateLayeredWindow(window.Handle(), nullptr, &origin, &size, &context, &origin, 0,
                                &blend, ULW_ALPHA),
            1);
}

Pixels Capture(const RECT& area) {
  Pixels pixels(static_cast<std::size_t>(area.right - area.left) *
                    static_cast<std::size_t>(area.bottom - area.top),
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
  Push(*high, {3, 1}, 0x80800000);
  Push(low, {3, 1}, 0xFF00FF00);
  // Half red over grey: 0x80 + 0x80 * 127 / 255 in red, 0x80 * 127 / 255 in the others.
  EXPECT_EQ(Capture({0, 0, 6, 1}),
            (Pixels{kGrey, 0xFF00FF00, 0xFF807F00, 0xFF807F00, 0xFFC04040, kGrey}));
  high.reset();
  EXPECT_EQ(Capture({3, 0, 5, 1}), (Pixels{0xFF00FF00, kGrey}));
}

TEST_F(MemoryDesktopTest, AWindowShowsNoMoreThanItsFrameAndItsRectangle) {
  MemoryWindow window({-2, -2, 3, 3});
  Push(window, {5, 5}, 0xFF0000FF);
  EXPECT_EQ(Capture({2, 2, 4, 3}), (Pixels{0xFF0000FF, kBlack}));
  window.SetScreenRect({0, 0, 1, 1});
  EXPECT_EQ(Capture({0, 0, 2, 1}), (Pixels{0xFF0000FF, kBlack}));
  window.SetScreenRect({5, 5, 0, 0});
  EXPECT_EQ(Capture({0, 0, 6, 6}), Pixels(36, kBlack));
}

TEST_F(MemoryDesktopTest, IsCapturedWhileWindowsComeAndGo) {
  auto coming = std::async(std::launch::async, [] {
    for (int i = 0; i < 50; ++i) {
      const MemoryWindow window({0, 0, 8, 8});
      Push(window, {8, 8}, 0xFF0000FF);
    }
  });
  for (int i = 0; i < 50; ++i) {
    for (const std::uint32_t pixel : Capture({0, 0, 8, 8})) {
      ASSERT_TRUE(pixel == kBlack || pixel == 0xFF0000FF);
    }
  }
  coming.get();
}

}  // namespace
