#include <random>

#include "support/Mark.h"
#include "support/PlainHits.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {240, 160};
constexpr int kMarks = 250;

struct Filter {
  std::string user, sub;
};

// A page of random marks, some erased, some moved, some without a place in the paint order, and
// every search of it beside a walk over all marks.
class PageSearchTest : public testing::TestWithParam<unsigned> {
 protected:
  int Any(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
  LONG Within(int range) { return Any(2 * range + 1) - range; }
  POINT Near(POINT p, int range) { return {p.x + Within(range), p.y + Within(range)}; }
  POINT AnyPoint() {
    const int reach = Any(40) == 0 ? 20'000 : 40;
    return {Any(kSize.width) + Within(reach), Any(kSize.height) + Within(reach)};
  }

  // Long and short, slanted, nearly and quite parallel to an axis.
  std::vector<POINT> AnyPath() {
    std::vector<POINT> path = {AnyPoint()};
    for (int left = Any(4) == 0 ? 40 : Any(5); left > 0; --left) {
      const POINT last = path.back();
      switch (Any(4)) {
        case 0:
          path.push_back({last.x + Within(2), last.y + Within(200)});
          break;
        case 1:
          path.push_back({last.x + Within(200), last.y + Within(2)});
          break;
        default:
          path.push_back(Near(last, Any(10) == 0 ? 150 : 12));
      }
    }
    return path;
  }

  void AddMark() {
    static constexpr int kSubTypes[] = {0, 0, 0, 7, 10, 14, 15, 19, 20};
    const std::string id = "m" + std::to_string(marks.size());
    auto mark = Mark(id)
                    .By("user" + std::to_string(Any(3)))
                    .Order(Any(9) - 4)
                    .Fragment(Any(12) == 0 ? 1 : 0)
                    .Shape(static_cast<AnnotationSubType>(kSubTypes[Any(9)]))
                    .Pen(kBlack, Any(46) - 5)
                    .Points(page.GetSize(), AnyPath())
                    .Make();
    mark->userSubId = "sub" + std::to_string(Any(2));
    if (Any(8) == 0) {
      mark->type = AnnotationTypePicture;
    }
    marks[id] = mark.get();
    page.AddAnnotation(mark.release(), true);
  }

  Annotation& AnyMark() { return *marks.at("m" + std::to_string(Any(kMarks))); }

  // A pixel of the mark and the one before it, in whatever sub-model.
  std::pair<POINT, POINT> AnySegment() {
    const Annotation::SubModels points = AnyMark().GetPoints();
    const auto& list = std::next(points.begin(), Any(static_cast<int>(points.size())))->second;
    if (list.size() < 2) {
      return {AnyPoint(), AnyPoint()};
    }
    const auto at = 1 + static_cast<std::size_t>(Any(static_cast<int>(list.size()) - 1));
    return {{list[at - 1].x, list[at - 1].y}, {list[at].x, list[at].y}};
  }

  void ReceiveFragment() {
    const Annotation& known = AnyMark();
    const auto fragment = Mark(known.annotationId)
                              .By(known.userId)
                              .Order(Any(9))
                              .Fragment(Any(4))
                              .Points(page.GetSize(), AnyPath())
                              .Make();
    fragment->userSubId = known.userSubId;
    page.AddAnnotation(fragment.get(), true);
  }

  void Drag() {
    const POINT from = Near(AnySegment().first, 2);
    page.StartSelecting("", "", from);
    page.EndSelecting();
    page.StartSelecting("", "", from);
    page.MoveSelecting(Near(from, 60));
    page.EndSelecting();
    for (const auto& [id, mark] : page.GetSelectedAnnotations()) {
      if (Any(3) == 0) {
        page.CancelAnnotation(id);
      }
    }
  }

  void ChangeSomething() {
    switch (Any(8)) {
      case 0:
        ReceiveFragment();
        break;
      case 1:
      case 2:
        Drag();
        break;
      case 3:
        page.EraseAnnotation(AnyMark().userId, AnyMark().annotationId);
        break;
      case 4:
        AnyMark().AddPoint(PointsOn(page.GetSize(), {AnyPoint()})[0]);
        break;
      case 5:
        AnyMark().InsertPoints(static_cast<unsigned>(Any(3)), PointsOn(kSize, AnyPath()));
        break;
      case 6:
        AnyMark().SetRectEx(page.GetSize());
        break;
      default:
        AnyMark().Erase(0);
    }
  }

  template <class Hits>
  std::vector<Annotation*> Walk(const Filter& filter, const Hits& hits) const {
    const std::vector<std::string> order = PageTestAccess::PaintOrder(page);
    std::vector<Annotation*> found;
    for (auto id = order.rbegin(); id != order.rend(); ++id) {
      Annotation* mark = marks.at(*id);
      const bool passes =
          filter.user.empty() ||
          (mark->userId == filter.user && (filter.sub.empty() || mark->userSubId == filter.sub));
      if (passes && mark->erased == 0 && hits(*mark)) {
        found.push_back(mark);
      }
    }
    return found;
  }

  static std::vector<std::string> IdsOf(const std::vector<Annotation*>& found) {
    std::vector<std::string> ids;
    for (const Annotation* mark : found) {
      ids.push_back(mark->annotationId);
    }
    return ids;
  }

  void CheckSegment(const Filter& filter, POINT from, POINT to) {
    const auto expected =
        Walk(filter, [&](const Annotation& mark) { return PlainlyTouches(mark, from, to); });
    const std::vector<Annotation*> found = page.FindAnnotationsOnSegment(
        filter.user, filter.sub, {from.x, from.y, 0, 0}, {to.x, to.y, 0, 0});
    ASSERT_EQ(IdsOf(expected), IdsOf(found))
        << from.x << "," << from.y << " - " << to.x << "," << to.y;
    if (page.IsPointInPage(from) != 0 || page.IsPointInPage(to) != 0) {
      ASSERT_EQ(IdsOf(expected), page.EraseAnnotations(filter.user, filter.sub, from, to));
    }
    segmentHits += expected.size();
  }

  void CheckPoint(const Filter& filter, POINT at) {
    const auto hit = Walk(filter, [&](const Annotation& mark) { return PlainlyHits(mark, at); });
    const auto framed =
        Walk(filter, [&](const Annotation& mark) { return PlainlyFramed(mark, at); });
    const AnnotationPoint point = {at.x, at.y, 0, 0};
    Annotation* topmost = hit.empty() ? nullptr : hit[0];
    ASSERT_EQ(topmost, page.FindAnnotationAtPoint(filter.user, filter.sub, point, false))
        << at.x << "," << at.y;
    ASSERT_EQ(framed.empty() ? nullptr : framed[0],
              page.FindAnnotationAtPoint(filter.user, filter.sub, point, true))
        << at.x << "," << at.y;
    if (page.IsPointInPage(at) != 0) {
      ASSERT_EQ(topmost != nullptr ? topmost->annotationId : "",
                page.EraseAnnotations(filter.user, filter.sub, at));
    }
    pointHits += hit.size();
  }

  void CheckRect(const std::string& user, const RECT& rect) {
    PageTestAccess::Annotations expected;
    for (const auto& [id, mark] : marks) {
      if ((user.empty() || mark->userId == user) && PlainlyInside(*mark, rect)) {
        expected[id] = mark;
      }
    }
    page.EraseSelectedAnnotations();
    page.SelectAnnotations(user, rect);
    ASSERT_EQ(expected, page.GetSelectedAnnotations());
    boxHits += expected.size();
  }

  Filter AnyFilter() {
    return {Any(2) == 0 ? "" : "user" + std::to_string(Any(4)),
            Any(2) == 0 ? "" : "sub" + std::to_string(Any(2))};
  }

  void Search() {
    const Filter filter = AnyFilter();
    const auto [a, b] = AnySegment();
    const POINT shift = {Within(3), Within(3)};
    const POINT beside = {a.x + shift.x, a.y + shift.y};
    // Along a segment of some mark, 0 to 3 pixels off it or past its end; or anywhere.
    switch (Any(4)) {
      case 0:
        CheckSegment(filter, beside, Near({b.x + shift.x, b.y + shift.y}, 1));
        break;
      case 1:
        CheckSegment(filter, Near(b, 3), {2 * b.x - a.x + Within(3), 2 * b.y - a.y + Within(3)});
        break;
      default:
        CheckSegment(filter, AnyPoint(), Any(2) == 0 ? AnyPoint() : Near(a, 5));
    }
    CheckPoint(filter, Any(2) == 0 ? AnyPoint() : Near({(a.x + b.x) / 2, (a.y + b.y) / 2}, 16));
    CheckPoint(filter, Near(a, 17));
    const POINT corner = AnyPoint();
    CheckRect(filter.user, {corner.x, corner.y, a.x, a.y});
  }

  std::mt19937 random{GetParam()};
  PaintedPage painted{kSize};
  AnnotationPage& page = painted.page;
  std::map<std::string, Annotation*> marks;
  std::size_t segmentHits = 0;
  std::size_t pointHits = 0;
  std::size_t boxHits = 0;
};

TEST_P(PageSearchTest, FindsWhatAWalkOverAllMarksFinds) {
  while (marks.size() < kMarks) {
    AddMark();
  }
  for (int round = 0; round < 12; ++round) {
    for (int change = 0; change < 15; ++change) {
      ChangeSomething();
    }
    if (round % 4 == 3) {
      page.UpdatePage(PageOf(kSize.width + Any(80), kSize.height - Any(80)), true);
    }
    if (round % 2 == 1) {
      painted.Paint();
    }
    for (int search = 0; search < 40; ++search) {
      ASSERT_NO_FATAL_FAILURE(Search()) << "round " << round << ", search " << search;
    }
  }
  EXPECT_GT(segmentHits, 1000U);
  EXPECT_GT(pointHits, 300U);
  EXPECT_GT(boxHits, 300U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, PageSearchTest, testing::Range(0U, 6U));

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
    auto mark = Mark("far").By("bob").Points(kSize, {a, b}).Make();
    page.AddAnnotation(mark.get(), true);
    const Annotation& kept = *mark.release();
    const POINT from = {x, -1500 + within(400)};
    const POINT to = {x + 1, -900 + within(100)};
    const bool touches = PlainlyTouches(kept, from, to);
    const auto found =
        page.FindAnnotationsOnSegment("", "", {from.x, from.y, 0, 0}, {to.x, to.y, 0, 0});
    ASSERT_EQ(touches ? 1U : 0U, found.size()) << i;
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
  EXPECT_EQ(PageTestAccess::PaintOrder(page).size(), page.GetSelectedAnnotations().size())
      << "nothing lies outside of everything";
}

}  // namespace
