#include <parchlet/Parchlet.h>

#include "annotation/PixelMath.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CurrentAnnotPageSize kSize = {200, 100};

AnnotationPoint At(LONG x, LONG y) {
  return PagePoint({x, y}, kSize);
}

class DrawingGestureTest : public testing::Test {
 protected:
  int Press(LONG x, LONG y) { return board.engine.StartDrawing("doc", "page", {x, y}); }
  Annotation* Current() { return ParchletTestAccess::GetCurrentAnnotation(board.engine); }

  Whiteboard board{kSize.width, kSize.height};
};

TEST_F(DrawingGestureTest, APressStartsAMarkOnlyOnThePageEdgesIncluded) {
  const struct {
    LONG x, y;
    int result;
  } cases[] = {{0, 0, 1},   {200, 100, 1}, {200, 0, 1},
               {0, 100, 1}, {-1, 0, 0},    {0, -1, 0},
               {201, 0, 0}, {0, 101, 0},   {INT32_MIN, INT32_MAX, 0}};
  std::size_t marks = 0;
  for (const auto& [x, y, result] : cases) {
    EXPECT_EQ(result, Press(x, y)) << x << ", " << y;
    marks += static_cast<std::size_t>(result);
    EXPECT_EQ(marks, PageTestAccess::Pending(board.Page()).size());
  }
}

TEST_F(DrawingGestureTest, APathKeepsEveryPointEvenOffThePage) {
  Press(10, 10);
  EXPECT_EQ(1, board.engine.MoveDrawing({10, 10}));
  EXPECT_EQ(1, board.engine.MoveDrawing({-20, 5}));
  EXPECT_EQ(1, board.engine.MoveDrawing({INT32_MAX, INT32_MIN}));
  EXPECT_THAT(Current()->GetPoints().at(0),
              ElementsAre(At(10, 10), At(10, 10), At(-20, 5), At(INT32_MAX, INT32_MIN)));
  EXPECT_LT(Current()->GetPoints().at(0)[2].xRatio, 0);
}

TEST_F(DrawingGestureTest, AShapeKeepsItsAnchorAndTheLatestPoint) {
  board.engine.SetAnnotationType(AnnotationTypeDrawing, AnnotationSubTypeRectangle);
  Press(10, 10);
  board.engine.MoveDrawing({50, 40});
  board.engine.MoveDrawing({80, 60});
  EXPECT_THAT(Current()->GetPoints().at(0), ElementsAre(At(10, 10), At(80, 60)));
}

TEST_F(DrawingGestureTest, TheReleaseEndsTheMarkAndLeavesItPending) {
  EXPECT_EQ(0, board.engine.MoveDrawing({1, 1})) << "nothing was pressed yet";
  EXPECT_EQ(0, board.engine.EndDrawing());
  Press(10, 10);
  board.engine.MoveDrawing({20, 20});
  EXPECT_EQ(1, board.engine.EndDrawing());
  EXPECT_EQ(0, board.engine.EndDrawing());
  EXPECT_EQ(0, board.engine.MoveDrawing({30, 30}));
  const auto pending = PageTestAccess::Pending(board.Page());
  ASSERT_EQ(1U, pending.size());
  EXPECT_EQ(2U, pending.begin()->second->GetPoints().at(0).size());
}

TEST_F(DrawingGestureTest, ASecondPressLeavesTheFirstMarkAsItIs) {
  Press(10, 10);
  const Annotation* first = Current();
  Press(20, 20);
  board.engine.MoveDrawing({30, 30});
  EXPECT_NE(first, Current());
  EXPECT_THAT(first->GetPoints().at(0), ElementsAre(At(10, 10)));
  EXPECT_EQ(2U, PageTestAccess::Pending(board.Page()).size());
}

TEST_F(DrawingGestureTest, MovesGoToTheCurrentPageNotToThePressedOne) {
  board.engine.NewPage("doc", "other", "ada", board.window.Handle(), PageOf(50, 50));
  Press(10, 10);
  EXPECT_EQ(0, board.engine.MoveDrawing({1, 1})) << "the pressed page is not the current one";
  board.engine.GotoPage("doc", "page");
  EXPECT_EQ(1, board.engine.MoveDrawing({1, 1}));
  EXPECT_EQ(1, board.engine.EndDrawing());
}

