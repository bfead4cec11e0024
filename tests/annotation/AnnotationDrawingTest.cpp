#include <cmath>
#include <limits>
#include <numbers>

#include "support/Mark.h"
#include "support/StrokeArea.h"
#include "support/Whiteboard.h"

namespace {

using Spot = StrokeArea::Spot;

constexpr CurrentAnnotPageSize kSize = {200, 100};
constexpr CurrentAnnotPageSize kWideSize = {400, 50};  // twice as wide, half as high
constexpr int kPen = 6;

// A bare surface: white, without a page around it.
class Canvas {
 public:
  explicit Canvas(CurrentAnnotPageSize size = kSize) : size(size), painted(size) {}

  // Painted by the page, as its only mark.
  Frame Show(std::unique_ptr<Annotation> mark) {
    last = mark.get();
    painted.page.AddAnnotation(mark.release(), true);
    return painted.Paint();
  }

  CurrentAnnotPageSize size;
  PaintedPage painted;
  Annotation* last = nullptr;
};

struct ShapeCase {
  const char* name;
  AnnotationSubType subType;
  std::vector<POINT> dragged;
  // What must be inked; coordinates of kSize.
  std::vector<Spot> expected;
  bool closed;
};

void PrintTo(const ShapeCase& shape, std::ostream* out) {
  *out << shape.name;
}

const ShapeCase kShapes[] = {
    {"Line", AnnotationSubTypeLine, {{20, 20}, {150, 80}}, {{20, 20}, {150, 80}}, false},
    {"LineBack", AnnotationSubTypeLine, {{150, 20}, {20, 80}}, {{150, 20}, {20, 80}}, false},
    {"LineAcross", AnnotationSubTypeLine, {{20, 40}, {150, 40}}, {{20, 40}, {150, 40}}, false},
    {"LineDown", AnnotationSubTypeLine, {{40, 20}, {40, 80}}, {{40, 20}, {40, 80}}, false},
    {"Rectangle",
     AnnotationSubTypeRectangle,
     {{20, 20}, {150, 80}},
     {{20, 20}, {150, 20}, {150, 80}, {20, 80}},
     true},
    {"RectangleBack",
     AnnotationSubTypeRectangle,
     {{150, 80}, {20, 20}},
     {{20, 20}, {150, 20}, {150, 80}, {20, 80}},
     true},
    {"Triangle",
     AnnotationSubTypeTriangle,
     {{20, 20}, {140, 80}},
     {{80, 20}, {140, 80}, {20, 80}},
     true},
    {"TriangleDraggedUp",
     AnnotationSubTypeTriangle,
     {{140, 80}, {20, 20}},
     {{80, 20}, {140, 80}, {20, 80}},
     true},
    {"RightTriangle",
     AnnotationSubTypeRightTriangle,
     {{140, 20}, {20, 80}},
     {{20, 20}, {140, 80}, {20, 80}},
     true},
    {"Path",
     AnnotationSubTypePath,
     {{20, 20}, {100, 20}, {150, 80}, {30, 70}},
     {{20, 20}, {100, 20}, {150, 80}, {30, 70}},
     false},
    {"PathOfAnUnknownKind",
     static_cast<AnnotationSubType>(7),
     {{20, 20}, {100, 20}, {150, 80}},
     {{20, 20}, {100, 20}, {150, 80}},
     false},
    {"PathOfAPictureKind",
     AnnotationSubTypePng,
     {{20, 20}, {100, 20}, {150, 80}},
     {{20, 20}, {100, 20}, {150, 80}},
     false},
};

class ShapeTest : public testing::TestWithParam<ShapeCase> {};

TEST_P(ShapeTest, ItsInkLiesWhereItsPointsSayOnAnyPageSize) {
  const ShapeCase& shape = GetParam();
  for (const CurrentAnnotPageSize size : {kSize, kWideSize}) {
    std::vector<Spot> spots = shape.expected;
    for (Spot& spot : spots) {
      spot = {spot.x * size.width / kSize.width, spot.y * size.height / kSize.height};
    }
    StrokeArea area(kPen);
    shape.closed ? area.Closed(spots) : area.Open(spots);
    Canvas canvas(size);
    const Frame frame = canvas.Show(
        Mark("m").Shape(shape.subType).Pen(kRed, kPen).Points(kSize, shape.dragged).Make());
    EXPECT_TRUE(IsInked(frame, area, kRed)) << size.width << " x " << size.height;
  }
}

INSTANTIATE_TEST_SUITE_P(All, ShapeTest, testing::ValuesIn(kShapes),
                         [](const auto& shape) { return shape.param.name; });

TEST(AnnotationDrawingTest, AnEllipseIsInscribedInItsBox) {
  for (const CurrentAnnotPageSize size : {kSize, kWideSize}) {
    const double x = static_cast<double>(size.width) / kSize.width;
    const double y = static_cast<double>(size.height) / kSize.height;
    Canvas canvas(size);
    const Frame frame = canvas.Show(Mark("m")
                                        .Shape(AnnotationSubTypeEllipse)
                                        .Pen(kBlack, kPen)
                                        .Points(kSize, {{150, 20}, {20, 80}})
                                        .Make());
    EXPECT_TRUE(IsInked(frame, StrokeArea(kPen).Ellipse(20 * x, 20 * y, 150 * x, 80 * y), kBlack));
  }
}

TEST(AnnotationDrawingTest, PenWidthsAreClampedAndDoNotScale) {
  for (const auto& [width, drawn] : {std::pair{0, 1},
                                     {-5, 1},
                                     {INT32_MIN, 1},
                                     {1, 1},
                                     {7, 7},
                                     {30, 30},
                                     {31, 30},
                                     {1000, 30},
                                     {INT32_MAX, 30}}) {
    for (const CurrentAnnotPageSize size : {kSize, kWideSize}) {
      Canvas canvas(size);
      const Frame frame = canvas.Show(Mark("m")
                                          .Shape(AnnotationSubTypeLine)
                                          .Pen(kBlack, width)
                                          .Points(size, {{20, 24}, {120, 24}})
                                          .Make());
      EXPECT_NEAR(100.0 * drawn, frame.BlackArea(), 0.01 * 100.0 * drawn) << width;
    }
  }
}

TEST(AnnotationDrawingTest, AFilledRectangleIsExactlyItsBox) {
  Canvas canvas;
  const Frame frame = canvas.Show(Mark("m")
                                      .Shape(AnnotationSubTypeRectangle)
                                      .Pen(0x80FF0000, 30, 1)
                                      .Points(kSize, {{60, 50}, {20, 10}})
                                      .Make());
  for (int y = 0; y < frame.height; ++y) {
    for (int x = 0; x < frame.width; ++x) {
      const bool isIn = x >= 20 && x < 60 && y >= 10 && y < 50;
      const auto green = static_cast<int>(frame.At(x, y) >> 8 & 0xFF);
      ASSERT_EQ(0xFFFF0000, frame.At(x, y) & 0xFFFF0000);
      // Half red over white; an 8-bit channel may be rounded either way.
      ASSERT_NEAR(isIn ? 0x7F : 0xFF, green, isIn ? 1 : 0) << x << ", " << y;
    }
  }
}

TEST(AnnotationDrawingTest, OnlyRectanglesAreFilled) {
  for (const AnnotationSubType subType :
       {AnnotationSubTypeEllipse, AnnotationSubTypeTriangle, AnnotationSubTypeRightTriangle}) {
    Canvas canvas;
    const Frame frame = canvas.Show(
        Mark("m").Shape(subType).Pen(kRed, 2, 1).Points(kSize, {{20, 10}, {160, 90}}).Make());
    EXPECT_THAT(frame, Shows(80, 70, kWhite)) << subType;
  }
}

TEST(AnnotationDrawingTest, AMarkOfOnePointIsInvisibleUntilItMoves) {
  Canvas canvas;
  EXPECT_THAT(canvas.Show(Mark("m").Points(kSize, {{50, 50}}).Make()), IsAll(kWhite));
  EXPECT_EQ(1U, canvas.last->GetPoints().at(0).size()) << "sub-model 0 gets no second point";
  canvas.last->AddPoint(PointsOn(kSize, {{50, 50}})[0]);
  EXPECT_NE((RECT{0, 0, 0, 0}), canvas.painted.Paint().InkBox());
}

TEST(AnnotationDrawingTest, PointsOnOnePixelMakeADiscOfThePensWidth) {
  for (const int width : {1, 6, 13, 30}) {
    for (const AnnotationSubType subType :
         {AnnotationSubTypePath, AnnotationSubTypeLine, AnnotationSubTypeEllipse,
          AnnotationSubTypeRectangle, AnnotationSubTypeTriangle}) {
      Canvas canvas;
      const Frame frame = canvas.Show(
          Mark("m").Shape(subType).Pen(kBlack, width).Points(kSize, {{50, 40}, {50, 40}}).Make());
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

TEST(AnnotationDrawingTest, SubModelsAreJoinedIntoOneLine) {
  Canvas canvas;
  canvas.Show(Mark("m").Pen(kRed, kPen).Points(kSize, {{20, 20}, {60, 20}}).Make());
  canvas.last->InsertPoints(1, PointsOn(kSize, {{100, 60}, {100, 70}}));
  canvas.last->InsertPoints(2, PointsOn(kSize, {{120, 90}, {180, 90}}));
  StrokeArea area(kPen);
  area.Open({{20, 20}, {60, 20}}).Open({{60, 20}, {100, 60}}).Open({{100, 60}, {100, 70}});
  area.Open({{100, 70}, {120, 90}}).Open({{120, 90}, {180, 90}});
  EXPECT_TRUE(IsInked(canvas.painted.Paint(), area, kRed));
}

TEST(AnnotationDrawingTest, ALonePointOfALaterSubModelIsDoubledOnceAndDotted) {
  Canvas canvas;
  canvas.Show(Mark("m").Pen(kRed, kPen).Points(kSize, {{20, 20}, {100, 20}}).Make());
  canvas.last->InsertPoints(1, PointsOn(kSize, {{100, 60}}));
  for (int frame = 0; frame < 2; ++frame) {
    EXPECT_EQ(63, canvas.painted.Paint().InkBox().bottom - 1) << "the lower half of its dot";
    EXPECT_EQ(PointsOn(kSize, {{100, 60}, {100, 60}}), canvas.last->GetPoints().at(1));
  }
}

TEST(AnnotationDrawingTest, AnEmptySubModelBreaksTheLineAndAMissingOneEndsIt) {
  Canvas canvas;
  canvas.Show(Mark("m").Pen(kRed, kPen).Points(kSize, {{20, 20}, {60, 20}}).Make());
  canvas.last->InsertPoints(1, {});
  canvas.last->InsertPoints(2, PointsOn(kSize, {{100, 80}, {180, 80}}));
  canvas.last->InsertPoints(4, PointsOn(kSize, {{20, 50}, {180, 50}}));
  StrokeArea area(kPen);
  area.Open({{20, 20}, {60, 20}}).Open({{100, 80}, {180, 80}});
  EXPECT_TRUE(IsInked(canvas.painted.Paint(), area, kRed));
}

TEST(AnnotationDrawingTest, DrawingNeedsGraphicsAndIgnoresErasing) {
  Annotation mark;
  EXPECT_EQ(0, mark.Draw(nullptr, kSize, true));
  EXPECT_EQ(0, mark.DrawRectEx(nullptr, kSize));
  std::vector<std::uint32_t> pixels;
  DeviceContext proof;
  HDC dc = CreateCompatibleDC(&proof);
  {
    DibSection section;
    section.Create(dc, 20, 20, 32, false);
    HGDIOBJ before = SelectObject(dc, section.GetBitmap());
    Gdiplus::Graphics graphics(dc);
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
    SelectObject(dc, before);
  }
  DeleteDC(dc);
}

// --- From fractions to pixels ---

AnnotationPoint DrawnPixel(double xRatio, double yRatio, CurrentAnnotPageSize size) {
  Canvas canvas(size);
  auto mark = Mark("m").Make();
  mark->InsertPoints(0, {{1, 1, xRatio, yRatio}, {2, 2, 0.5, 0.5}});
  canvas.Show(std::move(mark));
  return canvas.last->GetPoints().at(0)[0];
}

TEST(AnnotationDrawingTest, PixelsAreRoundedTowardZeroAndSaturate) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    double ratio;
    int width;
    std::int32_t pixel;
  } cases[] = {{0.5, 101, 51},
               {1.0, 100, 100},
               {-0.004, 100, 0},
               {-0.01, 100, 0},
               {-0.02, 100, -1},
               {-1.0, 100, -99},
               {0.994, 100, 99},
               {0.995, 100, 100},
               {nan, 100, 0},
               {kInfinity, 100, INT32_MAX},
               {-kInfinity, 100, INT32_MIN},
               {1e300, 100, INT32_MAX},
               {-1e300, 100, INT32_MIN},
               {21474836.47, 100, INT32_MAX},
               {1e-320, 100, 0}};
  for (const auto& [ratio, width, pixel] : cases) {
    EXPECT_EQ(pixel, DrawnPixel(ratio, 0.5, {width, 10}).x) << ratio << " of " << width;
    EXPECT_EQ(pixel, DrawnPixel(0.5, ratio, {10, width}).y) << ratio << " of " << width;
  }
}

TEST(AnnotationDrawingTest, FarAwayPointsPaintWhatCrossesThePage) {
  constexpr double kFar = std::numeric_limits<double>::max();
  for (const AnnotationSubType subType :
       {AnnotationSubTypePath, AnnotationSubTypeLine, AnnotationSubTypeEllipse,
        AnnotationSubTypeRectangle, AnnotationSubTypeTriangle, AnnotationSubTypeRightTriangle}) {
    Canvas canvas;
    auto mark = Mark("m").Shape(subType).Pen(kRed, kPen).Make();
    mark->InsertPoints(0, {{0, 0, -kFar, 0.5}, {0, 0, kFar, 0.5}});
    canvas.painted.page.AddAnnotation(mark.get(), true);
    PageTestAccess::Select(canvas.painted.page, mark.release());
    const Frame frame = canvas.painted.Paint();
    EXPECT_THAT(frame, Shows(0, 48, kRed)) << subType;
    EXPECT_THAT(frame, Shows(199, 52, kRed)) << subType;
    EXPECT_THAT(frame, Shows(100, 40, kWhite)) << subType;
  }
}

// --- The selection frame ---

TEST(AnnotationFrameTest, TheFrameIsTheBoxOfTheCentresOfAtLeastTwoPixels) {
  const struct {
    AnnotationSubType subType;
    std::vector<POINT> points;
    RECT frame;
  } cases[] = {
      {AnnotationSubTypePath, {{10, 20}, {30, 20}}, {10, 19, 30, 21}},
      {AnnotationSubTypePath, {{5, 5}, {5, 5}}, {4, 4, 6, 6}},
      {AnnotationSubTypePath, {{5, 5}, {6, 7}}, {4, 5, 7, 7}},
      {AnnotationSubTypePath, {{50, 50}, {40, 60}, {0, 5}, {99, 52}}, {0, 5, 99, 60}},
      {AnnotationSubTypeRectangle, {{80, 60}, {10, 10}}, {10, 10, 80, 60}},
      {AnnotationSubTypeLine, {{10, 10}, {20, 20}, {90, 90}}, {10, 10, 20, 20}},
      {static_cast<AnnotationSubType>(7), {{10, 10}, {20, 20}, {90, 90}}, {10, 10, 20, 20}},
  };
  for (const auto& [subType, points, frame] : cases) {
    const auto mark = Mark("m").Shape(subType).Points(kSize, points).Make();
    EXPECT_EQ(1, mark->SetRectEx(kSize));
    EXPECT_EQ(frame, AnnotationTestAccess::FrameOf(*mark));
    EXPECT_EQ(points[0].x, mark->GetPoints().at(0)[0].x);
    EXPECT_EQ(1, mark->SetRectEx({400, 100}));
    EXPECT_EQ(points[0].x, mark->GetPoints().at(0)[0].x) << "framing stores no pixels";
  }
}

TEST(AnnotationFrameTest, APathsFrameTakesInEverySubModel) {
  const auto mark = Mark("m").Points(kSize, {{20, 20}, {30, 30}}).Make();
  mark->InsertPoints(2, PointsOn(kSize, {{90, 5}}));
  EXPECT_EQ(1, mark->SetRectEx(kSize));
  EXPECT_EQ((RECT{20, 5, 90, 30}), AnnotationTestAccess::FrameOf(*mark));
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

TEST(AnnotationFrameTest, TheFrameOfTheWholeNumberRangeDoesNotOverflow) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  const auto mark = Mark("m").Make();
  mark->InsertPoints(0, {{0, 0, -kFar, -kFar}, {0, 0, kFar, -kFar}});
  EXPECT_EQ(1, mark->SetRectEx(kSize));
  EXPECT_EQ((RECT{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MIN + 1}),
            AnnotationTestAccess::FrameOf(*mark));
}

}  // namespace
