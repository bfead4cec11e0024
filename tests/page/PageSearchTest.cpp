// Marks that change between frames, or lie far off. The other searches are compared by the model.
#include <random>

#include <parchlet/Utils.h>

#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {240, 160};

// Searches look at a table that a mark reports to whenever its points change.
TEST(PageSearchTest, AChangedMarkIsFoundWhereItIsBeforeTheNextFrame) {
  AnnotationPage page;
  Annotation* mark = Mark("m").By("bob").Points(kSize, {{5, 5}, {9, 9}}).Release();
  page.AddAnnotation(mark, true);
  const auto isAt = [&](LONG x, LONG y) { return page.EraseAnnotations("", "", {x, y}) == "m"; };
  AnnotationPageInfo info = PageOf(kSize.width, kSize.height);
  MemoryWindow window({0, 0, kSize.width, kSize.height});
  ASSERT_TRUE(page.InitPage(window.Handle(), info, nullptr));
  EXPECT_TRUE(isAt(9, 9));
  mark->AddPoint({90, 60, 0, 0});
  EXPECT_TRUE(isAt(90, 60));
  mark->InsertPoints(1, {{200, 20, 0, 0}, {200, 90, 0, 0}});
  EXPECT_TRUE(isAt(200, 55));
  mark->InsertPoints(1, {{20, 150, 0, 0}, {90, 150, 0, 0}});
  EXPECT_TRUE(isAt(55, 150));
  *mark = *Mark("m").By("bob").Points(kSize, {{230, 5}, {230, 15}}).Make();
  EXPECT_TRUE(isAt(230, 10));
  page.SelectAnnotations("bob", {230, 5, 230, 15});
  EXPECT_EQ(1U, page.GetSelectedAnnotations().count("m"));
  mark->ClearPoints();
  mark->InsertPoints(0, {{150, 120, 0, 0}, {170, 120, 0, 0}});
  EXPECT_TRUE(isAt(160, 120));
}

// Where rounding lets steep lines cross that lie far apart.
TEST(FarMarkTest, MarksAtTheEndOfTheTableAreFoundAsTheFormulasSay) {
  std::mt19937 random(7);
  const auto within = [&](int range) {
    return static_cast<LONG>(random() % (2U * range + 1)) - range;
  };
  for (int i = 0; i < 400; ++i) {
    AnnotationPage page;
    const LONG x = (1 << 20) - 10 + within(12);
    const POINT a = {x, within(20)};
    const POINT b = {x + 1, (1 << 20) - 10 + within(12)};
    page.AddAnnotation(Mark("far").By("bob").Points(kSize, {a, b}).Release(), true);
    const POINT from = {x, -1500 + within(400)};
    const POINT to = {x + 1, -900 + within(100)};
    const auto found =
        page.FindAnnotationsOnSegment("", "", {from.x, from.y, 0, 0}, {to.x, to.y, 0, 0});
    ASSERT_EQ(Utils::IsLineIntersect(from, to, a, b) ? 1U : 0U, found.size()) << i;
  }
}

// Where rounding would let a triangle without an area have one.
TEST(FarMarkTest, AFlatTriangleHoldsNoPointHoweverWideItIs) {
  for (const int right : {9001, 12345, 100001}) {
    AnnotationPage page;
    Mark flat("flat");
    flat.Shape(AnnotationSubTypeTriangle).Pen(kBlack, 1).Points(kSize, {{0, 100}, {right, 100}});
    page.AddAnnotation(flat.Release(), true);
    for (const LONG x : {-29, -8, 0, 50, right / 2, right}) {
      for (const LONG y : {0, 100, 200}) {
        EXPECT_EQ(nullptr, page.FindAnnotationAtPoint("", "", {x, y, 0, 0}, false))
            << right << ": " << x << ", " << y;
      }
    }
  }
}

}  // namespace
