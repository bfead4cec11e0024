#include "platform/graphics/Graphics.h"

#include <functional>
#include <limits>
#include <random>

#include "page/DibSection.h"
#include "support/Frame.h"

namespace {

using Gdiplus::Color;
using Gdiplus::Pen;
using Gdiplus::Point;

constexpr INT kMin = std::numeric_limits<INT>::min();
constexpr INT kMax = std::numeric_limits<INT>::max();

// A white bitmap in a memory context, and what draws on it.
class GraphicsTest : public testing::Test {
 protected:
  static constexpr int kWidth = 120;
  static constexpr int kHeight = 80;

  GraphicsTest() : dc(CreateCompatibleDC(&proof)) {
    section.Create(dc, kWidth, kHeight, 32, false);
    before = SelectObject(dc, section.GetBitmap());
    graphics = std::make_unique<Gdiplus::Graphics>(dc);
    graphics->Clear(Color(kWhite));
  }
  ~GraphicsTest() override {
    graphics.reset();
    SelectObject(dc, before);
    section.Release();
    DeleteDC(dc);
  }

  Frame Shown() {
    graphics->Flush();
    const PixelView view = GetPixels(dc);
    return Frame(MemoryFrame{
        kWidth, kHeight, {view.pixels, view.pixels + std::ptrdiff_t{kWidth} * kHeight}});
  }

  DeviceContext proof;
  HDC dc;
  DibSection section;
  HGDIOBJ before = nullptr;
  std::unique_ptr<Gdiplus::Graphics> graphics;
  const Pen red{Color(kRed), 4};
  const Gdiplus::SolidBrush brush{Color(kRed)};
};

TEST_F(GraphicsTest, FarAwayGeometryPaintsWhatCrossesTheBitmap) {
  const struct {
    const char* what;
    std::function<void()> draw;
    std::vector<POINT> inked, blank;
  } cases[] = {
      {"a line across the whole number range",
       [&] { graphics->DrawLine(&red, kMin, 40, kMax, 40); },
       {{0, 40}, {119, 40}},
       {{60, 44}}},
      {"a line down it",
       [&] { graphics->DrawLine(&red, 30, kMax, 30, kMin); },
       {{30, 0}, {30, 79}},
       {{34, 40}}},
      {"a diagonal through the origin",
       [&] { graphics->DrawLine(&red, -kMax, -kMax, kMax, kMax); },
       {{0, 0}, {79, 79}},
       {{90, 40}}},
      {"a line that stays outside",
       [&] { graphics->DrawLine(&red, kMin, -10, kMax, -3); },
       {},
       {{60, 0}}},
      {"a rectangle's near edge",
       [&] { graphics->DrawRectangle(&red, 20, kMin / 2, kMax / 2, kMax); },
       {{20, 0}, {20, 79}},
       {{60, 40}}},
      {"a rectangle whose far corner overflows",
       [&] { graphics->DrawRectangle(&red, 20, 20, kMax, kMax); },
       {{20, 79}, {119, 20}},
       {{60, 40}, {10, 10}}},
      {"a rectangle that ends right before the bitmap",
       [&] { graphics->DrawRectangle(&red, kMin, kMin, kMax, kMax); },
       {{0, 0}},
       {{2, 2}, {60, 0}}},
      {"a rectangle around everything",
       [&] { graphics->DrawRectangle(&red, kMin / 2, kMin / 2, kMax, kMax); },
       {},
       {{0, 0}, {60, 40}}},
      {"an ellipse's flank, as good as straight",
       [&] { graphics->DrawEllipse(&red, 50, kMin / 2, 1000, kMax); },
       {{50, 0}, {50, 79}},
       {{60, 40}}},
      {"an ellipse around everything",
       [&] { graphics->DrawEllipse(&red, kMin / 2, kMin / 2, kMax, kMax); },
       {},
       {{60, 40}, {119, 79}}},
      {"a zigzag between the corners of the range",
       [&] {
         const Point zigzag[] = {{kMin, kMin}, {kMax, 10}, {kMin, 70}, {kMax, kMax}};
         graphics->DrawLines(&red, zigzag, 4);
       },
       {{60, 40}},
       {}},
      {"a polygon whose closing edge alone is near",
       [&] {
         const Point far[] = {{30, kMin}, {kMax, 0}, {30, kMax}};
         graphics->DrawPolygon(&red, far, 3);
       },
       {{30, 40}},
       {{100, 40}}},
      {"a filled quarter of the plane",
       [&] { graphics->FillRectangle(&brush, 60, 40, kMax, kMax); },
       {{60, 40}, {119, 79}},
       {{59, 40}, {60, 39}}},
      {"a fill from far away",
       [&] { graphics->FillRectangle(&brush, kMin, kMin, kMax, kMax); },
       {},
       {{0, 0}}},
      {"a fill of the left half",
       [&] { graphics->FillRectangle(&brush, kMin + 60, -5, kMax, 90); },
       {{58, 0}, {0, 79}},
       {{59, 0}}},
  };
  for (const auto& [what, draw, inked, blank] : cases) {
    SCOPED_TRACE(what);
    graphics->Clear(Color(kWhite));
    draw();
    const Frame frame = Shown();
    for (const POINT& point : inked) {
      EXPECT_THAT(frame, Shows(point.x, point.y, kRed));
    }
    for (const POINT& point : blank) {
      EXPECT_THAT(frame, Shows(point.x, point.y, kWhite));
    }
    EXPECT_EQ(Gdiplus::Ok, graphics->GetLastStatus());
  }
}

TEST_F(GraphicsTest, EmptyGeometryPaintsNothing) {
  const Point one[] = {{10, 10}};
  graphics->FillRectangle(&brush, 10, 10, 0, 5);
  graphics->FillRectangle(&brush, 10, 10, 5, kMin);
  EXPECT_EQ(Gdiplus::Ok, graphics->GetLastStatus());
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, one, 1));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, one, 0));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, one, kMin));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, nullptr, 5));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawPolygon(nullptr, one, 1));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawRectangle(&red, 10, 10, -1, 5));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawEllipse(&red, 10, 10, 5, kMin));
  EXPECT_THAT(Shown(), IsAll(kWhite));
}

