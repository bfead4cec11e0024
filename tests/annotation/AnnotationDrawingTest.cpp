#include <cmath>
#include <numbers>

#include "support/DrawnBitmap.h"
#include "support/ExactCoverage.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using exact::Corner;
using testing::AllOf;
using testing::Each;
using testing::Field;
using testing::SizeIs;
using Points = std::vector<POINT>;

constexpr CurrentAnnotPageSize kSize = {200, 100};
constexpr CurrentAnnotPageSize kWideSize = {400, 50};  // twice as wide, half as high
constexpr int kPen = 6;

constexpr auto kPath = AnnotationSubTypePath;
constexpr auto kLine = AnnotationSubTypeLine;
constexpr auto kEllipse = AnnotationSubTypeEllipse;
constexpr auto kRectangle = AnnotationSubTypeRectangle;
constexpr auto kTriangle = AnnotationSubTypeTriangle;
constexpr auto kRightTriangle = AnnotationSubTypeRightTriangle;
constexpr auto kUnknown = static_cast<AnnotationSubType>(7);

Frame Paint(Mark& mark, CurrentAnnotPageSize size = kSize) {
  PaintedPage painted(size);
  painted.page.AddAnnotation(mark.Release(), true);
  return painted.Paint();
}

// Red ink on white covers the pixels that the polygons cover whole, and none that they do not
// touch. How far the painter may be off is what the rasterizer's own tests say.
void ExpectInked(const Frame& frame, const std::vector<exact::Polygon>& polygons) {
  const std::vector<double> meant = exact::Coverage(polygons, frame.width, frame.height);
  for (std::size_t i = 0; i < meant.size(); ++i) {
    const bool isEdge = meant[i] > 0 && meant[i] < 1;
    ASSERT_NEAR(meant[i], 1 - (frame.pixels[i] & 0xFF) / 255.0, isEdge ? 1 : 0.25)
        << i % frame.width << ", " << i / frame.width;
  }
}

// By chords that stay within a few hundredths of a pixel.
std::vector<Corner> EllipseIn(double left, double top, double right, double bottom) {
  std::vector<Corner> chords;
  for (double angle = 0; angle < 2 * std::numbers::pi; angle += std::numbers::pi / 90) {
    chords.push_back({(left + right) / 2 + (right - left) / 2 * std::cos(angle),
                      (top + bottom) / 2 + (bottom - top) / 2 * std::sin(angle)});
  }
  return chords;
}

struct ShapeCase {
  const char* name;
  AnnotationSubType subType;
  Points dragged;
  std::vector<Corner> corners;  // what must be inked
};

const Points kDown = {{20, 20}, {140, 80}};
const Points kBack = {{140, 20}, {20, 80}};
const std::vector<Corner> kBox = {{20, 20}, {140, 20}, {140, 80}, {20, 80}};
const Points kBends = {{20, 20}, {100, 20}, {150, 80}, {30, 70}};
const std::vector<Corner> kBendSpots = {{20, 20}, {100, 20}, {150, 80}, {30, 70}};

const ShapeCase kShapes[] = {
    {"Line", kLine, kDown, {{20, 20}, {140, 80}}},
    {"Rectangle", kRectangle, kBack, kBox},
    {"Triangle", kTriangle, kDown, {{80, 20}, {140, 80}, {20, 80}}},
    {"TriangleDraggedUp", kTriangle, {{140, 80}, {20, 20}}, {{80, 20}, {140, 80}, {20, 80}}},
    {"RightTriangle", kRightTriangle, kBack, {{20, 20}, {140, 80}, {20, 80}}},
    {"Ellipse", kEllipse, kBack, EllipseIn(20, 20, 140, 80)},
    {"Path", kPath, kBends, kBendSpots},
    {"PathOfAnUnknownKind", kUnknown, kBends, kBendSpots},
    {"PathOfAPictureKind", AnnotationSubTypePng, kBends, kBendSpots},
};

TEST(AnnotationDrawingTest, AShapesInkLiesWhereItsPointsSayWhenThePageIsResizedToo) {
  for (const auto& [name, subType, dragged, corners] : kShapes) {
    SCOPED_TRACE(name);
    std::vector<Corner> spots = corners;
    if (subType != kLine && corners != kBendSpots) {
      spots.insert(spots.end(), {corners[0], corners[1]});
    }
    PaintedPage painted(kSize);
    Mark mark("m");
    mark.Shape(subType).Pen(kRed, kPen, subType == kRectangle ? 0 : 1).Points(kSize, dragged);
    painted.page.AddAnnotation(mark.Release(), true);
    ExpectInked(painted.Paint(), exact::StrokePolygons(spots, kPen));
    painted.window.SetScreenRect({0, 0, kWideSize.width, kWideSize.height});
    painted.page.UpdatePage(PageOf(kWideSize.width, kWideSize.height), true);
    for (Corner& spot : spots) {
      spot = {spot.real() * 2, spot.imag() / 2};
    }
    ExpectInked(painted.Paint(), exact::StrokePolygons(spots, kPen));
  }
}

