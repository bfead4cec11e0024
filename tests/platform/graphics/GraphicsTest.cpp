#include "platform/graphics/Graphics.h"

#include <limits>

#include "page/DibSection.h"
#include "support/Frame.h"

namespace {

using Gdiplus::Color;
using Gdiplus::Pen;
using Gdiplus::Point;
using Gdiplus::Status;

constexpr INT kMin = std::numeric_limits<INT>::min();
constexpr INT kMax = std::numeric_limits<INT>::max();

// A white bitmap of 120 x 80 pixels, and what draws on it.
class GraphicsTest : public testing::Test {
 protected:
  GraphicsTest() {
    section.Create(dc, 120, 80, 32, false);
    SelectObject(dc, section.GetBitmap());
    graphics = std::make_unique<Gdiplus::Graphics>(dc);
    graphics->Clear(Color(kWhite));
  }
  ~GraphicsTest() override {
    graphics.reset();
    DeleteDC(dc);
  }

  Frame Shown() {
    graphics->Flush();
    const std::uint32_t* pixels = GetPixels(dc).pixels;
    return Frame({120, 80, {pixels, pixels + std::ptrdiff_t{120} * 80}});
  }

  // What the call left: red here, white there. Clears it away.
  void ExpectInk(Status status, const std::vector<POINT>& inked, const std::vector<POINT>& blank) {
    EXPECT_EQ(Gdiplus::Ok, status);
    const Frame frame = Shown();
    for (const POINT& point : inked) {
      EXPECT_THAT(frame, Shows(point.x, point.y, kRed));
    }
    for (const POINT& point : blank) {
      EXPECT_THAT(frame, Shows(point.x, point.y, kWhite));
    }
    graphics->Clear(Color(kWhite));
  }

  DeviceContext proof;
  HDC dc = CreateCompatibleDC(&proof);
  DibSection section;
  std::unique_ptr<Gdiplus::Graphics> graphics;
  const Pen red{Color(kRed), 4};
  const Gdiplus::SolidBrush brush{Color(kRed)};
};

TEST_F(GraphicsTest, FarAwayGeometryPaintsWhatCrossesTheBitmap) {
  Gdiplus::Graphics& on = *graphics;
  constexpr INT kLow = kMin / 2;
  const Point zigzag[] = {{kMin, kMin}, {kMax, 10}, {kMin, 70}, {kMax, kMax}};
  const Point wedge[] = {{30, kMin}, {kMax, 0}, {30, kMax}};
  ExpectInk(on.DrawLine(&red, kMin, 40, kMax, 40), {{0, 40}, {119, 40}}, {{60, 44}});
  ExpectInk(on.DrawLine(&red, 30, kMax, 30, kMin), {{30, 0}, {30, 79}}, {{34, 40}});
  ExpectInk(on.DrawLine(&red, -kMax, -kMax, kMax, kMax), {{0, 0}, {79, 79}}, {{90, 40}});
  ExpectInk(on.DrawLine(&red, kMin, -10, kMax, -3), {}, {{60, 0}});
  ExpectInk(on.DrawLines(&red, zigzag, 4), {{60, 40}}, {});
  ExpectInk(on.DrawPolygon(&red, wedge, 3), {{30, 40}}, {{100, 40}});
  ExpectInk(on.DrawRectangle(&red, 20, kLow, kMax / 2, kMax), {{20, 0}, {20, 79}}, {{60, 40}});
  ExpectInk(on.DrawRectangle(&red, 20, 20, kMax, kMax), {{20, 79}, {119, 20}}, {{60, 40}});
  ExpectInk(on.DrawRectangle(&red, kMin, kMin, kMax, kMax), {{0, 0}}, {{2, 2}, {60, 0}});
  ExpectInk(on.DrawRectangle(&red, kLow, kLow, kMax, kMax), {}, {{0, 0}, {60, 40}});
  ExpectInk(on.DrawEllipse(&red, 50, kLow, 1000, kMax), {{50, 0}, {50, 79}}, {{60, 40}});
  ExpectInk(on.DrawEllipse(&red, kLow, kLow, kMax, kMax), {}, {{60, 40}, {119, 79}});
  ExpectInk(on.FillRectangle(&brush, 60, 40, kMax, kMax), {{60, 40}, {119, 79}}, {{59, 40}});
  ExpectInk(on.FillRectangle(&brush, kMin, kMin, kMax, kMax), {}, {{0, 0}});
  ExpectInk(on.FillRectangle(&brush, kMin + 60, -5, kMax, 90), {{58, 0}, {0, 79}}, {{59, 0}});
  ExpectInk(on.FillRectangle(&brush, 10, 10, 5, kMin), {}, {{10, 10}});
}

TEST_F(GraphicsTest, WhatIsNoGeometryFailsAndIsReportedUntilItIsAskedFor) {
  const Point one[] = {{10, 10}};
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, one, 1));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, one, kMin));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawLines(&red, nullptr, 5));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawRectangle(&red, 10, 10, -1, 5));
  EXPECT_NE(Gdiplus::Ok, graphics->DrawEllipse(&red, 10, 10, 5, kMin));
  EXPECT_EQ(Gdiplus::Ok, graphics->DrawLine(&red, 0, -9, 5, -9));
  EXPECT_THAT(Shown(), IsAll(kWhite));
  EXPECT_EQ(Gdiplus::InvalidParameter, graphics->GetLastStatus());
  EXPECT_EQ(Gdiplus::Ok, graphics->GetLastStatus());
}

}  // namespace
