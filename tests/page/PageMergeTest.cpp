#include <algorithm>
#include <random>

#include "support/Mark.h"
#include "support/PlainHits.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {100, 100};

using SubModels = Annotation::SubModels;
using Points = std::vector<AnnotationPoint>;

// Sub-models 0, 1, 2, ... up to the first missing one.
unsigned ConnectedCount(const SubModels& points) {
  unsigned count = 0;
  while (points.contains(count)) {
    ++count;
  }
  return count;
}

struct PlainMark {
  const Annotation* object = nullptr;  // the one that the page is to keep
  SubModels points;
  bool isErased = false;
  AnnotationPoint origin{};

  PlainMark Copy() const {
    PlainMark copy = *this;
    copy.points.clear();
    for (unsigned number = 0; number < ConnectedCount(points); ++number) {
      if (!points.at(number).empty()) {
        copy.points[number] = points.at(number);
      }
    }
    return copy;
  }
  void Move(const AnnotationPoint& to) {
    for (unsigned number = 0; number < ConnectedCount(points); ++number) {
      for (AnnotationPoint& point : points.at(number)) {
        point.xRatio += to.xRatio - origin.xRatio;
        point.yRatio += to.yRatio - origin.yRatio;
      }
    }
    origin = to;
  }
};

// What a page must do, told without any of its means.
struct PlainPage {
  struct Place {
    int order;
    std::string user, id;
  };
  std::map<std::string, std::map<std::string, PlainMark>> confirmed;
  std::map<std::string, PlainMark> pending;
  std::vector<Place> places;
  std::map<std::string, const Annotation*> selected;
  const Annotation* current = nullptr;
  bool isMoving = false;

  // True when the page keeps the object.
  bool Receive(const Annotation& given) {
    const std::string id = given.annotationId;
    const SubModels points = given.GetPoints();
    auto& authored = confirmed[given.userId];
    const auto index = static_cast<unsigned>(given.subModelIndex);
    const bool hasPlace = std::any_of(places.begin(), places.end(), [&](const Place& place) {
      return place.user == given.userId && place.id == id;
    });
    const bool getsPlace =
        index == 0 && (!authored.contains(id) || !authored[id].points.contains(0) || !hasPlace);
    const bool isNew = !authored.contains(id) && !pending.contains(id);
    if (!authored.contains(id) && pending.contains(id)) {
      authored[id] = pending[id];
    }
    pending.erase(id);
    PlainMark& mark = authored[id];
    const int order = given.order;
    if (isNew) {
      mark.object = &given;
    }
    const bool isBare = isNew && given.subModelIndex <= 0 && points.empty();
    if (!isBare) {
      const bool isNumbered = !isNew || given.subModelIndex >= 0;
      mark.points[isNumbered ? index : 0] = points.contains(0) ? points.at(0) : Points();
      mark.points.try_emplace(0);
    }
    if (getsPlace) {
      places.push_back({order, given.userId, id});
      std::stable_sort(places.begin(), places.end(),
                       [](const Place& a, const Place& b) { return a.order < b.order; });
    }
    return isNew;
  }

  void Cancel(const std::string& id) {
    if (!pending.contains(id)) {
      return;
    }
    const PlainMark backup = pending[id];
    pending.erase(id);
    for (auto& [user, authored] : confirmed) {
      if (authored.contains(id)) {
        PlainMark& mark = authored[id];
        mark = {mark.object, backup.Copy().points, false, backup.origin};
        break;
      }
    }
    current = current == backup.object ? nullptr : current;
  }

  PlainMark& MarkOf(const Annotation* object) {
    for (auto& [user, authored] : confirmed) {
      for (auto& [id, mark] : authored) {
        if (mark.object == object) {
          return mark;
        }
      }
    }
    throw std::logic_error("the selection holds what the page does not");
  }

  int Clear(const std::string& user, const std::string& sub) {
    if (!user.empty() && !confirmed.contains(user)) {
      return 0;
    }
    for (auto& [author, authored] : confirmed) {
      for (auto& [id, mark] : authored) {
        const bool isMeant = sub.empty() || mark.object->userSubId == sub;
        mark.isErased = mark.isErased || user.empty() || (author == user && isMeant);
      }
    }
    return 1;
  }
};

