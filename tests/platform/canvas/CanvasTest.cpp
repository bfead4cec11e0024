// A frame painted in pieces shows what the same frame painted from scratch shows.
#include "platform/canvas/Canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace {

using canvas::Canvas;
using canvas::SharedPicture;
using raster::GridPoint;
using raster::PixelRect;

struct Mark {
  int kind = 0;
  std::vector<GridPoint> points;
  PixelRect box;
  float width = 1;
  std::uint32_t argb = 0;
  SharedPicture picture;
};

struct Page {
  std::uint32_t background = 0xFFFFFFFF;
  std::vector<Mark> marks;
};

class Screen {
 public:
  Screen(int width, int height, std::shared_ptr<WorkerPool> pool = std::make_shared<WorkerPool>(1))
      : pixels(static_cast<std::size_t>(width) * height, 0xDEADBEEF),
        canvas({pixels.data(), width, height, width}, std::move(pool)) {}

  std::vector<PixelRect> Show(const Page& page) {
    canvas.Commands().Clear(page.background);
    for (const Mark& mark : page.marks) {
      Draw(mark);
    }
    return Finish();
  }
  void Draw(const Mark& mark) {
    canvas::CommandList& commands = canvas.Commands();
    if (mark.kind <= 1) {
      commands.Stroke(mark.points, mark.kind == 1, mark.width, mark.argb);
    } else if (mark.kind == 2) {
      commands.StrokeEllipse(mark.box, mark.width, mark.argb);
    } else if (mark.kind == 3) {
      commands.Fill(mark.box, mark.argb);
    } else {
      commands.DrawPicture(mark.picture, mark.picture.view.Bounds(), mark.box);
    }
  }
  std::vector<PixelRect> Finish() {
    const auto changed = canvas.Finish();
    return {changed.begin(), changed.end()};
  }
  const std::vector<std::uint32_t>& Pixels() const { return pixels; }

 private:
  std::vector<std::uint32_t> pixels;
  Canvas canvas;
};

class Editor {
 public:
  Editor(std::uint32_t seed, int width, int height)
      : generator(seed), width(width), height(height) {}

  int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(generator); }

  std::uint32_t Random() { return static_cast<std::uint32_t>(generator()); }

  Mark NewMark() {
    Mark mark;
    mark.kind = Below(5);
    mark.width = static_cast<float>(1 + Below(30));
    mark.argb = Random() | (Below(2) == 0 ? 0xFF000000U : 0U);
    const GridPoint corner = {Below(width + 60) - 30, Below(height + 60) - 30};
    mark.box = {corner.x, corner.y, corner.x + Below(200), corner.y + Below(160)};
    GridPoint at = {Below(width), Below(height)};
    for (int count = 1 + Below(60); count > 0; --count) {
      mark.points.push_back(at);
      if (Below(6) == 0) {
        mark.points.push_back(at);
      }
      const int step = 1 + Below(Below(4) == 0 ? 60 : 6);
      at = {at.x + Below(2 * step + 1) - step, at.y + Below(2 * step + 1) - step};
    }
    if (Below(12) == 0) {
      mark.points.push_back({INT32_MAX - Below(3), INT32_MIN + Below(3)});
    }
    if (mark.kind == 4) {
      mark.picture = NewPicture();
    }
    return mark;
  }

  void Edit(Page& page) {
    const auto pick = [&]() -> Mark& {
      return page.marks[static_cast<std::size_t>(Below(static_cast<int>(page.marks.size())))];
    };
    const int action = page.marks.empty() ? 0 : Below(9);
    if (action <= 1) {
      page.marks.push_back(NewMark());
    } else if (action <= 3) {
      const GridPoint last = page.marks.back().points.back();
      page.marks.back().points.push_back({last.x / 2 + Below(width) / 2, last.y / 2 + Below(9)});
    } else if (action == 4) {
      page.marks.erase(page.marks.begin() + Below(static_cast<int>(page.marks.size())));
    } else if (action == 5) {
      for (GridPoint& point : pick().points) {
        point = {point.x / 2 + 3, point.y / 2 + 1};
      }
    } else if (action == 6) {
      pick().argb ^= 1U << Below(32);
    } else if (action == 7) {
      std::swap(pick(), pick());
    } else if (Below(8) == 0) {
      page.background = Random();
    }
  }

 private:
  SharedPicture NewPicture() {
    const int pictureWidth = 1 + Below(40);
    const int pictureHeight = 1 + Below(40);
    auto pixels = std::make_shared<std::vector<std::uint32_t>>();
    for (int i = 0; i < pictureWidth * pictureHeight; ++i) {
      const auto alpha = static_cast<std::uint32_t>(Below(256));
      pixels->push_back(alpha << 24 | alpha / 2 << 16 | alpha);
    }
    return {pixels, {pixels->data(), pictureWidth, pictureHeight}};
  }

  std::mt19937 generator;
  int width, height;
};

