#include "page/AnnotationPage.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::AllOf;

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
  PageTestAccess::Select(painted.page, AddRemote(1, 20, 20, 30, kRed));
  PageTestAccess::RubberBand(painted.page) = *Mark("").Box(kSize, 70, 70, 20, kBlack).Make();
  const Frame frame = painted.Paint();
  EXPECT_THAT(frame, AllOf(Shows(10, 10, kYellow), Shows(25, 25, kRed), Shows(45, 45, kGreen),
                           Shows(60, 60, kBlue), Shows(75, 75, kBlack), Shows(95, 95, kWhite)));
  EXPECT_THAT(frame, Shows(70, 80, kFrameGrey)) << "the band's own frame";
  EXPECT_THAT(frame, Shows(25, 20, kFrameGrey)) << "over the picture below";
  EXPECT_THAT(frame, Shows(50, 45, kGreen)) << "under the mark above";
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

}  // namespace
