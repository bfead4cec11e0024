#include <cmath>
#include <limits>
#include <numbers>

#include "support/Mark.h"
#include "support/StrokeArea.h"
#include "support/Whiteboard.h"

namespace {

using Spot = StrokeArea::Spot;
using testing::AllOf;
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

// A page with one mark.
class ShownMark {
 public:
  explicit ShownMark(Mark& mark, CurrentAnnotPageSize size = kSize)
      : painted(size), mark(mark.Release()) {
    painted.page.AddAnnotation(this->mark, true);
  }
  Frame Paint() { return painted.Paint(); }

  PaintedPage painted;
  Annotation* mark;
};

Frame Paint(Mark& mark, CurrentAnnotPageSize size = kSize) {
  return ShownMark(mark, size).Paint();
}

struct ShapeCase {
  const char* name;
  AnnotationSubType subType;
  Points dragged;
  std::vector<Spot> corners;  // what must be inked; empty for the ellipse in the box
};

void PrintTo(const ShapeCase& shape, std::ostream* out) {
  *out << shape.name;
}

const Points kDown = {{20, 20}, {140, 80}};
const Points kBack = {{140, 20}, {20, 80}};
const std::vector<Spot> kBox = {{20, 20}, {140, 20}, {140, 80}, {20, 80}};
const Points kBends = {{20, 20}, {100, 20}, {150, 80}, {30, 70}};
const std::vector<Spot> kBendSpots = {{20, 20}, {100, 20}, {150, 80}, {30, 70}};

const ShapeCase kShapes[] = {
    {"Line", kLine, kDown, {{20, 20}, {140, 80}}},
    {"LineBack", kLine, kBack, {{140, 20}, {20, 80}}},
    {"LineAcross", kLine, {{20, 40}, {150, 40}}, {{20, 40}, {150, 40}}},
    {"Rectangle", kRectangle, kDown, kBox},
    {"RectangleBack", kRectangle, kBack, kBox},
    {"Triangle", kTriangle, kDown, {{80, 20}, {140, 80}, {20, 80}}},
    {"TriangleDraggedUp", kTriangle, {{140, 80}, {20, 20}}, {{80, 20}, {140, 80}, {20, 80}}},
    {"RightTriangle", kRightTriangle, kBack, {{20, 20}, {140, 80}, {20, 80}}},
    {"Ellipse", kEllipse, kBack, {}},
    {"Path", kPath, kBends, kBendSpots},
    {"PathOfAnUnknownKind", kUnknown, kBends, kBendSpots},
    {"PathOfAPictureKind", AnnotationSubTypePng, kBends, kBendSpots},
};

class ShapeTest : public testing::TestWithParam<ShapeCase> {};

TEST_P(ShapeTest, ItsInkLiesWhereItsPointsSayOnAnyPageSize) {
  const ShapeCase& shape = GetParam();
  const bool isOpen =
      shape.subType != kRectangle && shape.subType != kTriangle && shape.subType != kRightTriangle;
  for (const CurrentAnnotPageSize size : {kSize, kWideSize}) {
    const double x = static_cast<double>(size.width) / kSize.width;
    const double y = static_cast<double>(size.height) / kSize.height;
    std::vector<Spot> spots;
    for (const Spot& corner : shape.corners) {
      spots.push_back({corner.x * x, corner.y * y});
    }
    StrokeArea area(kPen);
    if (shape.subType == kEllipse) {
      area.Ellipse(20 * x, 20 * y, 140 * x, 80 * y);
    } else {
      isOpen ? area.Open(spots) : area.Closed(spots);
    }
    const Frame frame = Paint(Mark("m")
                                  .Shape(shape.subType)
                                  .Pen(kRed, kPen, shape.subType == kRectangle ? 0 : 1)
                                  .Points(kSize, shape.dragged),
                              size);
    EXPECT_TRUE(IsInked(frame, area, kRed)) << size.width << " x " << size.height;
  }
}

INSTANTIATE_TEST_SUITE_P(All, ShapeTest, testing::ValuesIn(kShapes),
                         [](const auto& shape) { return shape.param.name; });

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
  ShownMark shown(Mark("m").Pen(kRed, kPen).Points(kSize, {{20, 20}, {60, 20}}));
  shown.mark->InsertPoints(1, PointsOn(kSize, {{100, 60}, {100, 70}}));
  shown.mark->InsertPoints(2, {});
  shown.mark->InsertPoints(3, PointsOn(kSize, {{120, 90}, {180, 90}}));
  shown.mark->InsertPoints(5, PointsOn(kSize, {{20, 50}, {180, 50}}));
  StrokeArea area(kPen);
  area.Open({{20, 20}, {60, 20}}).Open({{60, 20}, {100, 60}}).Open({{100, 60}, {100, 70}});
  area.Open(
      {{120, 90}, {180, 90}});  // after an empty one not joined; after a missing one not drawn
  EXPECT_TRUE(IsInked(shown.Paint(), area, kRed));
}