TEST_F(GraphicsTest, AFailureIsReportedUntilItIsAskedFor) {
  graphics->DrawLines(&red, nullptr, 2);
  graphics->DrawLine(&red, 0, 0, 5, 5);
  EXPECT_EQ(Gdiplus::InvalidParameter, graphics->GetLastStatus());
  EXPECT_EQ(Gdiplus::Ok, graphics->GetLastStatus());
}

TEST_F(GraphicsTest, AContextWithoutPixelsCannotBeDrawnOn) {
  HDC bare = CreateCompatibleDC(&proof);
  {
    Gdiplus::Graphics nothing(bare);
    EXPECT_NE(Gdiplus::Ok, nothing.GetLastStatus());
    EXPECT_NE(Gdiplus::Ok, nothing.Clear(Color(kWhite)));
    EXPECT_NE(Gdiplus::Ok, nothing.DrawLine(&red, 0, 0, 5, 5));
    EXPECT_NE(Gdiplus::Ok, nothing.FillRectangle(&brush, 0, 0, 5, 5));
  }
  DeleteDC(bare);
  EXPECT_EQ(nullptr, CreateCompatibleDC(nullptr));
}

TEST_F(GraphicsTest, ASpikeIsMitredUpToTheLimitAndBevelledPastIt) {
  const auto reach = [&](INT halfBase) {
    graphics->Clear(Color(kWhite));
    const Point spike[] = {{20, 40 - halfBase}, {70, 40}, {20, 40 + halfBase}};
    graphics->DrawLines(&red, spike, 3);
    return Shown().InkBox().right - 1 - 70;
  };
  // Half the pen's width over the sine of half the angle, 2 / sin(atan(10 / 50)) = 10.2 pixels.
  EXPECT_NEAR(10.2, reach(10), 1);
  // 2 / sin(atan(4 / 50)) would be 25 pixels, more than ten times the half width.
  EXPECT_LE(reach(4), 3);
}

TEST_F(GraphicsTest, HalfTransparentInkIsLaidOverOncePerStroke) {
  const Pen half(Color(0x80000000), 10);
  const Point crossing[] = {{10, 40}, {110, 40}, {60, 10}, {60, 70}};
  graphics->DrawLines(&half, crossing, 4);
  const Frame frame = Shown();
  EXPECT_EQ(frame.At(20, 40), frame.At(60, 40)) << "a stroke that crosses itself is one area";
  graphics->DrawLine(&half, 10, 40, 110, 40);
  EXPECT_LT(Shown().At(20, 40), frame.At(20, 40)) << "a second stroke lies over the first";
}

TEST_F(GraphicsTest, AnyMixOfEdgeValuesIsDrawn) {
  const INT values[] = {kMin, kMin + 1, -100'000, -1, 0, 1, 40, 79, 120, 32'768, kMax - 1, kMax};
  std::mt19937 random(7);
  const auto any = [&] { return values[random() % std::size(values)]; };
  for (int round = 0; round < 3000; ++round) {
    const Pen pen(Color(static_cast<std::uint32_t>(random())),
                  static_cast<float>(1 + random() % 30));
    const INT a = any();
    const INT b = any();
    const INT c = any();
    const INT d = any();
    const Point corners[] = {{a, b}, {c, d}, {any(), any()}, {a, b}, {a, b}, {any(), any()}};
    switch (random() % 5) {
      case 0:
        graphics->DrawRectangle(&pen, a, b, c, d);
        break;
      case 1:
        graphics->DrawEllipse(&pen, a, b, c, d);
        break;
      case 2:
        graphics->FillRectangle(&brush, a, b, c, d);
        break;
      case 3:
        graphics->DrawLines(&pen, corners, static_cast<INT>(2 + random() % 5));
        break;
      default:
        graphics->DrawPolygon(&pen, corners, static_cast<INT>(2 + random() % 5));
    }
  }
  for (const std::uint32_t pixel : Shown().pixels) {
    ASSERT_EQ(0xFFU, pixel >> 24) << "over an opaque ground everything stays opaque";
  }
}

}  // namespace
