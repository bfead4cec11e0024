// Marks far off their page. Searches near it are compared by the model.
#include <random>

#include "model/PlainShapes.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {240, 160};

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
    ASSERT_EQ(DoCross({from, to}, {a, b}) ? 1U : 0U, found.size()) << i;
  }
}

// Where rounding would let a triangle without an area have one.
TEST(FarMarkTest, AFlatTriangleHoldsNoPointHoweverWideItIs) {
  for (const int right : {9001, 12345, 100001}) {
    AnnotationPage page;
    page.AddAnnotation(Mark("flat")
                           .Shape(AnnotationSubTypeTriangle)
                           .Pen(kBlack, 1)
                           .Points(kSize, {{0, 100}, {right, 100}})
                           .Release(),
                       true);
    for (const LONG x : {-29, -8, 0, 50, right / 2, right}) {
      for (const LONG y : {0, 100, 200}) {
        EXPECT_EQ(nullptr, page.FindAnnotationAtPoint("", "", {x, y, 0, 0}, false))
            << right << ": " << x << ", " << y;
      }
    }
  }
}

TEST(FarMarkTest, EveryCoordinateGetsAnAnswer) {
  PaintedPage painted(kSize);
  AnnotationPage& page = painted.page;
  const LONG extremes[] = {INT32_MIN, INT32_MIN + 1, 0, INT32_MAX};
  const double odd[] = {NAN, INFINITY, -INFINITY, 1e300};
  static constexpr int kSubTypes[] = {0, 10, 14, 15, 19, 20};
  for (const int subType : kSubTypes) {
    for (const LONG x : extremes) {
      for (const double ratio : odd) {
        const std::string id =
            std::to_string(subType) + " " + std::to_string(x) + std::to_string(ratio);
        Mark mark(id);
        mark.By("bob").Shape(static_cast<AnnotationSubType>(subType)).Pen(kRed, 30);
        mark.Points(kSize, {{x, 5}, {INT32_MAX, x}, {INT32_MIN, 9}});
        Annotation* kept = mark.Release();
        page.AddAnnotation(kept, true);
        kept->StartMoving({0, 0, 0, 0});
        kept->Moving({0, 0, x == 0 ? ratio : 0, 0});
      }
    }
  }
  for (int round = 0; round < 2; ++round) {
    for (const LONG x : extremes) {
      for (const LONG y : extremes) {
        page.FindAnnotationsOnSegment("", "", {x, y, 0, 0}, {y, y, 0, 0});
        page.FindAnnotationAtPoint("", "", {x, y, NAN, NAN}, round == 0);
        page.EraseAnnotations("", "", {x, y}, {0, 0});
        page.SelectAnnotations("", {x, y, y, x});
        page.StartSelecting("", "", {x, y});
        page.MoveSelecting({y, x});
        page.EndSelecting();
      }
    }
    painted.Paint();
  }
  page.EraseSelectedAnnotations();
  page.SelectAnnotations("bob", {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN});
  EXPECT_EQ(PageTestAccess::PaintPlaces(page).size(), page.GetSelectedAnnotations().size())
      << "nothing lies outside of everything";
}

}  // namespace