TEST(AnnotationDrawingTest, ALonePointOfALaterSubModelIsDoubledOnceAndDotted) {
  ShownMark shown(Mark("m").Pen(kRed, kPen).Points(kSize, {{20, 20}, {100, 20}}));
  shown.mark->InsertPoints(1, PointsOn(kSize, {{100, 60}}));
  for (int frame = 0; frame < 2; ++frame) {
    EXPECT_EQ(63, shown.Paint().InkBox().bottom - 1) << "the lower half of its dot";
    EXPECT_EQ(PointsOn(kSize, {{100, 60}, {100, 60}}), shown.mark->GetPoints().at(1));
  }
}

TEST(AnnotationDrawingTest, OnlyTheFrameNeedsAMarkThatIsNotErased) {
  DeviceContext proof;
  HDC dc = CreateCompatibleDC(&proof);
  DibSection section;
  section.Create(dc, 20, 20, 32, false);
  SelectObject(dc, section.GetBitmap());
  Gdiplus::Graphics graphics(dc);
  Annotation mark;
  EXPECT_EQ(0, mark.Draw(nullptr, kSize, true));
  EXPECT_EQ(0, mark.DrawRectEx(nullptr, kSize));
  EXPECT_EQ(1, mark.Draw(&graphics, {20, 20}, false)) << "nothing to draw is no failure";
  EXPECT_EQ(0, mark.DrawRectEx(&graphics, {20, 20}));
  mark.InsertPoints(0, PointsOn({20, 20}, {{0, 10}, {20, 10}}));
  mark.Erase(1);
  EXPECT_EQ(0, mark.DrawRectEx(&graphics, {20, 20}));
  graphics.Flush();
  EXPECT_EQ(0U, GetPixels(dc).pixels[10 * 20 + 10]);
  EXPECT_EQ(1, mark.Draw(&graphics, {20, 20}, true));
  graphics.Flush();
  EXPECT_EQ(kBlack, GetPixels(dc).pixels[10 * 20 + 10]);
  DeleteDC(dc);
}

// --- From fractions to pixels ---

TEST(AnnotationDrawingTest, PixelsAreRoundedTowardZeroAndSaturate) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    double ratio;
    int length, pixel;
  } cases[] = {{0.5, 101, 51},
               {1.0, 100, 100},
               {-0.004, 100, 0},
               {-0.01, 100, 0},
               {-0.02, 100, -1},
               {-1.0, 100, -99},
               {0.994, 100, 99},
               {0.995, 100, 100},
               {1e-320, 100, 0},
               {NAN, 100, 0},
               {1e300, 1, INT32_MAX},
               {-1e300, 1, INT32_MIN},
               {kInfinity, 1, INT32_MAX},
               {-kInfinity, 1, INT32_MIN},
               {21474836.47, 100, INT32_MAX}};
  for (const auto& [ratio, length, pixel] : cases) {
    Mark mark("m");
    ShownMark shown(mark.Points(kSize, {{1, 1}, {2, 2}}), {length, length});
    shown.mark->InsertPoints(0, {{1, 1, ratio, ratio}, {2, 2, 0.5, 0.5}});
    shown.Paint();
    EXPECT_EQ(pixel, shown.mark->GetPoints().at(0)[0].x) << ratio << " of " << length;
    EXPECT_EQ(pixel, shown.mark->GetPoints().at(0)[0].y) << ratio << " of " << length;
  }
}

