// The place and the size of a window are its host's, whatever frame is on its way.
#include <random>

#include "support/Whiteboard.h"

namespace {

constexpr int kMoves = 1500;  // and as many resizes

// Each between the engine's look at the window and its push, on one thread: Wine's own push writes
// a place back that it read a moment before, so that threads would tell about Wine.
TEST(HostMovesTest, AWindowStaysWhereItsHostPutsItWhileAFrameIsOnItsWay) {
  Whiteboard board(200, 100);
  RECT put = {0, 0, 200, 100};
  std::mt19937 random(1);
  const auto any = [&random](int count) { return static_cast<LONG>(random() % count); };
  int moved = 0;
  board.window.BeforePush([&] {
    const POINT at = moved % 2 == 0 ? POINT{any(400), any(400)} : POINT{put.left, put.top};
    const SIZE size = moved % 2 == 0 ? SIZE{put.right - put.left, put.bottom - put.top}
                                     : SIZE{1 + any(300), 1 + any(150)};
    put = {at.x, at.y, at.x + size.cx, at.y + size.cy};
    board.window.SetScreenRect(put);
    ++moved;
  });
  int putBack = 0;
  for (int i = 0; i < 2 * kMoves; ++i) {
    board.engine.SetPageBackgroundColor(0xFF000000U + static_cast<unsigned>(i));  // a new frame
    ParchletTestAccess::Refresh(board.engine);
    RECT found{};
    GetWindowRect(board.window.Handle(), &found);
    putBack += found == put ? 0 : 1;
  }
  EXPECT_EQ(0, putBack);
  EXPECT_EQ(2 * kMoves, moved);
}

}  // namespace
