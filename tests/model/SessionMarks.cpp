// The generated host's calls that bring marks: drawn here, received, pictures; and changes of them.
#include <fstream>

#include "model/Session.h"
#include "support/Mark.h"
#include "support/TestAccess.h"

namespace {

constexpr std::size_t kMostHeld = 6;
constexpr std::size_t kMostMarks = 60;  // a page of more would only slow the comparison

// Of each the bytes; the first two are files as well.
enum { kBitmap, kText, kNoFile, kNoPath };
const std::string kPictures[] = {kBitmapFile, "no picture", "", ""};

}  // namespace

// With the picture files in it, each named by its number.
TemporaryFolder& Session::Folder() {
  if (!folder) {
    folder.emplace();
    for (const int i : {kBitmap, kText}) {
      std::ofstream(folder->File(std::to_string(i)), std::ios::binary) << kPictures[i];
    }
  }
  return *folder;
}

void Session::Adopt(const Known& at) {
  const PlainMarkPtr mark =
      at.plain != nullptr ? at.plain->GetLocalAnnotation(PlainPage::kNewId) : nullptr;
  if (mark == nullptr) {
    return;
  }
  mark->object = engine->GetPagePtr(at.doc, at.page)->GetCurrentAnnotation();
  Same("a mark that is drawn", mark->object != nullptr, true);
  mark->annotationId = mark->object->annotationId;
  Same("the length of an id", mark->annotationId.size(), std::size_t{36});
  at.plain->pending.erase(PlainPage::kNewId);
  at.plain->pending[mark->annotationId] = mark;
}

void Session::StartDrawing() {
  const Known at = AnyPage();
  if (at.plain == nullptr || at.plain->pending.size() <= 30) {
    Both(CALL(StartDrawing, at.doc, at.page, any.Point()));
    Adopt(at);
  }
}

// Where it lies is not the model's business.
void Session::PlacePicture() {
  const Known at = AnyPage();
  const int which = any.Below(4);
  const bool isFile = any.OneIn(2);
  const bool isBackground = any.OneIn(2);
  Trace("picture", at.doc, at.page, which, isFile, isBackground);
  const std::string path = which == kNoPath ? "" : Folder().File(std::to_string(which));
  Annotation* placed =
      isFile ? engine->AddPictureFromFile(at.doc, at.page, path, "property", isBackground)
             : engine->AddPictureFromStream(at.doc, at.page, kPictures[which], "property",
                                            isBackground);
  PlainPage* page = plain.FindPage(at.doc, at.page);
  const bool isPlaced =
      page != nullptr && (which == kBitmap || (which == kText && !isFile && !isBackground));
  Same("a picture placed", placed != nullptr, isPlaced);
  if (page == nullptr) {
    return;
  }
  const auto mark = std::make_shared<PlainMark>(plain.own);
  mark->type = AnnotationTypePicture;
  mark->subType = isPlaced && which == kBitmap ? AnnotationSubTypeBmp : AnnotationSubTypeUnknown;
  if (!isBackground) {
    page->AddLocal(mark);
    Adopt(at);
  }
  if (isPlaced) {
    mark->points = placed->GetPoints();
    Same("a picture's corners", mark->HasTwoPoints(), true);
    mark->hasPicture = true;
    mark->pictureProperty = "property";
    mark->object = placed;
  }
  if (isPlaced && isBackground) {
    mark->isOwned = true;
    page->background = mark;
  }
}