TEST(AnnotationDrawingTest, FarAwayPointsPaintWhatCrossesThePage) {
  constexpr double kFar = std::numeric_limits<double>::max();
  for (const AnnotationSubType subType :
       {kPath, kLine, kEllipse, kRectangle, kTriangle, kRightTriangle}) {
    ShownMark shown(Mark("m").Shape(subType).Pen(kRed, kPen));
    shown.mark->InsertPoints(0, {{0, 0, -kFar, 0.5}, {0, 0, kFar, 0.5}});
    PageTestAccess::Select(shown.painted.page, shown.mark);
    EXPECT_THAT(shown.Paint(),
                AllOf(Shows(0, 48, kRed), Shows(199, 52, kRed), Shows(100, 40, kWhite)))
        << subType;
    EXPECT_EQ((RECT{INT32_MIN, 49, INT32_MAX, 51}), AnnotationTestAccess::FrameOf(*shown.mark));
  }
}

// --- The selection frame ---

TEST(AnnotationFrameTest, TheFrameIsTheBoxOfTheCentresOfAtLeastTwoPixels) {
  const struct {
    AnnotationSubType subType;
    Points points;
    RECT frame;
  } cases[] = {{kPath, {{10, 20}, {30, 20}}, {10, 19, 30, 21}},
               {kPath, {{5, 5}, {5, 5}}, {4, 4, 6, 6}},
               {kPath, {{5, 5}, {6, 7}}, {4, 5, 7, 7}},
               {kPath, {{50, 50}, {40, 60}, {0, 5}, {99, 52}}, {0, 5, 99, 60}},
               {kRectangle, {{80, 60}, {10, 10}}, {10, 10, 80, 60}},
               {kLine, {{10, 10}, {20, 20}, {90, 90}}, {10, 10, 20, 20}},
               {kUnknown, {{10, 10}, {20, 20}, {90, 90}}, {10, 10, 20, 20}}};
  for (const auto& [subType, points, frame] : cases) {
    const auto mark = Mark("m").Shape(subType).Points(kSize, points).Make();
    EXPECT_EQ(1, mark->SetRectEx(kSize));
    EXPECT_EQ(frame, AnnotationTestAccess::FrameOf(*mark));
    EXPECT_EQ(1, mark->SetRectEx({400, 100}));
    EXPECT_EQ(points[0].x, mark->GetPoints().at(0)[0].x) << "framing stores no pixels";
  }
  const auto mark = Mark("m").Points(kSize, {{20, 20}, {30, 30}}).Make();
  mark->InsertPoints(2, PointsOn(kSize, {{90, 5}}));
  mark->SetRectEx(kSize);
  EXPECT_EQ((RECT{20, 5, 90, 30}), AnnotationTestAccess::FrameOf(*mark))
      << "every sub-model counts";
}

TEST(AnnotationFrameTest, AMarkOfFewerThanTwoPointsKeepsItsOldFrame) {
  const auto mark = Mark("m").Points(kSize, {{20, 20}, {30, 30}}).Make();
  mark->SetRectEx(kSize);
  mark->ClearPoints();
  EXPECT_EQ(0, mark->SetRectEx(kSize));
  EXPECT_EQ(0, mark->IsSubModelExist(0));
  mark->InsertPoints(1, PointsOn(kSize, {{1, 1}, {2, 2}}));
  EXPECT_EQ(0, mark->SetRectEx(kSize));
  EXPECT_EQ(1, mark->IsSubModelExist(0)) << "framing makes sub-model 0 where others exist";
  mark->AddPoint({});
  EXPECT_EQ(0, mark->SetRectEx(kSize));
  EXPECT_EQ((RECT{20, 20, 30, 30}), AnnotationTestAccess::FrameOf(*mark));
}

}  // namespace
