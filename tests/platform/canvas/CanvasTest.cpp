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

constexpr int kWidth = 333;
constexpr int kHeight = 277;

using Pixels = std::vector<std::uint32_t>;

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

// On a list of commands or by a rasterizer, which take pictures in their own ways.
template <class Target, class Picture>
void Draw(Target& on, const Mark& mark, const Picture& picture) {
  if (mark.kind <= 1) {
    on.Stroke(mark.points, mark.kind == 1, mark.width, mark.argb);
  } else if (mark.kind == 2) {
    on.StrokeEllipse(mark.box, mark.width, mark.argb);
  } else if (mark.kind == 3) {
    on.Fill(mark.box, mark.argb);
  } else {
    on.DrawPicture(picture, mark.picture.view.Bounds(), mark.box);
  }
}

// What a page shows when each mark is painted in one go.
Pixels Whole(const Page& page, int width = kWidth, int height = kHeight) {
  Pixels pixels(static_cast<std::size_t>(width) * height);
  raster::Rasterizer rasterizer;
  rasterizer.SetTarget({pixels.data(), width, height, width}, {0, 0, width, height});
  rasterizer.Clear(page.background);
  for (const Mark& mark : page.marks) {
    Draw(rasterizer, mark, mark.picture.view);
  }
  return pixels;
}

struct Screen {
  explicit Screen(int width = kWidth, int height = kHeight,
                  std::shared_ptr<WorkerPool> pool = std::make_shared<WorkerPool>(1))
      : pixels(static_cast<std::size_t>(width) * height, 0xDEADBEEF),
        canvas({pixels.data(), width, height, width}, std::move(pool)) {}

  // Returns the areas that may have changed.
  std::vector<PixelRect> Show(const Page& page) {
    canvas.Commands().Clear(page.background);
    return Add(page.marks);
  }
  std::vector<PixelRect> Add(const std::vector<Mark>& marks) {
    for (const Mark& mark : marks) {
      Draw(canvas.Commands(), mark, mark.picture);
    }
    const auto changed = canvas.Finish();
    return {changed.begin(), changed.end()};
  }

  Pixels pixels;
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

  // Draws, goes on with the last mark, or changes any.
  void Edit(Page& page) {
    const int action = page.marks.empty() ? 0 : Below(9);
    const auto any =
        page.marks.begin() + Below(std::max<int>(1, static_cast<int>(page.marks.size())));
    if (action <= 1) {
      page.marks.push_back(NewMark());
    } else if (action <= 3) {
      std::vector<GridPoint>& points = page.marks.back().points;
      points.push_back({points.back().x / 2 + Below(width) / 2, points.back().y / 2 + Below(9)});
    } else if (action == 4) {
      page.marks.erase(any);
    } else if (action == 5) {
      for (GridPoint& point : any->points) {
        point = {point.x / 2 + 3, point.y / 2 + 1};
      }
    } else if (action == 6) {
      any->argb ^= 1U << Below(32);
    } else if (action == 7) {
      std::swap(*any, page.marks.front());
    } else if (Below(8) == 0) {
      page.background = Random();
    }
  }

 private:
  SharedPicture NewPicture() {
    const int side = 1 + Below(40);
    auto pixels = std::make_shared<Pixels>();
    for (int i = 0; i < 2 * side * side; ++i) {
      const auto alpha = static_cast<std::uint32_t>(Below(256));
      pixels->push_back(alpha << 24 | alpha / 2 << 16 | alpha);
    }
    return {pixels, {pixels->data(), 2 * side, side}};
  }

  std::mt19937 generator;
  int width, height;
};

TEST(CanvasTest, AnySequenceOfEditsShowsWhatPaintingInOneGoShows) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    Editor editor(seed, kWidth, kHeight);
    Page page;
    Screen screen;
    for (int step = 0; step < 120; ++step) {
      editor.Edit(page);
      Pixels told = screen.pixels;
      for (const PixelRect& area : screen.Show(page)) {
        for (int y = area.top; y < area.bottom; ++y) {
          const auto row = screen.pixels.begin() + std::ptrdiff_t{y} * kWidth;
          std::copy(row + area.left, row + area.right,
                    told.begin() + (row - screen.pixels.begin()) + area.left);
        }
      }
      ASSERT_EQ(screen.pixels, Whole(page)) << "seed " << seed << ", step " << step;
      ASSERT_EQ(screen.pixels, told) << "more has changed than was told";
    }
    EXPECT_TRUE(screen.Show(page).empty()) << "nothing has changed";
  }
}

TEST(CanvasTest, APointAddedToALongPathChangesOnlyTheTilesAroundIt) {
  Page page = {0xFFFFFFFF, {{0, {}, {}, 6, 0xFF102030, {}}}};
  for (int x = 0; x < 250; ++x) {
    page.marks[0].points.push_back({10 + x, 20 + x % 3});
  }
  Screen screen;
  screen.Show(page);
  page.marks[0].points.push_back({262, 24});
  EXPECT_EQ(screen.Show(page), (std::vector<PixelRect>{{192, 0, 320, 64}}));
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
    const auto width = static_cast<float>(10 + editor.Below(21));
    Page page;
    page.marks.push_back({0, line(first, last), {}, width, 0xFF102030, {}});
    Screen screen;
    screen.Show(page);
    const bool moveFirst = editor.Below(2) == 0;
    page.marks[0].points = moveFirst ? line(near(first), last) : line(first, near(last));
    screen.Show(page);
    ASSERT_EQ(screen.pixels, Whole(page)) << "trial " << trial;
  }
}

TEST(CanvasTest, SurfacesPaintedAtOnceByAPoolShowWhatOneThreadPaints) {
  const auto pool = std::make_shared<WorkerPool>(3);
  const auto paint = [&pool](std::uint32_t seed) {
    Editor editor(seed, 1200, 900);
    Page page;
    Screen shared(1200, 900, pool);
    for (int i = 0; i < 20; ++i) {
      page.marks.push_back(editor.NewMark());
      page.background = editor.Random();
      shared.Show(page);
      EXPECT_EQ(shared.pixels, Whole(page, 1200, 900)) << seed << ", " << i;
    }
  };
  std::thread other(paint, 1);
  paint(2);
  other.join();
}

TEST(CanvasTest, WhatIsDrawnAfterAFinishLiesOnTopOfIt) {
  const Mark below{3, {}, {10, 10, 60, 60}, 1, 0xFF0000FF, {}};
  const Mark above{3, {}, {20, 20, 30, 30}, 1, 0x80FF0000, {}};
  Screen screen;
  screen.Show({0xFFFFFFFF, {below}});
  EXPECT_FALSE(screen.Add({above}).empty());
  EXPECT_EQ(screen.pixels, Whole({0xFFFFFFFF, {below, above}}));
  screen.Show({0xFFFFFFFF, {above}});
  EXPECT_EQ(screen.pixels, Whole({0xFFFFFFFF, {above}})) << "a frame of its own after a Clear";
}

}  // namespace