TEST(AnnotationDrawingTest, PenWidthsAreClampedAndDoNotScale) {
  for (const auto& [width, drawn] :
       {std::pair{0, 1}, {-5, 1}, {INT32_MIN, 1}, {7, 7}, {30, 30}, {31, 30}, {INT32_MAX, 30}}) {
    for (const CurrentAnnotPageSize size : {kSize, kWideSize}) {
      const Frame frame = Paint(
          Mark("m").Shape(kLine).Pen(kBlack, width).Points(size, {{20, 24}, {120, 24}}), size);
      EXPECT_NEAR(100.0 * drawn, frame.BlackArea(), 1.0 * drawn) << width;
    }
  }
}

TEST(AnnotationDrawingTest, AFilledRectangleIsExactlyItsBox) {
  const Frame frame =
      Paint(Mark("m").Shape(kRectangle).Pen(0x80FF0000, 30, 1).Points(kSize, {{60, 50}, {20, 10}}));
  EXPECT_EQ((RECT{20, 10, 60, 50}), frame.InkBox());
  for (int y = 10; y < 50; ++y) {
    for (int x = 20; x < 60; ++x) {
      ASSERT_EQ(0xFFFF0000, frame.At(x, y) & 0xFFFF0000);
      // Half red over white; an 8-bit channel may be rounded either way.
      ASSERT_NEAR(0x7F, static_cast<int>(frame.At(x, y) >> 8 & 0xFF), 1) << x << ", " << y;
    }
  }
}

TEST(AnnotationDrawingTest, PointsOnOnePixelMakeADiscOfThePensWidth) {
  EXPECT_THAT(Paint(Mark("m").Points(kSize, {{50, 40}})), IsAll(kWhite)) << "one point is none";
  for (const int width : {1, 6, 13, 30}) {
    for (const AnnotationSubType subType : {kPath, kLine, kEllipse, kRectangle, kTriangle}) {
      const Frame frame =
          Paint(Mark("m").Shape(subType).Pen(kBlack, width).Points(kSize, {{50, 40}, {50, 40}}));
      const double area = std::numbers::pi * width * width / 4;
      // A disc's edge is a chain of chords to the rasteriser.
      EXPECT_NEAR(area, frame.BlackArea(), 0.06 + 0.02 * area) << width << " of " << subType;
      const RECT box = frame.InkBox();
      EXPECT_EQ(100, box.left + box.right - 1) << "centred on the pixel";
      EXPECT_EQ(80, box.top + box.bottom - 1);
      EXPECT_LE(box.right - box.left, width + 2);
    }
  }
}

TEST(AnnotationDrawingTest, ConnectedSubModelsAreOneLine) {
  Mark mark("m");
  mark.Pen(kRed, kPen)
      .Points(kSize, {{20, 20}, {60, 20}})
      .Points(kSize, {{100, 60}, {100, 70}}, 1)
      .Points(kSize, {}, 2)
      .Points(kSize, {{120, 90}, {180, 90}}, 3)
      .Points(kSize, {{20, 50}, {180, 50}}, 5);
  std::vector<exact::Polygon> meant;
  // After an empty one not joined; after a missing one not drawn.
  for (const std::vector<Corner>& line : {std::vector<Corner>{{20, 20}, {60, 20}},
                                          {{60, 20}, {100, 60}},
                                          {{100, 60}, {100, 70}},
                                          {{120, 90}, {180, 90}}}) {
    const auto polygons = exact::StrokePolygons(line, kPen);
    meant.insert(meant.end(), polygons.begin(), polygons.end());
  }
  ExpectInked(Paint(mark), meant);
}

TEST(AnnotationDrawingTest, OnlyTheFrameNeedsAMarkThatIsNotErased) {
  DrawnBitmap shown(20, 20);
  Annotation mark;
  EXPECT_EQ(0, mark.Draw(nullptr, kSize, true) + mark.DrawRectEx(nullptr, kSize));
  EXPECT_EQ(1, mark.Draw(&shown.graphics, {20, 20}, false)) << "nothing to draw is no failure";
  EXPECT_EQ(0, mark.DrawRectEx(&shown.graphics, {20, 20}));
  mark.InsertPoints(0, PointsOn({20, 20}, {{0, 10}, {20, 10}}));
  mark.Erase(1);
  EXPECT_EQ(0, mark.DrawRectEx(&shown.graphics, {20, 20}));
  EXPECT_THAT(shown.Show(), IsAll(kClear));
  EXPECT_EQ(1, mark.Draw(&shown.graphics, {20, 20}, true));
  EXPECT_THAT(shown.Show(), Shows(10, 10, kBlack));

  mark.InsertPoints(1, {{7, 7, 0.5, 0.5}});
  EXPECT_EQ(1, mark.Draw(&shown.graphics, {0, 0}, false)) << "all lies on one pixel then";
  for (const auto& [number, list] : mark.GetPoints()) {
    EXPECT_THAT(list, SizeIs(2)) << number;
    EXPECT_THAT(list, Each(AllOf(Field(&AnnotationPoint::x, 0), Field(&AnnotationPoint::y, 0))));
  }
}

}  // namespace
