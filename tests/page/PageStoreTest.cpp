#include <algorithm>
#include <random>

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

TEST_F(PageStoreTest, AStrayPlaceInTheOrderIsSkipped) {
  PageTestAccess::AddStrayPaintEntry(page, {0, "nobody", "", "m"});
  page.AddAnnotation(Mark("m").By("bob").Order(1).Box(kSize, 0, 0, 50, kRed).Release(), true);
  PageTestAccess::AddStrayPaintEntry(page, {2, "bob", "", "other"});
  EXPECT_THAT(painted.Paint(), Shows(10, 10, kRed));
}

// What a page must do with what arrives, told without any of its means: marks by author and id, and
// one list of places.
struct PlainStore {
  struct Place {
    int order;
    std::string user, id;
  };
  std::map<std::pair<std::string, std::string>, std::map<unsigned, std::vector<AnnotationPoint>>>
      marks;
  std::vector<Place> places;
  std::map<std::string, std::vector<AnnotationPoint>> pending;

  // True when the page keeps the object.
  bool Receive(const std::string& user, const std::string& id, int order, unsigned subModel,
               const std::vector<AnnotationPoint>& points) {
    const auto key = std::pair(user, id);
    const bool isNew = !marks.contains(key);
    const auto drawn = pending.find(id);
    const bool confirms = isNew && drawn != pending.end();
    if (confirms) {
      marks[key][0] = drawn->second;
    }
    if (drawn != pending.end()) {
      pending.erase(drawn);
    }
    marks[key][subModel] = points;
    if (isNew && subModel == 0) {
      const auto before = [order](const Place& place) { return place.order > order; };
      places.insert(std::find_if(places.begin(), places.end(), before), {order, user, id});
    }
    return isNew && !confirms;
  }
};

class PageStoreModelTest : public testing::TestWithParam<unsigned> {
 protected:
  void DrawHere() {
    const auto points = SomePoints();
    Annotation* mark = Mark("").By("ada").Release();
    mark->InsertPoints(0, points);
    page.AddAnnotation(mark, false);
    plain.pending[mark->annotationId] = points;
    drawnIds.push_back(mark->annotationId);
  }

  // A participant's mark, the echo of one drawn here, a repeated one, or a later fragment.
  void ReceiveSomething() {
    const bool isEcho = !drawnIds.empty() && random() % 2 == 0;
    const std::string id = isEcho ? drawnIds[random() % drawnIds.size()]
                                  : std::string(1, static_cast<char>('a' + random() % 12));
    const std::string user = isEcho && random() % 4 != 0 ? "ada"
                             : random() % 2 == 0         ? "bob"
                                                         : "eve";
    const bool isKnown = plain.marks.contains({user, id});
    const unsigned subModel = isKnown ? random() % 4 : 0;
    const int order = static_cast<int>(random() % 7) - 3;
    auto mark = Mark(id).By(user).Order(order).Fragment(static_cast<int>(subModel)).Make();
    const auto points = SomePoints();
    mark->InsertPoints(0, points);
    page.AddAnnotation(mark.get(), true);
    if (plain.Receive(user, id, order, subModel, points)) {
      static_cast<void>(mark.release());
    }
  }

  std::vector<AnnotationPoint> SomePoints() {
    std::vector<POINT> pixels(1 + random() % 4);
    for (POINT& pixel : pixels) {
      pixel = {static_cast<LONG>(random() % 100), static_cast<LONG>(random() % 100)};
    }
    return PointsOn(kSize, pixels);
  }

  void ExpectSame() const {
    std::size_t stored = 0;
    for (const auto& [user, marks] : PageTestAccess::Confirmed(page)) {
      for (const auto& [id, mark] : marks) {
        ++stored;
        const auto found = plain.marks.find({user, id});
        ASSERT_NE(plain.marks.end(), found) << user << " " << id;
        ASSERT_EQ(found->second, mark->GetPoints()) << user << " " << id;
      }
    }
    ASSERT_EQ(plain.marks.size(), stored);
    std::vector<std::string> ids;
    for (const auto& place : plain.places) {
      ids.push_back(place.id);
    }
    ASSERT_EQ(ids, PageTestAccess::PaintOrder(page));
    const auto pending = PageTestAccess::Pending(page);
    ASSERT_EQ(plain.pending.size(), pending.size());
    for (const auto& [id, mark] : pending) {
      ASSERT_EQ(1U, plain.pending.count(id));
      ASSERT_EQ(plain.pending.at(id), PointsOf(*mark, 0));
    }
  }

  std::mt19937 random{GetParam()};
  AnnotationPage page;
  PlainStore plain;
  std::vector<std::string> drawnIds;
};

TEST_P(PageStoreModelTest, ThePageMergesAsThePlainStoreDoes) {
  for (int step = 0; step < 150; ++step) {
    if (random() % 4 == 0) {
      DrawHere();
    } else {
      ReceiveSomething();
    }
    ASSERT_NO_FATAL_FAILURE(ExpectSame()) << "step " << step;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PageStoreModelTest, testing::Range(0U, 20U));

}  // namespace
