// Compares the engine with its model.
#include <tuple>

#include "model/Session.h"
#include "support/TestAccess.h"

namespace {

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

// The fields that an annotation and its model share.
template <class M>
auto Fields(const M& mark) {
  return std::tie(mark.userId, mark.userSubId, mark.nickname, mark.pictureProperty,
                  mark.subModelIndex, mark.order, mark.erased, mark.tipVisible, mark.type,
                  mark.subType, mark.pen.color, mark.pen.width, mark.pen.fill, mark.tempStartTick);
}

}  // namespace

std::string Session::Text(const Ids& values) {
  std::string text;
  for (const std::string& value : values) {
    text += Text(value) + " ";
  }
  return text;
}

std::string Session::Text(const RECT& box) {
  return Text(POINT{box.left, box.top}) + " to " + Text(POINT{box.right, box.bottom});
}

std::string Session::Text(const AnnotationPageInfo& info) {
  return Text(info.userValue1) + " " + Text(info.userValue2) + " " + Text(info.width) + "x" +
         Text(info.height) + (info.transparent ? " transparent " : " ") + Text(info.viewRect) +
         " " + Text(info.backgroundColor);
}

std::string Session::Text(const Annotation::SubModels& points) {
  std::string text;
  for (const auto& [number, list] : points) {
    text += Text(number) + ":";
    for (const AnnotationPoint& point : list) {
      text += " (" + Text(POINT{point.x, point.y}) + " " + std::to_string(point.xRatio) + "," +
              std::to_string(point.yRatio) + ")";
    }
    text += "; ";
  }
  return text;
}

void Session::Part(const std::string& what, const std::string& engines, const std::string& models) {
  std::string message = "call " + std::to_string(callCount) + ": " + what +
                        "\n  engine: " + engines + "\n  model:  " + models + "\n";
  for (const std::string& call : trace) {
    message += "  " + call + "\n";
  }
  throw Difference(message);
}

void Session::SameObject(const std::string& what, Annotation* engines, const PlainMarkPtr& models) {
  Same(what, engines != nullptr, models != nullptr);
  if (models == nullptr) {
    return;
  }
  models->object = models->object == nullptr ? engines : models->object;
  Same(what + ", its address", engines == models->object, true);
}

// A copy, taken under the mark's own lock, stands for the mark while other threads paint.
void Session::SameMark(const std::string& where, const Annotation& mark, const PlainMark& model) {
  Annotation copy(mark);
  copy.pictureProperty = mark.pictureProperty;
  copy.tempStartTick = mark.tempStartTick;
  Same(where + ", erased", mark.IsErased(), model.erased);
  Same(where + ", id", copy.annotationId, model.id);
  Same(where + ", frame", Text(AnnotationTestAccess::FrameOf(copy)), Text(model.frame));
  if (Fields(copy) != Fields(model)) {
    const auto text = [](const auto&... fields) { return ((Text(fields) + " ") + ...); };
    Part(where, std::apply(text, Fields(copy)), std::apply(text, Fields(model)));
  }
  const Annotation::SubModels points = mark.GetPoints();
  if (!AreSamePoints(points, model.points)) {
    Part(where + ", points", Text(points), Text(model.points));
  }
}

void Session::SameMarks(const std::string& where, const std::map<std::string, Annotation*>& engines,
                        const PlainPage::Marks& models) {
  const auto ids = [](const auto& marks) {
    Ids keys;
    for (const auto& [id, mark] : marks) {
      keys.push_back(id);
    }
    return keys;
  };
  Same(where, ids(engines), ids(models));
  for (const auto& [id, mark] : engines) {
    SameObject(where, mark, models.at(id));
  }
}

void Session::SamePage(const std::string& doc, PlainPage& model) {
  const AnnotationPage* page = ParchletTestAccess::GetPageById(*engine, doc, model.id);
  Same("a page", page != nullptr, true);
  const std::string where = "page " + Text(model.id);
  Same("a page's index", page->pageIndex, model.index);
  std::map<std::string, std::map<std::string, Annotation*>> confirmed;
  Same("GetAllAnnotations", page->GetAllAnnotations(&confirmed), true);
  Same("GetUserAnnotations of nobody", page->GetUserAnnotations("nobody", &confirmed["nobody"]),
       false);
  confirmed.erase("nobody");
  Same("the authors on a page", confirmed.size(), model.confirmed.size());
  for (const auto& [author, models] : model.confirmed) {
    std::map<std::string, Annotation*> authored;
    Same("GetUserAnnotations", page->GetUserAnnotations(author, &authored), true);
    Same("one author's marks among all", confirmed[author] == authored, true);
    SameMarks(where + ", marks of " + Text(author), authored, models);
  }
  SameMarks(where + ", pending", PageTestAccess::Pending(*page), model.pending);
  SameMarks(where + ", selection", page->GetSelectedAnnotations(), model.selected);
  SameObject("a drawing", page->GetCurrentAnnotation(), model.drawing);
  Ids places;
  Ids expected;
  for (const auto& [author, id] : PageTestAccess::PaintPlaces(*page)) {
    places.push_back(std::string(author).append("/").append(id));
  }
  for (const PlainPage::Place& place : model.places) {
    expected.push_back(std::string(place.userId).append("/").append(place.id));
  }
  Same("a page's paint order", places, expected);
  for (const PlainMarkPtr& mark : MarksOf(model)) {
    SameMark(where + ", mark " + Text(mark->id), *mark->object, *mark);
  }
}

void Session::SameEverywhere() {
  Same("the log", records.lines, plain.log);
  records.lines.clear();
  plain.log.clear();
  const PlainPage* current = plain.CurrentPage();
  const auto turn = callCount % 16;
  std::uint64_t number = 0;
  for (auto& [doc, document] : plain.documents) {
    for (auto& [id, page] : document.pages) {
      if (&page == current || number++ % 16 == turn) {
        SamePage(doc, page);
      }
    }
  }
}
