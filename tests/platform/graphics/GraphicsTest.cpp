#include "platform/graphics/Graphics.h"

#include <limits>

#include "platform/graphics/Text.h"
#include "support/DrawnBitmap.h"

namespace {

using Gdiplus::Color;
using Gdiplus::Pen;
using Gdiplus::Point;
using Gdiplus::Status;

constexpr INT kMin = std::numeric_limits<INT>::min();
constexpr INT kMax = std::numeric_limits<INT>::max();

class GraphicsTest : public testing::Test {
 protected:
  GraphicsTest() { on.Clear(Color(kWhite)); }

  // What the call left: red at `inked`, white at `blank`. Clears it away.
  void ExpectInk(Status status, const std::vector<POINT>& inked, POINT blank) {
    EXPECT_EQ(Gdiplus::Ok, status);
    const Frame frame = shown.Show();
    for (const POINT& point : inked) {
      EXPECT_THAT(frame, Shows(point.x, point.y, kRed));
    }
    EXPECT_THAT(frame, Shows(blank.x, blank.y, kWhite));
    on.Clear(Color(kWhite));
  }

  DrawnBitmap shown{120, 80};
  Gdiplus::Graphics& on = shown.graphics;
  const Pen red{Color(kRed), 4};
  const Gdiplus::SolidBrush brush{Color(kRed)};
};

TEST_F(GraphicsTest, FarAwayGeometryPaintsWhatCrossesTheBitmap) {
  constexpr INT kLow = kMin / 2;
  const Point zigzag[] = {{kMin, kMin}, {kMax, 10}, {kMin, 70}, {kMax, kMax}};
  const Point wedge[] = {{30, kMin}, {kMax, 0}, {30, kMax}};
  ExpectInk(on.DrawLine(&red, kMin, 40, kMax, 40), {{0, 40}, {119, 40}}, {60, 44});
  ExpectInk(on.DrawLines(&red, zigzag, 4), {{60, 40}}, {60, 79});
  ExpectInk(on.DrawPolygon(&red, wedge, 3), {{30, 40}}, {100, 40});
  ExpectInk(on.DrawRectangle(&red, 20, kLow, kMax / 2, kMax), {{20, 0}, {20, 79}}, {60, 40});
  ExpectInk(on.DrawEllipse(&red, 50, kLow, 1000, kMax), {{50, 0}, {50, 79}}, {60, 40});
  ExpectInk(on.FillRectangle(&brush, 60, 40, kMax, kMax), {{60, 40}, {119, 79}}, {59, 40});
  ExpectInk(on.FillRectangle(&brush, kMin + 60, -5, kMax, 90), {{58, 0}, {0, 79}}, {59, 0});
}

TEST_F(GraphicsTest, WhatIsNoGeometryFailsAndIsReportedUntilItIsAskedFor) {
  const Point one[] = {{10, 10}};
  EXPECT_NE(Gdiplus::Ok, on.DrawLines(&red, one, 1));
  EXPECT_NE(Gdiplus::Ok, on.DrawRectangle(&red, 10, 10, -1, 5));
  EXPECT_NE(Gdiplus::Ok, on.DrawEllipse(&red, 10, 10, 5, kMin));
  EXPECT_EQ(Gdiplus::InvalidParameter, on.GetLastStatus());
  EXPECT_EQ(Gdiplus::Ok, on.GetLastStatus());
  Gdiplus::Image none(L"/no such picture");
  EXPECT_EQ(Gdiplus::InvalidParameter, none.GetLastStatus());
  EXPECT_EQ(Gdiplus::Ok, none.GetLastStatus());
  EXPECT_EQ(Gdiplus::InvalidParameter, Gdiplus::FontFamily(nullptr).GetLastStatus());
  constexpr auto kCentre = static_cast<Gdiplus::StringAlignment>(1);
  EXPECT_EQ(Gdiplus::InvalidParameter, Gdiplus::StringFormat().SetAlignment(kCentre));
  EXPECT_EQ(Gdiplus::InvalidParameter, Gdiplus::StringFormat().SetLineAlignment(kCentre));
}

}  // namespace
