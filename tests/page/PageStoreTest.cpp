#include "page/AnnotationPage.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr CurrentAnnotPageSize kSize = {100, 100};

// A local mark of the page, as a press makes it.
Annotation* Draw(AnnotationPage& page, const std::vector<POINT>& pixels) {
  Annotation* mark = Mark("to be replaced").By("ada").Points(kSize, pixels).Release();
  page.AddAnnotation(mark, false);
  return mark;
}

std::vector<AnnotationPoint> PointsOf(const Annotation& mark, unsigned subModel) {
  return mark.GetPoints()[subModel];
}

class PageStoreTest : public testing::Test {
 protected:
  const Annotation* Stored(const std::string& user, const std::string& id) {
    return PageTestAccess::Confirmed(page)[user][id];
  }
  std::vector<std::string> Order() { return PageTestAccess::PaintOrder(page); }

  PaintedPage painted{kSize};
  AnnotationPage& page = painted.page;
};

TEST_F(PageStoreTest, NothingComesOfNothing) {
  Annotation* mark = Draw(page, {{1, 1}});
  PageTestAccess::Select(page, mark);
  page.AddAnnotation(nullptr, true);
  page.AddAnnotation(nullptr, false);
  EXPECT_EQ(mark, page.GetCurrentAnnotation());
  EXPECT_EQ(1U, PageTestAccess::SelectedCount(page));
  EXPECT_THAT(PageTestAccess::Pending(page), SizeIs(1));
  EXPECT_THAT(PageTestAccess::Confirmed(page), IsEmpty());
}

TEST_F(PageStoreTest, ALocalMarkGetsAFreshIdAndDropsTheSelection) {
  Annotation* selected = Draw(page, {{1, 1}});
  PageTestAccess::Select(page, selected);
  Annotation* mark = Draw(page, {{1, 1}});
  EXPECT_THAT(mark->annotationId, testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9a-f]{4}-"
                                                        "[0-9A-F]{4}-[0-9A-F]{12}"));
  EXPECT_EQ(mark, PageTestAccess::Pending(page)[mark->annotationId]);
  EXPECT_EQ(mark, page.GetCurrentAnnotation());
  EXPECT_EQ(0U, PageTestAccess::SelectedCount(page));
  EXPECT_THAT(Order(), IsEmpty());
}

TEST_F(PageStoreTest, ANewRemoteMarkIsAdoptedWithItsFrameAndItsPlace) {
  Annotation* mark = Mark("m").By("bob").Points(kSize, {{10, 20}, {30, 20}}).Release();
  page.AddAnnotation(mark, true);
  EXPECT_EQ(mark, Stored("bob", "m"));
  EXPECT_THAT(Order(), ElementsAre("m"));
  EXPECT_EQ((RECT{10, 19, 30, 21}), AnnotationTestAccess::FrameOf(*mark));
  EXPECT_EQ(nullptr, page.GetCurrentAnnotation());
}

TEST_F(PageStoreTest, EqualOrdersStandAsTheyCame) {
  const struct {
    const char* id;
    int order;
  } marks[] = {{"5a", 5},          {"3", 3},           {"5b", 5}, {"1", 1},
               {"max", INT32_MAX}, {"min", INT32_MIN}, {"5c", 5}};
  for (const auto& [id, order] : marks) {
    page.AddAnnotation(Mark(id).By("bob").Order(order).Release(), true);
  }
  EXPECT_THAT(Order(), ElementsAre("min", "1", "3", "5a", "5b", "5c", "max"));
}

TEST_F(PageStoreTest, AFurtherFragmentReplacesItsSubModelAndStaysTheCallers) {
  Annotation* mark = Mark("m").By("bob").Order(7).Points(kSize, {{1, 1}, {2, 2}}).Release();
  page.AddAnnotation(mark, true);
  for (const LONG x : {5, 6}) {
    const auto fragment = Mark("m")
                              .By("bob")
                              .Order(1)
                              .Fragment(1)
                              .Pen(kRed, 1)
                              .Points(kSize, {{x, x}, {9, 9}})
                              .Make();
    page.AddAnnotation(fragment.get(), true);
    EXPECT_EQ(PointsOn(kSize, {{x, x}, {9, 9}}), PointsOf(*mark, 1));
  }
  EXPECT_EQ(PointsOn(kSize, {{1, 1}, {2, 2}}), PointsOf(*mark, 0));
  EXPECT_EQ(mark, Stored("bob", "m"));
  EXPECT_EQ(7, mark->order);
  EXPECT_EQ(kBlack, mark->pen.color);
  EXPECT_THAT(Order(), ElementsAre("m"));
  EXPECT_EQ((RECT{1, 1, 9, 9}), AnnotationTestAccess::FrameOf(*mark));
}

