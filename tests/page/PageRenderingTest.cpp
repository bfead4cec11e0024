#include "page/AnnotationPage.h"
#include "support/Mark.h"
#include "support/ReplacedClock.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {100, 100};
constexpr std::uint32_t kYellow = 0xFFFFFF00;

class PageRenderingTest : public testing::Test {
 protected:
  Annotation* AddRemote(const std::string& id, int order, int x, int y, int side,
                        std::uint32_t color) {
    Annotation* mark = Mark(id).By("bob").Order(order).Box(kSize, x, y, side, color).Release();
    painted.page.AddAnnotation(mark, true);
    return mark;
  }
  Annotation* AddPending(int x, int y, int side, std::uint32_t color) {
    Annotation* mark = Mark("").By("ada").Box(kSize, x, y, side, color).Release();
    painted.page.AddAnnotation(mark, false);
    return mark;
  }

  PaintedPage painted{kSize};
};

TEST_F(PageRenderingTest, AnEmptyPageIsItsBackground) {
  EXPECT_THAT(painted.Paint(), IsAll(kWhite));
  painted.page.SetPageBackgroundColor(0x40FF8000);
  EXPECT_THAT(painted.Paint(), IsAll(0x40402000)) << "premultiplied";
}

// Boxes staircase down the page, each laid over the corner of the one before.
TEST_F(PageRenderingTest, LayersLieInTheirOrder) {
  auto picture = Mark("").Box(kSize, 0, 0, 30, kYellow).Make();
  PageTestAccess::SetBackgroundPicture(painted.page, picture.release());
  AddPending(50, 50, 30, kBlue);
  AddRemote("above", 2, 40, 40, 30, kGreen);
  AddRemote("below", 1, 20, 20, 30, kRed);
  Annotation& band = PageTestAccess::RubberBand(painted.page);
  band = *Mark("")
              .Pen(kBlack, 1, 1)
              .Shape(AnnotationSubTypeRectangle)
              .Points(kSize, {{70, 70}, {90, 90}})
              .Make();
  const Frame frame = painted.Paint();
  EXPECT_THAT(frame, Shows(10, 10, kYellow));
  EXPECT_THAT(frame, Shows(25, 25, kRed));
  EXPECT_THAT(frame, Shows(45, 45, kGreen));
  EXPECT_THAT(frame, Shows(60, 60, kBlue));
  EXPECT_THAT(frame, Shows(75, 75, kBlack));
  EXPECT_THAT(frame, Shows(70, 80, kFrameGrey)) << "the band's own frame";
  EXPECT_THAT(frame, Shows(95, 95, kWhite));
  band.Erase(1);
  EXPECT_THAT(painted.Paint(), Shows(75, 75, kBlue));
}

TEST_F(PageRenderingTest, PendingMarksAreWalkedById) {
  Annotation* one = AddPending(10, 10, 50, kRed);
  Annotation* other = AddPending(10, 10, 50, kGreen);
  const bool isRedOnTop = one->annotationId > other->annotationId;
  EXPECT_THAT(painted.Paint(), Shows(20, 20, isRedOnTop ? kRed : kGreen));
}

TEST_F(PageRenderingTest, AnErasedMarkIsNotPaintedInAnyLayer) {
  auto picture = Mark("").Box(kSize, 0, 0, 20, kYellow).Make();
  picture->Erase(1);
  PageTestAccess::SetBackgroundPicture(painted.page, picture.release());
  Annotation* remote = AddRemote("m", 0, 40, 40, 20, kRed);
  remote->Erase(1);
  AddPending(60, 60, 20, kBlue)->Erase(1);
  PageTestAccess::Select(painted.page, remote);
  EXPECT_THAT(painted.Paint(), IsAll(kWhite));
  remote->Erase(0);
  EXPECT_EQ((RECT{40, 40, 61, 61}), painted.Paint().InkBox()) << "restored, with its frame";
}

TEST_F(PageRenderingTest, ASelectionFrameLiesRightAboveItsMark) {
  Annotation* selected = AddRemote("selected", 1, 20, 20, 40, kRed);
  PageTestAccess::Select(painted.page, selected);
  AddRemote("above", 2, 50, 10, 30, kGreen);
  AddRemote("below", 0, 10, 10, 20, kBlue);
  const Frame frame = painted.Paint();
  EXPECT_THAT(frame, Shows(20, 40, kFrameGrey));
  EXPECT_THAT(frame, Shows(25, 20, kFrameGrey)) << "over the mark below";
  EXPECT_THAT(frame, Shows(60, 30, kGreen)) << "under the mark above";
  EXPECT_THAT(frame, Shows(60, 50, kFrameGrey));
}

TEST_F(PageRenderingTest, PendingMarksGetNoFrame) {
  PageTestAccess::Select(painted.page, AddPending(20, 20, 40, kRed));
  EXPECT_EQ((RECT{20, 20, 60, 60}), painted.Paint().InkBox());
}

TEST_F(PageRenderingTest, TemporaryInkGoesAfterEightSeconds) {
  const struct {
    ULONGLONG start, now;
    bool isShown;
  } cases[] = {{1000, 1000, true},       {1000, 8999, true},       {1000, 9000, false},
               {1, UINT64_MAX, false},   {0, 9000, true},          {9000, 8999, false},
               {UINT64_MAX, 7998, true}, {UINT64_MAX, 7999, false}};
  for (const auto& [start, now, isShown] : cases) {
    SCOPED_TRACE(testing::Message() << start << " seen at " << now);
    const ReplacedClock clock(now);
    PaintedPage page(kSize);
    Annotation* mark = Mark("").Box(kSize, 10, 10, 20, kRed).Release();
    mark->tempStartTick = start;
    page.page.AddAnnotation(mark, false);
    EXPECT_THAT(page.Paint(), Shows(15, 15, isShown ? kRed : kWhite));
    EXPECT_EQ(isShown ? 0 : 1, mark->IsErased());
    EXPECT_EQ(1U, PageTestAccess::Pending(page.page).size()) << "it stays in the page";
  }
}

TEST_F(PageRenderingTest, ConfirmedInkIsPermanent) {
  ReplacedClock clock(1000);
  Annotation* drawn = AddPending(10, 10, 20, kRed);
  drawn->tempStartTick = 1000;
  const auto echo = Mark(drawn->annotationId).By("ada").Box(kSize, 10, 10, 20, kRed).Make();
  painted.page.AddAnnotation(echo.get(), true);
  clock.Set(100'000);
  EXPECT_THAT(painted.Paint(), Shows(15, 15, kRed));
}

TEST_F(PageRenderingTest, PaintingStoresThePixelsOfThePageSize) {
  Annotation* mark = AddRemote("m", 0, 10, 10, 20, kRed);
  painted.page.UpdatePage(PageOf(200, 50), true);
  painted.Paint();
  EXPECT_THAT(mark->GetPoints().at(0), testing::ElementsAre(AnnotationPoint{20, 5, 0.1, 0.1},
                                                            AnnotationPoint{60, 15, 0.3, 0.3}));
}

}  // namespace
