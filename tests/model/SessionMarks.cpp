// The generated host's calls that bring marks: drawn here, received, pictures; and changes of them.
#include <algorithm>

#include "model/Session.h"
#include "support/TestAccess.h"

namespace {

constexpr std::size_t kMostHeld = 6;
constexpr std::size_t kMostMarks = 60;  // a page of more would only slow the comparison

}  // namespace

void Session::Adopt(const Known& at, const PlainMarkPtr& mark) {
  for (const auto& [id, object] : PageTestAccess::Pending(*engine->GetPagePtr(at.doc, at.page))) {
    if (!at.plain->pending.contains(id)) {
      Same("the length of an id", id.size(), std::size_t{36});
      mark->object = object;
      at.plain->AddLocal(mark, id);
      return;
    }
  }
  Part("a mark that is pending", "none", "one");
}

void Session::StartDrawing() {
  const Known at = AnyPage();
  const POINT point = any.Point();
  if (at.plain != nullptr && at.plain->pending.size() > 30) {
    return;
  }
  Trace("StartDrawing", at, point);
  const int result = engine->StartDrawing(at.doc, at.page, point);
  PlainPage* page = plain.PageForDrawing(at.doc, at.page, point);
  Same("StartDrawing", result, page != nullptr ? 1 : 0);
  if (page != nullptr) {
    const PlainMarkPtr mark = plain.NewMark(plain.type, plain.subType);
    Adopt(at, mark);
    mark->AddPoint(page->At(point));
  }
}

// Where it lies is not the model's business.
void Session::PlacePicture() {
  const Known at = AnyPage();
  const int which = any.Below(static_cast<int>(kPictures.size()));
  const bool isFile = any.OneIn(2);
  const bool isBackground = any.OneIn(2);
  const bool isAbsent = any.OneIn(8);
  Trace("picture", which, isFile, isBackground, isAbsent);
  const std::string path =
      isAbsent && any.OneIn(2) ? "" : Folder().File(isAbsent ? "missing" : std::to_string(which));
  const std::string bytes = isAbsent ? "" : kPictures[static_cast<std::size_t>(which)];
  Annotation* placed =
      isFile ? engine->AddPictureFromFile(at.doc, at.page, path, "property", isBackground)
             : engine->AddPictureFromStream(at.doc, at.page, bytes, "property", isBackground);
  PlainPage* page = plain.FindPage(at.doc, at.page);
  const bool isPicture = which + 1 < static_cast<int>(kPictures.size());
  const bool isPlaced = page != nullptr && !isAbsent && (isPicture || (!isFile && !isBackground));
  Same("a picture placed", placed != nullptr, isPlaced);
  if (page == nullptr) {
    return;
  }
  const PlainMarkPtr mark = plain.NewMark(AnnotationTypePicture, AnnotationSubTypeUnknown);
  if (!isBackground) {
    Adopt(at, mark);
  }
  if (!isPlaced) {
    return;
  }
  mark->points = placed->GetPoints();
  Same("a picture's corners", mark->points.at(0).size(), std::size_t{2});
  mark->hasPicture = true;
  mark->subType = isPicture ? AnnotationSubTypeBmp : AnnotationSubTypeUnknown;
  mark->pictureProperty = "property";
  mark->object = placed;
  if (isBackground) {
    mark->isOwned = true;
    page->background = mark;
  }
}

Session::Held Session::MakePeersMark(const Known& to) {
  Held made = {std::make_unique<Annotation>(), std::make_shared<PlainMark>()};
  PlainMark& mark = *made.plain;
  mark.object = made.object.get();
  mark.id = AnyMarkIdOn(to.plain);
  mark.userId = any.OneIn(3) ? AnyAuthorOn(to.plain) : any.UserId();
  if (to.plain != nullptr && !to.plain->pending.empty() && any.OneIn(4)) {
    mark.id = AnyOf(to.plain->pending).first;
  }
  if (to.plain != nullptr && to.plain->pending.contains(mark.id) && !any.OneIn(4)) {
    mark.userId = to.plain->pending.at(mark.id)->userId;
  }
  mark.userSubId = any.UserSubId();
  mark.nickname = any.Name();
  mark.subModelIndex = any.SubModel();
  mark.order = any.Order();
  mark.subType = any.SubType();
  mark.type = static_cast<AnnotationType>(any.OneIn(10) ? any.Below(6) : 1);
  mark.pen = {any.OneIn(2) ? 0xFF000000 : 0x80FF0000, any.PenWidth(), any.Below(2)};
  mark.erased = any.OneIn(16) ? any.Below(3) : 0;
  mark.tempStartTick = any.OneIn(16) ? tick - static_cast<unsigned>(any.Below(200)) * 50 : 0;
  const CurrentAnnotPageSize size =
      to.plain != nullptr ? to.plain->Size() : CurrentAnnotPageSize{60, 40};
  mark.points[0] = any.PeerPoints(size);
  if (any.OneIn(12)) {
    mark.points.erase(0);
  }
  if (any.OneIn(16)) {
    mark.points[static_cast<unsigned>(any.SubModel())] = any.PeerPoints(size);
  }
  Annotation& object = *made.object;
  object.Init(mark.pen, mark.type, mark.subType, mark.userId, mark.userSubId, mark.nickname);
  object.SetAnnotationId(mark.id);
  object.subModelIndex = mark.subModelIndex;
  object.order = mark.order;
  object.erased = mark.erased;
  object.tempStartTick = mark.tempStartTick;
  for (const auto& [number, list] : mark.points) {
    object.InsertPoints(number, list);
  }
  return made;
}