Session::Held Session::MakePeersMark(const Known& to) {
  Held made = {std::make_unique<Annotation>(), std::make_shared<PlainMark>()};
  PlainMark& mark = *made.plain;
  mark.object = made.object.get();
  mark.annotationId = AnyMarkIdOn(to.plain);
  mark.userId = any.OneIn(3) ? AnyAuthorOn(to.plain) : any.UserId();
  if (to.plain != nullptr && !to.plain->pending.empty() && any.OneIn(4)) {
    mark.annotationId = any.OneOf(to.plain->pending).first;
  }
  const PlainMarkPtr pending =
      to.plain != nullptr ? to.plain->GetLocalAnnotation(mark.annotationId) : nullptr;
  if (pending != nullptr && !any.OneIn(4)) {
    mark.userId = pending->userId;
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
  static_cast<AnnotationHeader&>(*made.object) = mark;
  const CurrentAnnotPageSize size =
      to.plain != nullptr ? to.plain->Size() : CurrentAnnotPageSize{60, 40};
  if (!any.OneIn(12)) {
    mark.points[0] = any.PeerPoints(size);
  }
  if (any.OneIn(16)) {
    mark.points[static_cast<unsigned>(any.SubModel())] = any.PeerPoints(size);
  }
  for (const auto& [number, list] : mark.points) {
    made.object->InsertPoints(number, list);
  }
  return made;
}

void Session::HandOver(const Known& to, Held given) {
  const std::string author = given.plain->userId;
  const std::string id = given.plain->annotationId;
  Trace("AddAnnotationFromRemote", to.doc, to.page, id, author, given.plain->subModelIndex,
        given.plain->order);
  const bool isGivenAway = given.object != nullptr && any.OneIn(2);
  const int result = isGivenAway
                         ? engine->AddAnnotationFromRemote(to.doc, to.page, std::move(given.object))
                         : engine->AddAnnotationFromRemote(to.doc, to.page, given.plain->object);
  PlainPage* page = plain.FindPage(to.doc, to.page);
  Same("AddAnnotationFromRemote", result, page != nullptr);
  bool isKept = false;
  if (page != nullptr) {
    if (author == plain.own.userId && given.plain->userSubId == plain.own.userSubId) {
      given.plain->nickname = plain.own.nickname;
    }
    isKept = page->AddRemote(given.plain);
    Same("what it became",
         ParchletTestAccess::GetPageById(*engine, to.doc, to.page)->GetAnnotation(author, id),
         page->GetAnnotation(author, id));
  }
  if (isKept) {
    static_cast<void>(given.object.release());
  } else if (given.object != nullptr) {
    held.push_back(std::move(given));
    if (held.size() > kMostHeld) {
      held.pop_front();
    }
  }
}

void Session::ReceiveMark() {
  const Known to = AnyPage();
  Held made = MakePeersMark(to);
  const Marks marks = MarksOf(to.plain);
  if (marks.size() > kMostMarks) {
    made.plain->annotationId = any.OneOf(marks)->annotationId;
    made.object->SetAnnotationId(made.plain->annotationId);
  }
  HandOver(to, std::move(made));
}

// An object that is still the host's, or a page's own.
void Session::ReceiveAgain() {
  Held again = {nullptr, nullptr};
  if (!held.empty() && !any.OneIn(3)) {
    again = std::move(held.front());
    held.pop_front();
  } else {
    again.plain = AnyMark();
  }
  const Known to = AnyPage();
  if (again.plain == nullptr || MarksOf(to.plain).size() > kMostMarks) {
    return;
  }
  if (any.OneIn(2)) {
    again.plain->subModelIndex = any.SubModel();
    again.plain->object->subModelIndex = again.plain->subModelIndex;
  }
  HandOver(to, std::move(again));
}

// What the interface lets a host do to a mark that the engine handed out.
void Session::ChangeAMark() {
  const PlainMarkPtr mark = AnyMark();
  if (mark == nullptr) {
    return;
  }
  const AnnotationPoint point = any.PeerPoint({60, 40});
  const auto both = [&](const char* name, const auto& act, const auto&... with) {
    Trace(name, with...);
    Compare(
        name, [&] { return act(*mark->object, with...); }, [&] { return act(*mark, with...); });
  };
  const auto turn = [&] {
    mark->subType = any.SubType();
    mark->object->Init(mark->pen, mark->type, mark->subType, mark->userId, mark->userSubId,
                       mark->nickname);
  };
  const auto age = [&] {
    // A field that painting reads is not written while other threads paint.
    if (!isPaintedAtOnce) {
      mark->tempStartTick = tick - static_cast<unsigned>(any.Below(200)) * 50;
      mark->object->tempStartTick = mark->tempStartTick;
    }
  };
  const auto insert = [&] {
    const auto list = any.PeerPoints({60, 40});
    both(CALL(InsertPoints, static_cast<unsigned>(any.SubModel()), list));
  };
  any.DoOneOf(
      {age, insert, turn, [&] { both(CALL(Erase, any.Below(3))); },
       [&] { both(CALL(AddPoint, point)); }, [&] { both(CALL(StartMoving, point)); },
       [&] { both(CALL(Moving, point)); }, [&] { both(CALL(ClearPoints)); },
       [&] {
         both(CALL(SetRectEx, CurrentAnnotPageSize{30 + any.Below(90), 30 + any.Below(90)}));
       }});
}