// Three authors, one of whom draws here, and messages in any order.
class PageMergeTest : public testing::TestWithParam<unsigned> {
 protected:
  int Any(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
  POINT AnyPixel() { return {Any(100), Any(100)}; }
  std::string AnyUser() { return std::vector<std::string>{"ada", "bob", "eve"}[random() % 3]; }
  std::string AnyId() {
    return drawnIds.empty() || Any(2) == 0 ? std::string(1, static_cast<char>('a' + Any(8)))
                                           : drawnIds[random() % drawnIds.size()];
  }
  std::vector<POINT> AnyPixels() {
    std::vector<POINT> pixels(static_cast<std::size_t>(Any(5)));
    std::generate(pixels.begin(), pixels.end(), [&] { return AnyPixel(); });
    return pixels;
  }

  void DrawHere() {
    Annotation* mark = Mark("").By("ada").Fragment(-1).Order(Any(7)).Release();
    page.AddAnnotation(mark, false);
    for (const POINT& pixel : AnyPixels()) {
      mark->AddPoint(PointsOn(kSize, {pixel})[0]);
    }
    drawnIds.push_back(mark->annotationId);
    plain.pending[mark->annotationId] = {mark, mark->GetPoints()};
    plain.current = mark;
    plain.selected.clear();
  }

  void ReceiveSomething() {
    const std::string id = AnyId();
    const int index = Any(15) == 0 ? -1 : Any(4);
    auto made = Mark(id)
                    .By(id.size() > 1 ? "ada" : AnyUser())
                    .Order(Any(7) - 3)
                    .Fragment(index)
                    .Points(kSize, AnyPixels())
                    .Make();
    made->userSubId = "sub" + std::to_string(Any(2));
    if (Any(12) == 0) {
      made->ClearPoints();
    }
    messages.emplace_back(std::make_unique<Annotation>(*made), made->GetPoints().contains(0));
    Hand(std::move(made));
  }

  void ReceiveAgain() {
    if (!messages.empty()) {
      const auto& [message, hasPoints] = messages[random() % messages.size()];
      auto again = std::make_unique<Annotation>(*message);
      if (hasPoints && again->IsSubModelExist(0) == 0) {
        again->InsertPoints(0, {});
      }
      Hand(std::move(again));
    }
  }

  void Hand(std::unique_ptr<Annotation> mark) {
    Annotation* given = mark.get();
    if (plain.Receive(*given)) {
      static_cast<void>(mark.release());
    }
    page.AddAnnotation(given, true);
  }

  // A confirmed mark, a drawing or the hidden copy of a moved one comes back by its own address.
  void ReceiveThePagesOwn() {
    const std::string id = AnyId();
    Annotation* own = Any(2) == 0 ? page.GetLocalAnnotation(id) : page.GetAnnotation(AnyUser(), id);
    const std::string user = own != nullptr ? own->userId : "";
    const bool isElsewhere =
        own != nullptr && page.GetLocalAnnotation(id) != own && page.GetAnnotation(user, id) != own;
    if (own != nullptr && !isElsewhere) {
      own->subModelIndex = Any(3) - 1;
      EXPECT_FALSE(plain.Receive(*own));
      page.AddAnnotation(own, true);
    }
  }

  void StretchABand() {
    const std::string user = Any(2) == 0 ? "" : AnyUser();
    const RECT rect = {Any(60), Any(60), 100 - Any(60), 100 - Any(60)};
    plain.selected.clear();
    for (const auto& [author, authored] : plain.confirmed) {
      for (const auto& [id, mark] : authored) {
        if ((user.empty() || user == author) && PlainlyInside(*mark.object, rect)) {
          plain.selected[id] = mark.object;
        }
      }
    }
    page.EraseSelectedAnnotations();  // so that the press grabs nothing
    page.StartSelecting(user, "", {rect.left, rect.top});
    EXPECT_EQ(0, page.MoveSelecting({rect.right, rect.bottom}));
    EXPECT_EQ(0, page.EndSelecting());
  }

  const Annotation* TopmostFramed(POINT at) {
    for (auto place = plain.places.rbegin(); place != plain.places.rend(); ++place) {
      const PlainMark& mark = plain.confirmed[place->user][place->id];
      if (!mark.isErased && PlainlyFramed(*mark.object, at)) {
        return mark.object;
      }
    }
    return nullptr;
  }

  void Drag() {
    const POINT from = AnyPixel();
    const Annotation* hit = TopmostFramed(from);
    plain.isMoving = hit != nullptr && plain.selected.contains(hit->annotationId);
    page.StartSelecting("", "", from);
    if (!plain.isMoving) {
      plain.selected.clear();
      if (hit != nullptr) {
        plain.selected[hit->annotationId] = hit;
      }
      ExpectSame();
      EXPECT_EQ(0, page.EndSelecting());
      return;
    }
    for (const auto& [id, object] : plain.selected) {
      plain.MarkOf(object).origin = PointsOn(kSize, {from})[0];
    }
    for (int moves = Any(4); moves > 0; --moves) {
      Move(AnyPixel());
    }
    EXPECT_EQ(1, page.EndSelecting());
  }

  void Move(POINT to) {
    EXPECT_EQ(1, page.MoveSelecting(to));
    for (const auto& [id, object] : plain.selected) {
      if (!plain.pending.contains(id)) {
        PlainMark backup = plain.MarkOf(object).Copy();
        backup.object = PageTestAccess::Pending(page)[id];
        backup.isErased = true;
        plain.pending[id] = backup;
      }
    }
    for (const auto& [id, object] : plain.selected) {
      plain.MarkOf(object).Move(PointsOn(kSize, {to})[0]);
    }
  }

  void EraseSomething() {
    const std::string user = AnyUser();
    const std::string id = AnyId();
    const bool isKnown = plain.confirmed.contains(user) && plain.confirmed[user].contains(id);
    const int expected = isKnown && !plain.confirmed[user][id].isErased ? 1 : 0;
    EXPECT_EQ(expected, page.EraseAnnotation(user, id));
    if (isKnown) {
      plain.confirmed[user][id].isErased = true;
    }
    if (Any(4) == 0) {
      page.EraseAnnotations("", "", AnyPixel());
      plain.selected.clear();
    }
  }

  void ClearSomething() {
    const std::string user = Any(4) == 0 ? "" : Any(4) == 0 ? "nobody" : AnyUser();
    const std::string sub = Any(2) == 0 ? "" : "sub" + std::to_string(Any(2));
    EXPECT_EQ(plain.Clear(user, sub), page.ClearAnnotations(user, sub));
  }

  void CancelSomething() {
    const auto pending = PageTestAccess::Pending(page);
    const std::string id =
        pending.empty() || Any(4) == 0
            ? AnyId()
            : std::next(pending.begin(), Any(static_cast<int>(pending.size())))->first;
    page.CancelAnnotation(id);
    plain.Cancel(id);
  }

  void Step() {
    static constexpr struct {
      void (PageMergeTest::*call)();
      int weight;
    } kSteps[] = {{&PageMergeTest::ReceiveSomething, 36},  {&PageMergeTest::DrawHere, 8},
                  {&PageMergeTest::ReceiveAgain, 10},      {&PageMergeTest::StretchABand, 10},
                  {&PageMergeTest::ReceiveThePagesOwn, 8}, {&PageMergeTest::Drag, 14},
                  {&PageMergeTest::CancelSomething, 6},    {&PageMergeTest::EraseSomething, 6},
                  {&PageMergeTest::ClearSomething, 2}};
    int left = Any(100);
    for (const auto& [call, weight] : kSteps) {
      left -= weight;
      if (left < 0) {
        (this->*call)();
        return;
      }
    }
  }

  static void ExpectSameMark(const PlainMark& expected, const Annotation* stored) {
    ASSERT_EQ(expected.object, stored);
    ASSERT_EQ(expected.points, stored->GetPoints()) << stored->annotationId;
    ASSERT_EQ(expected.isErased ? 1 : 0, stored->IsErased()) << stored->annotationId;
  }

  void ExpectSame() const {
    const auto confirmed = PageTestAccess::Confirmed(page);
    ASSERT_EQ(plain.confirmed.size(), confirmed.size());
    for (const auto& [user, authored] : plain.confirmed) {
      ASSERT_EQ(authored.size(), confirmed.at(user).size());
      for (const auto& [id, mark] : authored) {
        ASSERT_NO_FATAL_FAILURE(ExpectSameMark(mark, confirmed.at(user).at(id)));
      }
    }
    const auto pending = PageTestAccess::Pending(page);
    ASSERT_EQ(plain.pending.size(), pending.size());
    for (const auto& [id, mark] : plain.pending) {
      ASSERT_NO_FATAL_FAILURE(ExpectSameMark(mark, pending.at(id)));
    }
    std::vector<std::pair<std::string, std::string>> places;
    for (const PlainPage::Place& place : plain.places) {
      places.emplace_back(place.user, place.id);
    }
    ASSERT_EQ(places, PageTestAccess::PaintPlaces(page));
    const auto selected = page.GetSelectedAnnotations();
    ASSERT_EQ(plain.selected, decltype(plain.selected)(selected.begin(), selected.end()));
    ASSERT_EQ(plain.current, page.GetCurrentAnnotation());
  }

  std::mt19937 random{GetParam()};
  PaintedPage painted{kSize};
  AnnotationPage& page = painted.page;
  PlainPage plain;
  std::vector<std::string> drawnIds;
  // As sent, and whether they had points to send, which a copy of an empty list forgets.
  std::vector<std::pair<std::unique_ptr<Annotation>, bool>> messages;
};

TEST_P(PageMergeTest, ThePageMergesAsThePlainOneDoes) {
  for (int step = 0; step < 400; ++step) {
    Step();
    ASSERT_NO_FATAL_FAILURE(ExpectSame()) << "step " << step;
    ASSERT_FALSE(HasFailure()) << "step " << step;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PageMergeTest, testing::Range(0U, 20U));

}  // namespace