TEST_F(DrawingGestureTest, OnlyDrawingsAreStartedExtendedAndEnded) {
  for (const AnnotationType type :
       {AnnotationTypeReserved2, AnnotationTypePicture, AnnotationTypeReserved4}) {
    board.engine.SetAnnotationType(type, AnnotationSubTypePath);
    EXPECT_EQ(0, Press(10, 10));
  }
  EXPECT_THAT(PageTestAccess::Pending(board.Page()), IsEmpty());

  auto picture = std::make_unique<Annotation>();
  picture->type = AnnotationTypePicture;
  board.Page().AddAnnotation(picture.release(), false);
  EXPECT_EQ(0, board.engine.MoveDrawing({1, 1}));
  EXPECT_EQ(0, board.engine.EndDrawing());
  std::string doc;
  std::string page;
  EXPECT_EQ(Current()->annotationId, board.engine.GetCurrentAnnotationInfo(doc, page));
}

TEST_F(DrawingGestureTest, PointsFollowThePageSizeOfTheirMoment) {
  Press(100, 50);
  board.engine.UpdatePage("doc", "page", PageOf(400, 100), true);
  board.engine.MoveDrawing({100, 50});
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
  const std::string id = board.engine.GetCurrentAnnotationInfo(doc, page);
  EXPECT_EQ("doc page", doc + " " + page);
  EXPECT_EQ(36U, id.size());
  EXPECT_EQ(1U, PageTestAccess::Pending(board.Page()).count(id));
  board.engine.EndDrawing();
  doc.clear();
  EXPECT_EQ("", board.engine.GetCurrentAnnotationInfo(doc, page));
  EXPECT_EQ("doc", doc);
}

TEST_F(DrawingGestureTest, APressWithoutMovementIsADot) {
  Press(10, 10);
  Annotation* mark = Current();
  EXPECT_EQ(1, board.engine.IsPointAnnotation(mark));
  board.engine.MoveDrawing({10, 10});
  EXPECT_EQ(1, board.engine.IsPointAnnotation(mark));
  board.engine.MoveDrawing({11, 10});
  EXPECT_EQ(0, board.engine.IsPointAnnotation(mark));
  board.engine.MoveDrawing({10, 10});
  EXPECT_EQ(0, board.engine.IsPointAnnotation(mark)) << "back where it began, yet it moved";
}

TEST_F(DrawingGestureTest, OnlyThePixelsOfSubModelZeroMakeADot) {
  EXPECT_EQ(0, board.engine.IsPointAnnotation(nullptr));
  Annotation mark;
  EXPECT_EQ(0, board.engine.IsPointAnnotation(&mark));
  mark.InsertPoints(1, {{1, 1, 0, 0}});
  EXPECT_EQ(0, board.engine.IsPointAnnotation(&mark));
  mark.InsertPoints(0, {});
  EXPECT_EQ(1, board.engine.IsPointAnnotation(&mark));
  mark.InsertPoints(0, {{5, 5, 0.1, 0.1}, {5, 5, 0.2, 0.2}, {5, 5, 0.3, 0.3}});
  mark.InsertPoints(1, {{1, 1, 0, 0}, {9, 9, 0, 0}});
  EXPECT_EQ(1, board.engine.IsPointAnnotation(&mark));
  mark.InsertPoints(0, {{5, 5, 0.1, 0.1}, {5, 5, 0.1, 0.1}, {5, 6, 0.1, 0.1}});
  EXPECT_EQ(0, board.engine.IsPointAnnotation(&mark));
}

TEST_F(DrawingGestureTest, TheInkShowsAndANarrowerPenDoesNotChangeIt) {
  board.engine.SetPen(kRed, 8);
  Press(20, 50);
  board.engine.MoveDrawing({180, 50});
  board.engine.SetPen(kBlue, 1);
  board.engine.MoveDrawing({180, 50});
  const Frame frame = board.Paint();
  EXPECT_THAT(frame, Shows(100, 53, kRed));
  EXPECT_THAT(frame, Shows(100, 55, kWhite));
  board.engine.EndDrawing();
  EXPECT_THAT(board.Paint(), Shows(100, 53, kRed)) << "it stays until its echo or its cancelling";
}

}  // namespace
