// The generated host's calls about participants' marks.
#include "model/Session.h"

namespace {

constexpr std::size_t kMostHeld = 6;
constexpr std::size_t kMostMarks = 60;  // a page of more would only slow the comparison

}  // namespace

Session::Held Session::MakePeersMark(const Known& to) {
  Held made = {std::make_unique<Annotation>(), std::make_shared<PlainMark>()};
  PlainMark& mark = *made.plain;
  mark.object = made.object.get();
  mark.id = AnyMarkIdOn(to.plain);
  mark.userId = any.OneIn(3) ? AnyAuthorOn(to.plain) : any.UserId();
  if (to.plain != nullptr && !to.plain->pending.empty() && any.OneIn(4)) {
    const auto skipped = any.Below(static_cast<int>(to.plain->pending.size()));
    mark.id = std::next(to.plain->pending.begin(), skipped)->first;
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
  Trace("AddAnnotationFromRemote " + Text(to.doc) + " " + Text(to.page) + " id " +
        Text(given.plain->id) + " by " + Text(given.plain->userId) + " fragment " +
        std::to_string(given.plain->subModelIndex) + " order " +
        std::to_string(given.plain->order));
  const int result = engine->AddAnnotationFromRemote(to.doc, to.page, given.plain->object);
  PlainPage* page = plain.FindPage(to.doc, to.page);
  Same("AddAnnotationFromRemote", result, page != nullptr ? 1 : 0);
  bool isKept = false;
  if (page != nullptr) {
    plain.GreetOwn(*given.plain);
    isKept = page->AddRemote(given.plain);
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
    ReceiveNothing();
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

void Session::ReceiveNothing() {
  const Known to = AnyPage();
  Trace("AddAnnotationFromRemote null");
  Same("AddAnnotationFromRemote", engine->AddAnnotationFromRemote(to.doc, to.page, nullptr), 0);
}

void Session::Cancel() {
  const Known at = AnyPage();
  std::string id = AnyMarkIdOn(at.plain);
  if (at.plain != nullptr && !at.plain->pending.empty() && !any.OneIn(3)) {
    const auto skipped = any.Below(static_cast<int>(at.plain->pending.size()));
    id = std::next(at.plain->pending.begin(), skipped)->first;
  }
  Trace("CancelAnnotation " + Text(at.doc) + " " + Text(at.page) + " " + Text(id));
  engine->CancelAnnotation(at.doc, at.page, id);
  if (PlainPage* page = plain.FindPage(at.doc, at.page)) {
    page->Cancel(id);
  }
}

void Session::LookUp() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(at.plain);
  const std::string id = AnyMarkIdOn(at.plain);
  Trace("look up " + Text(author) + " " + Text(id));
  Annotation* confirmed = engine->GetAnnotation(at.doc, at.page, author, id);
  const PlainPage* page = plain.FindPage(at.doc, at.page);
  const PlainMarkPtr mark = page != nullptr ? page->Confirmed(author, id) : nullptr;
  SameObject("GetAnnotation", confirmed, mark);
  const int isFound = engine->FindAnnotation(at.doc, at.page, author, id);
  plain.FindPage(at.doc, at.page);
  Same("FindAnnotation", isFound, mark != nullptr ? 1 : 0);
  Annotation* local = engine->GetLocalAnnotation(at.doc, at.page, id);
  plain.FindPage(at.doc, at.page);
  const bool isPending = page != nullptr && page->pending.contains(id);
  SameObject("GetLocalAnnotation", local, isPending ? page->pending.at(id) : nullptr);
}

void Session::Clear() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(at.plain);
  const std::string subId = any.UserSubId();
  Trace("ClearAnnotations " + Text(author) + " " + Text(subId));
  const int result = engine->ClearAnnotations(at.doc, at.page, author, subId);
  PlainPage* page = plain.hasActiveWindow ? plain.FindPage(at.doc, at.page) : nullptr;
  Same("ClearAnnotations", result, page != nullptr ? page->Clear(author, subId) : 0);
}

// What the interface lets a host do to a mark that the engine handed out.
void Session::ChangeAMark() {
  const PlainMarkPtr mark = AnyMark();
  if (mark == nullptr) {
    return;
  }
  // A field that painting reads is not written while other threads paint.
  const int kind = any.Below(isPaintedAtOnce ? 8 : 9);
  Trace("change " + std::to_string(kind) + " of " + Text(mark->id));
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
