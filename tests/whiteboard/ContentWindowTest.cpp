#include <whiteboard/ContentWindow.h>

#include <gtest/gtest.h>

#include <vector>

#include "x11/TestFrame.h"

namespace {

constexpr int kWidth = 4;
constexpr int kHeight = 6;

// Keeps what it was told to show.
class Screen final : public LayeredWindow {
 public:
  RECT GetScreenRect() const override { return {0, 0, kWidth, kHeight}; }
  bool Present(const LayeredFrame& frame) override {
    changed.assign(frame.changed, frame.changed + frame.changedCount);
    pixels.assign(frame.pixels, frame.pixels + kWidth * kHeight);
    ++count;
    return true;
  }

  std::vector<RECT> changed;
  std::vector<std::uint32_t> pixels;
  int count = 0;
};

whiteboard::Raster Content(std::uint32_t color) {
  return {kWidth, kHeight, std::vector<std::uint32_t>(kWidth * kHeight, color)};
}

}  // namespace

TEST(ContentWindow, BlendsFramesOverTheContentAndOverPaperWithoutOne) {
  Screen screen;
  whiteboard::ContentWindow window(screen);
  ASSERT_TRUE(window.Present(TestFrame(kWidth, kHeight, 0x80800000).Get()));
  EXPECT_EQ(screen.pixels.front(), 0xFFFF7F7FU);
  window.SetContent(Content(0xFF0000FF));
  EXPECT_EQ(screen.count, 2) << "shown without another frame";
  EXPECT_EQ(screen.pixels.back(), 0xFF80007FU);
  window.SetContent({1, 1, {0xFF000000}});
  EXPECT_EQ(screen.count, 2) << "of another size";
}

TEST(ContentWindow, PassesOnWhatDiffersAlone) {
  Screen screen;
  whiteboard::ContentWindow window(screen);
  std::vector<std::uint32_t> pixels(kWidth * kHeight, 0);
  const RECT whole = {0, 0, kWidth, kHeight};
  const LayeredFrame frame = {pixels.data(), kWidth, kHeight, kWidth * 4, &whole, 1};
  window.Present(frame);
  ASSERT_EQ(screen.changed.size(), 1U) << "the first frame is all new";
  window.Present(frame);
  EXPECT_TRUE(screen.changed.empty());
  EXPECT_EQ(screen.count, 2) << "what was uncovered is repaired then";
  pixels[kWidth * 2 + 1] = 0xFFFF0000;
  pixels[kWidth * 4] = 0xFFFF0000;
  window.Present(frame);
  ASSERT_EQ(screen.changed.size(), 1U);
  EXPECT_EQ(screen.changed[0].top, 2);
  EXPECT_EQ(screen.changed[0].bottom, 5);
  EXPECT_EQ(screen.pixels[kWidth * 2 + 1], 0xFFFF0000U);
}
