// What a generated host chooses among, and the comparison of the engine with its model.
#include "model/Session.h"

#include "support/TestAccess.h"

namespace {

// NaN is the same as NaN.
bool IsSamePoint(const AnnotationPoint& a, const AnnotationPoint& b) {
  const auto isSame = [](double p, double q) { return p == q || (p != p && q != q); };
  return a.x == b.x && a.y == b.y && isSame(a.xRatio, b.xRatio) && isSame(a.yRatio, b.yRatio);
}

bool AreSamePoints(const Annotation::SubModels& a, const Annotation::SubModels& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& p, const auto& q) {
    return p.first == q.first && std::equal(p.second.begin(), p.second.end(), q.second.begin(),
                                            q.second.end(), IsSamePoint);
  });
}

auto FieldsOf(const AnnotationHeader& mark, const RECT& frame) {
  return std::tie(mark.annotationId, mark.userId, mark.userSubId, mark.nickname,
                  mark.pictureProperty, mark.subModelIndex, mark.order, mark.erased,
                  mark.tipVisible, mark.type, mark.subType, mark.pen.color, mark.pen.width,
                  mark.pen.fill, mark.tempStartTick, frame.left, frame.top, frame.right,
                  frame.bottom);
}

}  // namespace

void Records::Write(int level, const std::string& line) {
  const std::size_t blank = line.find(' ');
  const std::size_t end = line.find(']');
  lines.push_back(std::to_string(level) + " " + line.substr(blank + 1, end - blank - 1) + ": " +
                  line.substr(end + 1));
}

Session::Session(std::function<std::uint8_t()> decisions, bool isPaintedAtOnce)
    : any(std::move(decisions)), isPaintedAtOnce(isPaintedAtOnce) {
  windows.emplace_back(RECT{0, 0, 64, 48});
  windows.emplace_back(RECT{-20, 10, 60, 40});
  deadWindow = MemoryWindow({0, 0, 9, 9}).Handle();
  engine = std::make_unique<Parchlet>();
  plain.log.emplace_back("2 Parchlet::Parchlet: constructor");
}

Session::Known Session::AnyPage() {
  // The current page is where most things happen.
  if (plain.CurrentPage() != nullptr && !any.OneIn(4)) {
    return {plain.current->id, plain.CurrentPage()->id, plain.CurrentPage()};
  }
  Known chosen = {any.DocId(), any.PageId(), &nowhere};
  const bool isExisting = !any.OneIn(4);
  std::vector<Known> known;
  for (auto& [doc, document] : plain.documents) {
    for (const auto& page : document.pages) {
      known.push_back({doc, page->id, page.get()});
      chosen = doc == chosen.doc && page->id == chosen.page ? known.back() : chosen;
    }
  }
  return !known.empty() && isExisting ? any.OneOf(known) : chosen;
}

Session::Marks Session::MarksOf(const PlainPage& page) {
  Marks marks;
  for (const auto& [author, authored] : page.confirmed) {
    for (const auto& [id, mark] : authored) {
      marks.push_back(mark);
    }
  }
  for (const auto& [id, mark] : page.pending) {
    marks.push_back(mark);
  }
  if (page.background != nullptr) {
    marks.push_back(page.background);
  }
  return marks;
}

PlainMarkPtr Session::AnyMark() {
  Marks marks = MarksOf(*AnyPage().plain);
  std::erase_if(marks, [](const PlainMarkPtr& mark) { return mark->object == nullptr; });
  return marks.empty() ? nullptr : any.OneOf(marks);
}

std::string Session::AnyMarkIdOn(const PlainPage& page) {
  const Marks marks = MarksOf(page);
  return marks.empty() || any.OneIn(3) ? any.MarkId() : any.OneOf(marks)->annotationId;
}

std::string Session::AnyAuthorOn(const PlainPage& page) {
  return page.confirmed.empty() || any.OneIn(3) ? any.UserId() : any.OneOf(page.confirmed).first;
}

POINT Session::AnyPointNearMarksOf(const PlainPage& page) {
  const Marks marks = MarksOf(page);
  const PlainMarkPtr mark = marks.empty() || any.OneIn(4) ? nullptr : any.OneOf(marks);
  if (mark == nullptr || !mark->HasTwoPoints()) {
    return any.Point();
  }
  const int count = static_cast<int>(mark->points.at(0).size());
  const auto second = mark->points.at(0).begin() + 1 + any.Below(count - 1);
  const auto between = [this](LONG a, LONG b) {
    const std::int64_t value = (any.OneIn(2) ? a : (std::int64_t{a} + b) / 2) + any.Below(17) - 8;
    return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
  };
  const LONG x = between(std::prev(second)->x, second->x);
  return {x, between(std::prev(second)->y, second->y)};
}

void Session::Part(const std::string& what, const std::string& engines, const std::string& models) {
  std::string message = "call " + std::to_string(callCount) + ": " + what +
                        "\n  engine: " + engines + "\n  model:  " + models + "\n";
  for (const std::string& call : trace) {
    message += "  " + call + "\n";
  }
  throw Difference(message);
}

void Session::Same(const std::string& what, Annotation* engines, const PlainMarkPtr& models) {
  Same(what, engines != nullptr, models != nullptr);
  if (models != nullptr) {
    models->object = models->object == nullptr ? engines : models->object;
    Same(what + ", its address", engines == models->object, true);
  }
}

// A copy, taken under the mark's own lock, stands for the mark while other threads paint.
void Session::SameMark(const std::string& where, const Annotation& mark, const PlainMark& model) {
  Annotation copy(mark);
  copy.pictureProperty = mark.pictureProperty;
  copy.tempStartTick = mark.tempStartTick;
  const RECT frame = AnnotationTestAccess::FrameOf(copy);
  Same(where, FieldsOf(copy, frame), FieldsOf(model, model.frame));
  const Annotation::SubModels points = mark.GetPoints();
  if (!AreSamePoints(points, model.points)) {
    Part(where + ", points", Text(points), Text(model.points));
  }
}

void Session::SamePage(const std::string& doc, PlainPage& model) {
  const AnnotationPage* page = ParchletTestAccess::GetPageById(*engine, doc, model.id);
  const std::string where = "page " + Text(model.id);
  Same(where, page != nullptr && page->pageIndex == model.index, true);
  std::map<std::string, std::map<std::string, Annotation*>> confirmed;
  Same("GetAllAnnotations", page->GetAllAnnotations(&confirmed), true);
  Same(where + ", confirmed", confirmed, model.confirmed);
  Same(where + ", pending", PageTestAccess::Pending(*page), model.pending);
  Same(where + ", selection", page->GetSelectedAnnotations(), model.selected);
  Same(where + ", drawing", page->GetCurrentAnnotation(), model.drawing);
  std::vector<std::pair<std::string, std::string>> places;
  for (const PlainPage::Place& place : model.places) {
    places.emplace_back(place.userId, place.id);
  }
  Same(where + ", paint order", PageTestAccess::PaintPlaces(*page), places);
  for (const PlainMarkPtr& mark : MarksOf(model)) {
    SameMark(where + ", mark " + Text(mark->annotationId), *mark->object, *mark);
  }
}

void Session::SameEverywhere() {
  Same("the log", records.lines, plain.log);
  records.lines.clear();
  plain.log.clear();
  const PlainPage* current = plain.CurrentPage();
  std::uint64_t number = 0;
  for (auto& [doc, document] : plain.documents) {
    for (const auto& page : document.pages) {
      if (page.get() == current || number++ % 16 == callCount % 16) {
        SamePage(doc, *page);
      }
    }
  }
}