constexpr int kWidth = 333;
constexpr int kHeight = 277;

void ExpectChangesWithin(const std::vector<std::uint32_t>& before,
                         const std::vector<std::uint32_t>& after,
                         const std::vector<PixelRect>& areas) {
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const std::size_t i = static_cast<std::size_t>(y) * kWidth + x;
      const bool isTold = std::any_of(areas.begin(), areas.end(), [&](const PixelRect& area) {
        return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
      });
      ASSERT_TRUE(before[i] == after[i] || isTold) << x << ", " << y;
    }
  }
}

void ExpectSame(const std::vector<std::uint32_t>& actual,
                const std::vector<std::uint32_t>& expected) {
  const auto [a, b] = std::mismatch(actual.begin(), actual.end(), expected.begin());
  const auto at = static_cast<int>(a - actual.begin());
  ASSERT_EQ(a, actual.end()) << "at " << at % kWidth << ", " << at / kWidth << ": " << std::hex
                             << *a << " is not " << *b;
}

TEST(CanvasTest, AnySequenceOfEditsShowsWhatPaintingFromScratchShows) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    Editor editor(seed, kWidth, kHeight);
    Page page;
    Screen screen(kWidth, kHeight);
    for (int step = 0; step < 120; ++step) {
      editor.Edit(page);
      const std::vector<std::uint32_t> before = screen.Pixels();
      const std::vector<PixelRect> areas = screen.Show(page);
      Screen fresh(kWidth, kHeight);
      fresh.Show(page);
      ExpectSame(screen.Pixels(), fresh.Pixels());
      ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
      ExpectChangesWithin(before, screen.Pixels(), areas);
    }
    EXPECT_TRUE(screen.Show(page).empty()) << "nothing has changed";
  }
}

// The same lines, each painted in one go.
std::vector<std::uint32_t> PaintLines(const Page& page) {
  std::vector<std::uint32_t> pixels(kWidth * kHeight);
  raster::Rasterizer rasterizer;
  rasterizer.SetTarget({pixels.data(), kWidth, kHeight, kWidth}, {0, 0, kWidth, kHeight});
  rasterizer.Clear(page.background);
  for (const Mark& mark : page.marks) {
    rasterizer.Stroke(mark.points, mark.kind == 1, mark.width, mark.argb);
  }
  return pixels;
}

TEST(CanvasTest, ALineLosesNothingByBeingPaintedPartByPart) {
  for (std::uint32_t seed = 1; seed <= 25; ++seed) {
    Editor editor(seed, kWidth, kHeight);
    Page page;
    while (page.marks.size() < 12) {
      const Mark mark = editor.NewMark();
      if (mark.kind <= 1) {
        page.marks.push_back(mark);
      }
    }
    Screen screen(kWidth, kHeight);
    screen.Show(page);
    ExpectSame(screen.Pixels(), PaintLines(page));
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
  }
}

