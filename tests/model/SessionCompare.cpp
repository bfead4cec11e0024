// Compares the engine with its model.
#include <cstring>

#include "model/Session.h"
#include "support/TestAccess.h"

namespace {

bool IsSamePoint(const AnnotationPoint& a, const AnnotationPoint& b) {
  const auto isSame = [](double p, double q) { return p == q || (p != p && q != q); };
  return a.x == b.x && a.y == b.y && isSame(a.xRatio, b.xRatio) && isSame(a.yRatio, b.yRatio);
}

std::string Describe(const Annotation::SubModels& points) {
  std::string text;
  for (const auto& [number, list] : points) {
    text += std::to_string(number) + ":";
    for (const AnnotationPoint& point : list) {
      text += " (" + std::to_string(point.x) + "," + std::to_string(point.y) + " " +
              std::to_string(point.xRatio) + "," + std::to_string(point.yRatio) + ")";
    }
    text += "; ";
  }
  return text;
}

bool AreSamePoints(const Annotation::SubModels& a, const Annotation::SubModels& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& p, const auto& q) {
    return p.first == q.first && std::equal(p.second.begin(), p.second.end(), q.second.begin(),
                                            q.second.end(), IsSamePoint);
  });
}

std::string Describe(const RECT& box) {
  return std::to_string(box.left) + "," + std::to_string(box.top) + " to " +
         std::to_string(box.right) + "," + std::to_string(box.bottom);
}

}  // namespace

std::string Session::Text(const Ids& values) {
  std::string text;
  for (const std::string& value : values) {
    text += Text(value) + " ";
  }
  return text;
}

std::string Session::Text(const AnnotationPageInfo& info) {
  return std::to_string(info.userValue1) + " " + std::to_string(info.userValue2) + " " +
         std::to_string(info.width) + "x" + std::to_string(info.height) +
         (info.transparent ? " transparent " : " ") + Describe(info.viewRect) + " " +
         std::to_string(info.backgroundColor);
}

void Session::Part(const std::string& what, const std::string& engines, const std::string& models) {
  std::string message = "call " + std::to_string(callCount) + ": " + what +
                        "\n  engine: " + engines + "\n  model:  " + models + "\n";
  for (const std::string& call : trace) {
    message += "  " + call + "\n";
  }
  throw Difference(message);
}

void Session::SameObject(const char* what, Annotation* engines, const PlainMarkPtr& models) {
  Same(what, engines != nullptr, models != nullptr);
  if (models == nullptr) {
    return;
  }
  if (models->object == nullptr) {
    models->object = engines;
  }
  Same("its address", engines == models->object, true);
}

// A copy, taken under the mark's own lock, stands for the mark while other threads paint.
void Session::SameMark(const std::string& where, const Annotation& mark, const PlainMark& model) {
  const Annotation copy(mark);
  const auto same = [&](const char* what, const auto& engines, const auto& models) {
    if (!(engines == models)) {
      Part(where + ", " + what, Text(engines), Text(models));
    }
  };
  same("id", copy.annotationId, model.id);
  same("author", copy.userId, model.userId);
  same("second identity", copy.userSubId, model.userSubId);
  same("nickname", copy.nickname, model.nickname);
  same("picture property", mark.pictureProperty, model.pictureProperty);
  same("fragment", copy.subModelIndex, model.subModelIndex);
  same("order", copy.order, model.order);
  same("erased", mark.IsErased(), model.erased);
  same("tip", copy.tipVisible, model.tipVisible);
  same("type", static_cast<int>(copy.type), static_cast<int>(model.type));
  same("sub-type", static_cast<int>(copy.subType), static_cast<int>(model.subType));
  same("colour", copy.pen.color, model.pen.color);
  same("width", copy.pen.width, model.pen.width);
  same("fill", copy.pen.fill, model.pen.fill);
  same("start", mark.tempStartTick, model.tempStartTick);
  same("frame", Describe(AnnotationTestAccess::FrameOf(copy)), Describe(model.frame));
  const Annotation::SubModels points = mark.GetPoints();
  if (!AreSamePoints(points, model.points)) {
    Part(where + ", points", Describe(points), Describe(model.points));
  }
}

void Session::SameMarks(const std::string& where, const std::map<std::string, Annotation*>& engines,
                        const PlainPage::Marks& models) {
  Ids ids;
  Ids expected;
  for (const auto& [id, mark] : engines) {
    ids.push_back(id);
  }
  for (const auto& [id, mark] : models) {
    expected.push_back(id);
  }
  if (ids != expected) {
    Part(where, Text(ids), Text(expected));
  }
  for (const auto& [id, mark] : engines) {
    SameObject(where.c_str(), mark, models.at(id));
  }
}

void Session::SamePage(const std::string& doc, PlainPage& model) {
  const AnnotationPage* page = ParchletTestAccess::GetPageById(*engine, doc, model.id);
  Same("a page", page != nullptr, true);
  const std::string where = "page " + Text(model.id);
  Same("a page's index", page->pageIndex, model.index);
  std::map<std::string, std::map<std::string, Annotation*>> confirmed;
  Same("GetAllAnnotations", page->GetAllAnnotations(&confirmed), 1);
  Same("GetUserAnnotations of nobody", page->GetUserAnnotations("nobody", &confirmed["nobody"]), 0);
  confirmed.erase("nobody");
  Same("the authors on a page", confirmed.size(), model.confirmed.size());
  for (const auto& [author, models] : model.confirmed) {
    std::map<std::string, Annotation*> authored;
    Same("GetUserAnnotations", page->GetUserAnnotations(author, &authored), 1);
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