TEST_F(PageStoreTest, AnEchoConfirmsTheVeryMarkThatWasDrawn) {
  page.AddAnnotation(Mark("earlier").By("bob").Order(50).Release(), true);
  Annotation* drawn = Draw(page, {{1, 1}, {2, 2}});
  const auto echo =
      Mark(drawn->annotationId).By("ada").Order(9).Points(kSize, {{3, 3}, {4, 4}}).Make();
  page.AddAnnotation(echo.get(), true);
  EXPECT_THAT(PageTestAccess::Pending(page), IsEmpty());
  EXPECT_EQ(drawn, Stored("ada", drawn->annotationId));
  EXPECT_EQ(PointsOn(kSize, {{3, 3}, {4, 4}}), PointsOf(*drawn, 0));
  EXPECT_EQ(0, drawn->order) << "the place is the echo's, the field stays the mark's own";
  EXPECT_THAT(Order(), ElementsAre(drawn->annotationId, "earlier"));
  EXPECT_EQ(drawn, page.GetCurrentAnnotation()) << "confirming ends no gesture";

  page.AddAnnotation(echo.get(), true);
  EXPECT_THAT(Order(), SizeIs(2)) << "a repeated echo makes no second place";
}

TEST_F(PageStoreTest, AnEchoOfLaterFragmentsConfirmsWithoutAPlace) {
  Annotation* drawn = Draw(page, {{1, 1}, {2, 2}});
  const auto echo = Mark(drawn->annotationId).By("ada").Fragment(1).Points(kSize, {{3, 3}}).Make();
  page.AddAnnotation(echo.get(), true);
  EXPECT_EQ(drawn, Stored("ada", drawn->annotationId));
  EXPECT_EQ(PointsOn(kSize, {{1, 1}, {2, 2}}), PointsOf(*drawn, 0));
  EXPECT_EQ(PointsOn(kSize, {{3, 3}}), PointsOf(*drawn, 1));
  EXPECT_THAT(Order(), IsEmpty());
}

TEST_F(PageStoreTest, AMarkMayEchoItself) {
  Annotation* drawn = Draw(page, {{1, 1}, {2, 2}});
  drawn->subModelIndex = 0;
  page.AddAnnotation(drawn, true);
  EXPECT_EQ(drawn, Stored("ada", drawn->annotationId));
  EXPECT_EQ(PointsOn(kSize, {{1, 1}, {2, 2}}), PointsOf(*drawn, 0));
  EXPECT_THAT(Order(), SizeIs(1));
  drawn->subModelIndex = 1;
  page.AddAnnotation(drawn, true);
  EXPECT_EQ(PointsOf(*drawn, 0), PointsOf(*drawn, 1)) << "by then a fragment like any other";
}

TEST_F(PageStoreTest, OneIdMayStandUnderTwoAuthors) {
  page.AddAnnotation(Mark("m").By("ada").Release(), true);
  page.AddAnnotation(Mark("m").By("bob").Release(), true);
  page.AddAnnotation(Mark("").By("").Release(), true);
  EXPECT_NE(Stored("ada", "m"), Stored("bob", "m"));
  EXPECT_THAT(Order(), ElementsAre("m", "m", ""));
}

TEST_F(PageStoreTest, AMarkWithoutAFragmentNumberIsKeptButNotPainted) {
  page.AddAnnotation(Mark("m").By("bob").Fragment(-1).Box(kSize, 0, 0, 50, kRed).Release(), true);
  EXPECT_NE(nullptr, Stored("bob", "m"));
  EXPECT_THAT(Order(), IsEmpty());
  EXPECT_THAT(painted.Paint(), IsAll(kWhite));
}

TEST_F(PageStoreTest, AMarkWithoutItsFirstFragmentGetsOneMorePlaceFromTheNext) {
  Annotation* mark = Mark("m").By("bob").Order(1).Box(kSize, 0, 0, 50, kRed).Release();
  page.AddAnnotation(mark, true);
  page.AddAnnotation(Mark("n").By("bob").Order(2).Box(kSize, 0, 0, 50, kBlack).Release(), true);
  mark->ClearPoints();
  for (const int order : {3, 9}) {
    const auto again = Mark("m").By("bob").Order(order).Box(kSize, 0, 0, 50, kRed).Make();
    page.AddAnnotation(again.get(), true);
  }
  EXPECT_THAT(Order(), ElementsAre("m", "n", "m"));
  EXPECT_THAT(painted.Paint(), Shows(10, 10, kRed));
  EXPECT_THAT(page.EraseAnnotations("", "", {25, 25}, {25, 75}), ElementsAre("m", "n", "m"));
}

TEST_F(PageStoreTest, AnEmptyFragmentThatCameFirstLeavesNoGap) {
  page.AddAnnotation(Mark("m").By("bob").Fragment(1).Release(), true);
  for (const int index : {2, 0}) {
    const auto fragment = Mark("m").By("bob").Fragment(index).Points(kSize, {{9, 9}}).Make();
    page.AddAnnotation(fragment.get(), true);
  }
  const Annotation copy(*page.GetAnnotation("bob", "m"));
  EXPECT_EQ(PointsOn(kSize, {{9, 9}}), PointsOf(copy, 2)) << "copied as far as it is connected";
}

TEST_F(PageStoreTest, APageThatWasReleasedStartsAnew) {
  const auto stroke = [](const std::string& id) {
    return Mark(id).By("bob").Points(kSize, {{10, 20}, {30, 20}}).Release();
  };
  page.AddAnnotation(stroke("a"), true);
  page.AddAnnotation(stroke("b"), true);
  page.ReleaseSurface();
  EXPECT_EQ("", page.EraseAnnotations("", "", {20, 20}));
  page.AddAnnotation(stroke("c"), true);
  EXPECT_EQ("c", page.EraseAnnotations("", "", {20, 20}));
}

}  // namespace