void Session::HandOver(const Known& to, Held given) {
  Trace("AddAnnotationFromRemote", to, given.plain->id, given.plain->userId,
        given.plain->subModelIndex, given.plain->order);
  const bool isGivenAway = given.object != nullptr && any.OneIn(2);
  const int result = isGivenAway
                         ? engine->AddAnnotationFromRemote(to.doc, to.page, std::move(given.object))
                         : engine->AddAnnotationFromRemote(to.doc, to.page, given.plain->object);
  PlainPage* page = plain.FindPage(to.doc, to.page);
  Same("AddAnnotationFromRemote", result, page != nullptr ? 1 : 0);
  bool isKept = false;
  if (page != nullptr) {
    plain.GreetOwn(*given.plain);
    const std::string author = given.plain->userId;
    isKept = page->AddRemote(given.plain);
    SameObject("what it became",
               ParchletTestAccess::GetPageById(*engine, to.doc, to.page)
                   ->GetAnnotation(author, given.plain->id),
               page->Confirmed(author, given.plain->id));
  }
  if (given.object == nullptr) {
    return;
  }
  if (isKept) {
    static_cast<void>(given.object.release());
    return;
  }
  held.push_back(std::move(given));
  if (held.size() > kMostHeld) {
    held.pop_front();
  }
}

void Session::ReceiveMark() {
  const Known to = AnyPage();
  Held made = MakePeersMark(to);
  if (to.plain != nullptr && MarksOf(*to.plain).size() > kMostMarks) {
    made.plain->id = any.OneOf(MarksOf(*to.plain))->id;
    made.object->SetAnnotationId(made.plain->id);
  }
  HandOver(to, std::move(made));
}

void Session::ReceiveHeldAgain() {
  if (held.empty()) {
    return;
  }
  Held again = std::move(held.front());
  held.pop_front();
  if (any.OneIn(2)) {
    again.plain->subModelIndex = any.SubModel();
    again.object->subModelIndex = again.plain->subModelIndex;
  }
  HandOver(AnyPage(), std::move(again));
}

void Session::ReceiveThePagesOwn() {
  const PlainMarkPtr mark = AnyMark();
  if (mark == nullptr) {
    return;
  }
  if (any.OneIn(2)) {
    mark->subModelIndex = any.SubModel();
    mark->object->subModelIndex = mark->subModelIndex;
  }
  const Known to = AnyPage();
  if (to.plain != nullptr && MarksOf(*to.plain).size() > kMostMarks) {
    return;
  }
  HandOver(to, {nullptr, mark});
}

// What the interface lets a host do to a mark that the engine handed out.
void Session::ChangeAMark() {
  const PlainMarkPtr mark = AnyMark();
  if (mark == nullptr) {
    return;
  }
  // A field that painting reads is not written while other threads paint.
  const int kind = any.Below(isPaintedAtOnce ? 8 : 9);
  Trace("change", kind, mark->id);
  const AnnotationPoint point = any.PeerPoint({60, 40});
  if (kind == 0) {
    mark->erased = any.Below(3);
    mark->object->Erase(mark->erased);
  } else if (kind == 1) {
    mark->AddPoint(point);
    mark->object->AddPoint(point);
  } else if (kind == 2) {
    const auto number = static_cast<unsigned>(any.SubModel());
    mark->points[number] = any.PeerPoints({60, 40});
    mark->object->InsertPoints(number, mark->points.at(number));
  } else if (kind == 3) {
    mark->origin = point;
    mark->object->StartMoving(point);
  } else if (kind == 4) {
    mark->Move(point);
    mark->object->Moving(point);
  } else if (kind == 5) {
    const CurrentAnnotPageSize size = {30 + any.Below(90), 30 + any.Below(90)};
    Same("SetRectEx", mark->object->SetRectEx(size), mark->UpdateFrame(size) ? 1 : 0);
  } else if (kind == 6) {
    mark->subType = any.SubType();
    mark->object->Init(mark->pen, mark->type, mark->subType, mark->userId, mark->userSubId,
                       mark->nickname);
  } else if (kind == 7) {
    mark->points.clear();
    mark->object->ClearPoints();
  } else {
    mark->tempStartTick = tick - static_cast<unsigned>(any.Below(200)) * 50;
    mark->object->tempStartTick = mark->tempStartTick;
  }
}