TEST(CanvasTest, APointAddedToALongPathChangesOnlyTheTilesAroundIt) {
  std::vector<GridPoint> path;
  path.reserve(251);
  for (int x = 0; x < 250; ++x) {
    path.push_back({10 + x, 20 + x % 3});
  }
  canvas::CommandList commands(kWidth, kHeight);
  canvas::TileMap tiles(kWidth, kHeight);
  const auto show = [&] {
    commands.Clear(0xFFFFFFFF);
    commands.Stroke(path, false, 6, 0xFF102030);
    commands.End();
    tiles.Add(commands);
    std::vector<PixelRect> changed;
    tiles.TakeChanged(changed);
    return changed;
  };
  show();
  path.push_back({262, 24});
  EXPECT_EQ(show(), (std::vector<PixelRect>{{192, 0, 320, 64}}));
  EXPECT_TRUE(show().empty());
}

// How a joint is painted depends on two steps to either side of it, however long the pen rests.
TEST(CanvasTest, AStepBehindARestChangesAllThatItShould) {
  Editor editor(1, kWidth, kHeight);
  const auto near = [&](GridPoint at) {
    return GridPoint{at.x + editor.Below(41) - 20, at.y + editor.Below(41) - 20};
  };
  for (int trial = 0; trial < 1000; ++trial) {
    const GridPoint middle = {100 + editor.Below(64), 100 + editor.Below(64)};
    const GridPoint next = near(middle);
    const auto line = [rests = editor.Below(2), &middle, &next](GridPoint first, GridPoint last) {
      std::vector<GridPoint> points = {first};
      points.insert(points.end(), rests == 0 ? 1 : 35, middle);
      points.insert(points.end(), 36, next);
      points.push_back(last);
      return points;
    };
    const GridPoint first = near(middle);
    const GridPoint last = near(next);
    const bool moveFirst = editor.Below(2) == 0;
    const auto width = static_cast<float>(10 + editor.Below(21));
    Page page;
    page.marks.push_back({0, line(first, last), {}, width, 0xFF102030, {}});
    Screen screen(kWidth, kHeight);
    screen.Show(page);
    page.marks[0].points = moveFirst ? line(near(first), last) : line(first, near(last));
    screen.Show(page);
    ExpectSame(screen.Pixels(), PaintLines(page));
    ASSERT_FALSE(HasFailure()) << "trial " << trial;
  }
}

TEST(CanvasTest, SurfacesPaintedAtOnceByAPoolShowWhatOneThreadPaints) {
  const auto pool = std::make_shared<WorkerPool>(3);
  const auto paint = [&pool](std::uint32_t seed) {
    Editor editor(seed, 1200, 900);
    Page page;
    Screen alone(1200, 900);
    Screen shared(1200, 900, pool);
    for (int i = 0; i < 20; ++i) {
      page.marks.push_back(editor.NewMark());
      page.background = editor.Random();
      alone.Show(page);
      shared.Show(page);
      EXPECT_EQ(shared.Pixels(), alone.Pixels()) << seed << ", " << i;
    }
  };
  std::thread other(paint, 1);
  paint(2);
  other.join();
}

TEST(CanvasTest, WhatIsDrawnAfterAFinishLiesOnTopOfIt) {
  Screen screen(kWidth, kHeight);
  Mark below{3, {}, {10, 10, 60, 60}, 1, 0xFF0000FF, {}};
  Mark above{3, {}, {20, 20, 30, 30}, 1, 0x80FF0000, {}};
  screen.Show({0xFFFFFFFF, {below}});
  screen.Draw(above);
  EXPECT_FALSE(screen.Finish().empty());
  Screen whole(kWidth, kHeight);
  whole.Show({0xFFFFFFFF, {below, above}});
  EXPECT_EQ(screen.Pixels(), whole.Pixels());
  // The same call after a Clear is a frame of its own.
  screen.Show({0xFFFFFFFF, {above}});
  EXPECT_EQ(screen.Pixels()[15 * kWidth + 15], 0xFFFFFFFFU);
}

}  // namespace
