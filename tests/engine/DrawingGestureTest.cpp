#include <parchlet/Parchlet.h>

#include "annotation/PixelMath.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::SizeIs;

AnnotationPoint At(LONG x, LONG y) {
  return PagePoint({x, y}, {200, 100});
}

class DrawingGestureTest : public testing::Test {
 protected:
  int Press(LONG x, LONG y) { return engine.StartDrawing("doc", "page", {x, y}); }
  Annotation* Current() { return ParchletTestAccess::GetCurrentAnnotation(engine); }
  auto Pending() { return PageTestAccess::Pending(board.Page()); }

  Whiteboard board{200, 100};
  Parchlet& engine = board.engine;
};

TEST_F(DrawingGestureTest, APressStartsAMarkOnlyOnThePageEdgesIncluded) {
  std::size_t marks = 0;
  for (const POINT& on : {POINT{0, 0}, POINT{200, 100}, POINT{200, 0}, POINT{0, 100}}) {
    EXPECT_EQ(1, Press(on.x, on.y));
    EXPECT_THAT(Pending(), SizeIs(++marks));
  }
  for (const POINT& off :
       {POINT{-1, 0}, POINT{0, -1}, POINT{201, 0}, POINT{0, 101}, POINT{INT32_MIN, INT32_MAX}}) {
    EXPECT_EQ(0, Press(off.x, off.y));
    EXPECT_THAT(Pending(), SizeIs(marks));
  }
}

TEST_F(DrawingGestureTest, APathKeepsEveryPointAndAShapeItsAnchorAndTheLatest) {
  Press(10, 10);
  EXPECT_EQ(1, engine.MoveDrawing({10, 10}));
  EXPECT_EQ(1, engine.MoveDrawing({-20, 5}));
  EXPECT_EQ(1, engine.MoveDrawing({INT32_MAX, INT32_MIN}));
  const Annotation* path = Current();
  EXPECT_LT(path->GetPoints().at(0)[2].xRatio, 0) << "off the page";

  engine.SetAnnotationType(AnnotationTypeDrawing, AnnotationSubTypeRectangle);
  Press(10, 10);
  engine.MoveDrawing({50, 40});
  engine.MoveDrawing({80, 60});
  EXPECT_THAT(Current()->GetPoints().at(0), ElementsAre(At(10, 10), At(80, 60)));
  EXPECT_THAT(path->GetPoints().at(0),
              ElementsAre(At(10, 10), At(10, 10), At(-20, 5), At(INT32_MAX, INT32_MIN)))
      << "a second press leaves the first mark as it is";
}

TEST_F(DrawingGestureTest, TheReleaseEndsTheMarkAndLeavesItPending) {
  EXPECT_EQ(0, engine.MoveDrawing({1, 1})) << "nothing was pressed yet";
  EXPECT_EQ(0, engine.EndDrawing());
  engine.SetPen(kRed, 8);
  Press(20, 50);
  engine.MoveDrawing({180, 50});
  engine.SetPen(kBlue, 1);  // for the next one
  EXPECT_EQ(1, engine.EndDrawing());
  EXPECT_EQ(0, engine.EndDrawing());
  EXPECT_EQ(0, engine.MoveDrawing({30, 30}));
  EXPECT_THAT(Pending().begin()->second->GetPoints().at(0), SizeIs(2));
  EXPECT_THAT(board.Paint(), AllOf(Shows(100, 53, kRed), Shows(100, 55, kWhite)));
}

TEST_F(DrawingGestureTest, MovesGoToTheCurrentPageNotToThePressedOne) {
  engine.NewPage("doc", "other", "ada", board.window.Handle(), PageOf(50, 50));
  Press(10, 10);
  EXPECT_EQ(0, engine.MoveDrawing({1, 1})) << "the pressed page is not the current one";
  EXPECT_EQ(0, engine.EndDrawing());
  engine.GotoPage("doc", "page");
  EXPECT_EQ(1, engine.MoveDrawing({1, 1}));
}

TEST_F(DrawingGestureTest, OnlyDrawingsAreStartedExtendedAndEnded) {
  for (const int type : {2, 3, 4}) {
    engine.SetAnnotationType(static_cast<AnnotationType>(type), AnnotationSubTypePath);
    EXPECT_EQ(0, Press(10, 10));
  }
  EXPECT_THAT(Pending(), SizeIs(0));
  auto picture = std::make_unique<Annotation>();
  picture->type = AnnotationTypePicture;
  board.Page().AddAnnotation(picture.release(), false);
  EXPECT_EQ(0, engine.MoveDrawing({1, 1}));
  EXPECT_EQ(0, engine.EndDrawing());
  std::string doc;
  EXPECT_EQ(Current()->annotationId, engine.GetCurrentAnnotationInfo(doc, doc));
}

TEST_F(DrawingGestureTest, PointsFollowThePageSizeOfTheirMoment) {
  Press(100, 50);
  engine.UpdatePage("doc", "page", PageOf(400, 100), true);
  engine.MoveDrawing({100, 50});
  EXPECT_THAT(Current()->GetPoints().at(0),
              ElementsAre(AnnotationPoint{100, 50, 0.5, 0.5}, AnnotationPoint{100, 50, 0.25, 0.5}));
}

TEST_F(DrawingGestureTest, TheHostReadsWhatIsBeingDrawnAndWhere) {
  std::string doc = "untouched";
  std::string page = "untouched";
  Parchlet empty;
  EXPECT_EQ("", empty.GetCurrentAnnotationInfo(doc, page));
  EXPECT_EQ("untouched untouched", doc + " " + page);
  empty.NewDoc("ada", "alone");
  EXPECT_EQ("", empty.GetCurrentAnnotationInfo(doc, page));
  EXPECT_EQ("alone untouched", doc + " " + page);
  Press(1, 1);
  const std::string id = engine.GetCurrentAnnotationInfo(doc, page);
  EXPECT_EQ("doc page", doc + " " + page);
  EXPECT_EQ(Current(), engine.GetLocalAnnotation("doc", "page", id));
  engine.EndDrawing();
  doc.clear();
  EXPECT_EQ("", engine.GetCurrentAnnotationInfo(doc, page));
  EXPECT_EQ("doc", doc);
}

TEST_F(DrawingGestureTest, OnlyThePixelsOfSubModelZeroMakeADot) {
  const struct {
    Annotation::SubModels points;
    int isDot;
  } cases[] = {{{}, 0},
               {{{1, {{1, 1, 0, 0}}}}, 0},
               {{{0, {}}}, 1},
               {{{0, {{5, 5, 0, 0}}}, {1, {{1, 1, 0, 0}, {9, 9, 0, 0}}}}, 1},
               {{{0, {{5, 5, 0.1, 0.1}, {5, 5, 0.2, 0.2}, {5, 5, 0.3, 0.3}}}}, 1},
               {{{0, {{5, 5, 0, 0}, {5, 5, 0, 0}, {5, 6, 0, 0}}}}, 0},
               {{{0, {{5, 5, 0, 0}, {6, 5, 0, 0}, {5, 5, 0, 0}}}}, 0}};
  EXPECT_EQ(0, engine.IsPointAnnotation(nullptr));
  for (const auto& [points, isDot] : cases) {
    Annotation mark;
    for (const auto& [number, list] : points) {
      mark.InsertPoints(number, list);
    }
    EXPECT_EQ(isDot, engine.IsPointAnnotation(&mark)) << testing::PrintToString(points);
  }
}

}  // namespace
