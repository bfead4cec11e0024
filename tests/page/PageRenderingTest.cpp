#include "page/AnnotationPage.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {100, 100};
constexpr std::uint32_t kYellow = 0xFFFFFF00;

class PageRenderingTest : public testing::Test {
 protected:
  Annotation* AddRemote(int order, int x, int y, int side, std::uint32_t color) {
    Mark mark(std::to_string(color));
    return Add(mark.By("bob").Order(order).Box(kSize, x, y, side, color), true);
  }
  Annotation* AddPending(int x, int y, int side, std::uint32_t color) {
    Mark mark("");
    return Add(mark.By("ada").Box(kSize, x, y, side, color), false);
  }
  Annotation* Add(Mark& mark, bool fromRemote) {
    Annotation* made = mark.Release();
    painted.page.AddAnnotation(made, fromRemote);
    return made;
  }

  PaintedPage painted{kSize};
};

// Boxes in a staircase down the page, each over the corner of the one before.
TEST_F(PageRenderingTest, LayersLieInTheirOrder) {
  EXPECT_THAT(painted.Paint(), IsAll(kWhite));
  PageTestAccess::SetBackgroundPicture(painted.page,
                                       Mark("").Box(kSize, 0, 0, 30, kYellow).Release());
  AddPending(50, 50, 30, kBlue);
  AddRemote(2, 40, 40, 30, kGreen);
  AddRemote(1, 20, 20, 30, kRed);
  Annotation& band = PageTestAccess::RubberBand(painted.page);
  band = *Mark("").Box(kSize, 70, 70, 20, kBlack).Make();
  const Frame frame = painted.Paint();
  EXPECT_THAT(frame, Shows(10, 10, kYellow));
  EXPECT_THAT(frame, Shows(25, 25, kRed));
  EXPECT_THAT(frame, Shows(45, 45, kGreen));
  EXPECT_THAT(frame, Shows(60, 60, kBlue));
  EXPECT_THAT(frame, Shows(75, 75, kBlack));
  EXPECT_THAT(frame, Shows(70, 80, kFrameGrey)) << "the band's own frame";
  EXPECT_THAT(frame, Shows(95, 95, kWhite));
}

TEST_F(PageRenderingTest, PendingMarksAreWalkedById) {
  const Annotation* one = AddPending(10, 10, 50, kRed);
  const Annotation* other = AddPending(10, 10, 50, kGreen);
  const bool isRedOnTop = one->annotationId > other->annotationId;
  EXPECT_THAT(painted.Paint(), Shows(20, 20, isRedOnTop ? kRed : kGreen));
}

TEST_F(PageRenderingTest, AnErasedMarkIsNotPaintedInAnyLayer) {
  Annotation* picture = Mark("").Box(kSize, 0, 0, 20, kYellow).Release();
  PageTestAccess::SetBackgroundPicture(painted.page, picture);
  Annotation* remote = AddRemote(0, 40, 40, 20, kRed);
  Annotation* pending = AddPending(60, 60, 20, kBlue);
  PageTestAccess::Select(painted.page, remote);
  for (Annotation* mark : {picture, remote, pending}) {
    mark->Erase(1);
  }
  EXPECT_THAT(painted.Paint(), IsAll(kWhite)) << "its frame neither";
  remote->Erase(0);
  EXPECT_EQ((RECT{40, 40, 61, 61}), painted.Paint().InkBox()) << "restored, with its frame";
}

TEST_F(PageRenderingTest, ASelectionFrameLiesRightAboveItsMark) {
  PageTestAccess::Select(painted.page, AddRemote(1, 20, 20, 40, kRed));
  AddRemote(2, 50, 10, 30, kGreen);
  AddRemote(0, 10, 10, 20, kBlue);
  const Frame frame = painted.Paint();
  EXPECT_THAT(frame, Shows(20, 40, kFrameGrey));
  EXPECT_THAT(frame, Shows(25, 20, kFrameGrey)) << "over the mark below";
  EXPECT_THAT(frame, Shows(60, 30, kGreen)) << "under the mark above";
}

}  // namespace
