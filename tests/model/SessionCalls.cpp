// The generated host's calls.
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

void Session::MakeOneCall() {
  const struct {
    int weight;
    std::function<void()> make;
  } calls[] = {{48, [this] { ReceiveMark(); }},
               {12, [this] { ChangeAMark(); }},
               {16, [this] { StartDrawing(); }},
               {16, [this] { Both(CALL(MoveDrawing, any.Point())); }},
               {4, [this] { Both(CALL(EndDrawing)); }},
               {4, [this] { PlacePicture(); }},
               {1, [this] { SavePage(); }},
               {16, [this] { Both(CALL(MoveSelecting, any.Point())); }},
               {6, [this] { Both(CALL(EndSelecting)); }},
               {24, [this] { GrabSelection(); }},
               {47, [this] { ReachForMarks(); }},
               {13, [this] { ChangeSettings(); }},
               {2, [this] { ChangeDocuments(); }},
               {5, [this] { AddPage(); }},
               {10, [this] { Resize(); }},
               {12, [this] { AskForEverything(); }},
               {20, [this] { Refresh(); }}};  // 256 together
  int left = any.Below(256);
  const auto* call = std::begin(calls);
  for (; left >= call->weight; ++call) {
    left -= call->weight;
  }
  ++callCount;
  // A host without a page has little to call.
  if (plain.CurrentPage() != nullptr || any.OneIn(4)) {
    call->make();
  } else if (plain.current) {
    AddPage();
  } else {
    ChangeDocuments();
  }
  Settle();
  SameEverywhere();
}

void Session::Settle() {
  if (isPaintedAtOnce) {
    ParchletTestAccess::Refresh(*engine);
    PaintModel();
  }
}

void Session::PaintModel() {
  if (PlainPage* page = plain.CurrentPage()) {
    page->Paint(tick);
  }
}

// Or time passes.
void Session::Refresh() {
  if (!isPaintedAtOnce && any.OneIn(4)) {
    tick += any.OneOf({1U, 40U, 1999U, 2000U, 2999U, 5000U, 7999U, 8000U});
    clock.Set(tick);
    return Trace("the time is", tick);
  }
  Trace("refresh");
  const int pushed = ParchletTestAccess::Refresh(*engine);
  // The window may have gone where windows go; see Resize.
  Same("a push", pushed != 0 || isPaintedAtOnce, plain.CurrentPage() != nullptr || isPaintedAtOnce);
  PaintModel();
}

void Session::ChangeSettings() {
  const Known at = AnyPage();
  const std::uint32_t word = any.Word();
  const unsigned width = any.OneIn(4) ? any.Word() : static_cast<unsigned>(any.Below(40));
  const auto type = static_cast<AnnotationType>(any.OneIn(12) ? any.Below(8) - 2 : 1);
  const std::string userId = any.UserId();
  const std::string subId = any.UserSubId();
  const int index = any.OneIn(4) ? any.Order() : any.Below(5);
  const auto setKind = [&] { Both(CALL(SetAnnotationType, type, any.SubType())); };
  const auto setTip = [&] {
    Same("tip", engine->SetNicknameTip(word, width % 30, "no such font", word), 1);
  };
  const auto restart = [&] {
    // Another thread paints from Init on, which the model would not know.
    if (isPaintedAtOnce || plain.isInitialised) {
      if (any.OneIn(3)) {
        Both(CALL(Destroy));
      }
      Both(CALL(Init));
    }
  };
  any.DoOneOf(
      {setKind, setKind, setTip, restart, [&] { Both(CALL(SetPen, word, width)); },
       [&] { Both(CALL(SetUserInfo, userId, subId, any.Name())); },
       [&] { Both(CALL(SetPageBackgroundColor, word)); },
       [&] { Both(CALL(GotoFirstPage, at.doc)); }, [&] { Both(CALL(GotoLastPage, at.doc)); },
       [&] { Both(CALL(GotoNextPage, at.doc)); }, [&] { Both(CALL(GotoPreviousPage, at.doc)); },
       [&] { Both(CALL(GotoPage, at.doc, index)); }, [&] { Both(CALL(GotoPage, at.doc, at.page)); },
       [&] { Both(CALL(SetCurrentPage, at.doc, at.page)); }});
}

void Session::ChangeDocuments() {
  const Known at = AnyPage();
  const std::string creator = any.UserId();
  if (any.OneIn(2)) {
    Both(CALL(DelPage, at.doc, at.page));
  } else if (any.OneIn(plain.current ? 12 : 2)) {
    Both(CALL(DelDoc, any.DocId()));
  } else {  // only a new document becomes the current one
    Both(CALL(NewDoc, creator, any.DocId()));
  }
}

void Session::AddPage() {
  const std::string doc = plain.current && !any.OneIn(3) ? plain.current->id : any.DocId();
  const std::string page = any.PageId();
  const AnnotationPageInfo info = any.Geometry();
  const bool hasWindow = !any.OneIn(12);
  const bool isDead = any.OneIn(12);
  HWND const window = isDead ? deadWindow : AnyWindow().Handle();
  // One that a page's view does not show need not be had in full.
  const bool isHuge = info.width > 1000 && info.viewRect.left < info.viewRect.right;
  Trace("NewPage", doc, page, info);
  const std::string creator = any.UserId();
  const int result = engine->NewPage(doc, page, creator, hasWindow ? window : nullptr, info);
  Same("NewPage", result, plain.NewPage(doc, page, creator, hasWindow, !isDead && !isHuge, info));
}

// A window, or a page, once or in a storm.
void Session::Resize() {
  if (any.OneIn(3)) {
    // Pages whose window has gone are not pushed any more, which the model would have to know.
    if (isPaintedAtOnce && any.OneIn(4)) {
      if (any.OneIn(2)) {
        UnregisterLayeredWindow(windows.front().Handle());
      }
      windows.pop_front();
      windows.emplace_back(RECT{0, 0, 64, 48});
    }
    const LONG x = any.Below(100);
    const LONG width = 1 + any.Below(80);
    Trace("a window at", x);
    return AnyWindow().SetScreenRect({x, x, x + width, x + 1 + any.Below(60)});
  }
  for (int left = any.OneIn(8) ? 8 : 1; left > 0; --left) {
    const Known at = AnyPage();
    AnnotationPageInfo info = any.Geometry();
    if (any.OneIn(4)) {
      info.width = at.plain->now.width;
      info.height = at.plain->now.height;
    }
    BothOn(at, CALL(UpdatePage, info, !any.OneIn(4)));
  }
}

void Session::AskForEverything() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(*at.plain);
  const std::string id = AnyMarkIdOn(*at.plain);
  const bool isInitial = any.OneIn(2);
  const bool isNull = any.OneIn(8);
  const int size = any.Below(10) - 1;
  const auto ask = [&](auto& e) {
    std::string creator = "?";
    std::string buffer(8, '?');
    AnnotationPageInfo info = {7, 7, 7, 7, true, {7, 7, 7, 7}, 7};
    Ids now(4, "?");
    const std::vector<int> numbers = {
        e.GetDocCount(),
        e.IsDocExist(at.doc),
        e.GetDocCreator(at.doc, creator),
        e.GetPageCount(at.doc),
        e.GetPageIndex(at.doc, at.page),
        e.GetPageSize(at.doc, at.page, info, isInitial),
        e.GetPageCreator(at.doc, at.page, isNull ? nullptr : buffer.data(), size)};
    e.GetCurrentPageInfo(now[0], now[1]);
    const std::string drawn = e.GetCurrentAnnotationInfo(now[2], now[3]);
    return Ids{creator, buffer, Text(info), Text(now), drawn, Text(numbers)};
  };
  Both("ask for everything", ask);
  BothOn(at, CALL(GetAnnotation, author, id));
  BothOn(at, CALL(FindAnnotation, author, id));
  BothOn(at, CALL(GetLocalAnnotation, id));
  BothOn(at, CALL(GetSelectedAnnotations));
  if (at.plain != &nowhere) {
    const AnnotationPage* page = ParchletTestAccess::GetPageById(*engine, at.doc, at.page);
    std::map<std::string, Annotation*> authored;
    Same("GetUserAnnotations", page->GetUserAnnotations(author, &authored),
         at.plain->confirmed.contains(author));
    Same("an author's marks", authored, ValueAt(at.plain->confirmed, author));
  }
  const PlainMarkPtr mark = any.OneIn(8) ? nullptr : AnyMark();
  Same("IsPointAnnotation", engine->IsPointAnnotation(mark != nullptr ? mark->object : nullptr),
       mark != nullptr && mark->IsDot());
  // Accepted whatever they say, and to no effect; the last one refused.
  std::string out = "?";
  const std::vector<int> idle = {engine->SetZoom(at.doc, 2.0F, -1, 1),
                                 engine->SetPageSize(at.doc, at.page, 0, -1),
                                 engine->IsDocOpened(at.doc, out),
                                 engine->DuplicatePage(at.doc, at.page, out),
                                 engine->SaveAs(at.doc, id),
                                 engine->AddAnnotationFromRemote(at.doc, at.page, nullptr)};
  Same("idle calls", out + Text(idle), std::string("?(1 1 1 1 1 0 )"));
}

// The page's surface, or what the screen shows where a window is.
void Session::SavePage() {
  const Known at = AnyPage();
  HWND const window = any.OneIn(2) ? AnyWindow().Handle() : HWND{nullptr};
  const std::string file = Folder().File(any.OneOf({"page.png", "page.jpg", "page.bmp"}));
  Compare(
      "SavePage", [&] { return engine->SavePage(at.doc, at.page, file, window); },
      [&] { return plain.FindPage(at.doc, at.page) != nullptr ? 1 : 0; });
}

// Chance alone would seldom press on a mark that is selected, and drag it.
void Session::GrabSelection() {
  const Known at = AnyPage();
  const PlainPage& page = *at.plain;
  if (page.selected.empty()) {
    BothOn(at, CALL(StartSelecting, "", "", POINT{0, 0}));
    return Both(CALL(MoveSelecting, POINT{page.now.width, page.now.height}));
  }
  const RECT frame = any.OneOf(page.selected).second->frame;
  BothOn(at, CALL(StartSelecting, "", "", POINT{frame.left, frame.top}));
  for (int moves = any.Below(4); moves > 0; --moves) {
    Both(CALL(MoveSelecting, any.Point()));
  }
  if (any.OneIn(3)) {
    Both(CALL(EndSelecting));
  }
}

// Presses on marks, asks the eraser, erases one, the selection or all of an author's, and cancels.
void Session::ReachForMarks() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(*at.plain);
  const std::string whose = any.OneIn(3) ? author : "";
  const std::string subId = any.UserSubId();
  const std::string id = AnyMarkIdOn(*at.plain);
  const auto select = [&] { BothOn(at, CALL(StartSelecting, whose, subId, any.Point())); };
  const auto askEraser = [&] {
    std::vector<POINT> path(static_cast<std::size_t>(any.Below(4)));
    if (path.empty()) {
      Same("no path", engine->EraseAnnotations(at.doc, at.page, whose, "", path), Ids());
      return;
    }
    for (POINT& point : path) {
      point = AnyPointNearMarksOf(*at.plain);
    }
    BothOn<true>(at, CALL(EraseAnnotations, whose, subId, path));
  };
  const auto erase = [&] {
    any.DoOneOf({[&] { BothOn(at, CALL(EraseSelectedAnnotations)); },
                 [&] { BothOn<true>(at, CALL(ClearAnnotations, author, subId)); },
                 [&] { BothOn<true>(at, CALL(EraseAnnotation, author, id)); },
                 [&] { BothOn<true>(at, CALL(EraseAnnotationFromRemote, author, id)); }});
  };
  const auto cancel = [&] {
    const auto& pending = at.plain->pending;
    const bool isPending = !pending.empty() && !any.OneIn(3);
    BothOn(at, CALL(CancelAnnotation, isPending ? any.OneOf(pending).first : id));
  };
  any.DoOneOf({select, select, select, askEraser, askEraser, askEraser, cancel, cancel, erase});
}

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
  const PlainMarkPtr mark = at.plain->GetLocalAnnotation(PlainPage::kNewId);
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
  if (at.plain->pending.size() <= 30) {
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
  mark.annotationId = AnyMarkIdOn(*to.plain);
  mark.userId = any.OneIn(3) ? AnyAuthorOn(*to.plain) : any.UserId();
  if (!to.plain->pending.empty() && any.OneIn(4)) {
    mark.annotationId = any.OneOf(to.plain->pending).first;
  }
  const PlainMarkPtr pending = to.plain->GetLocalAnnotation(mark.annotationId);
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
  if (!any.OneIn(12)) {
    mark.points[0] = any.PeerPoints(to.plain->Size());
  }
  if (any.OneIn(16)) {
    mark.points[static_cast<unsigned>(any.SubModel())] = any.PeerPoints(to.plain->Size());
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
  const Marks marks = MarksOf(*to.plain);
  const bool isFull = marks.size() > kMostMarks;
  Held given = {nullptr, nullptr};
  if (!any.OneIn(4)) {
    given = MakePeersMark(to);
    if (isFull) {
      given.plain->annotationId = any.OneOf(marks)->annotationId;
      given.object->SetAnnotationId(given.plain->annotationId);
    }
    return HandOver(to, std::move(given));
  }
  // An object that is still the host's, or a page's own.
  if (!held.empty() && !any.OneIn(3)) {
    given = std::move(held.front());
    held.pop_front();
  } else {
    given.plain = AnyMark();
  }
  if (given.plain == nullptr || isFull) {
    return;
  }
  if (any.OneIn(2)) {
    given.plain->subModelIndex = any.SubModel();
    given.plain->object->subModelIndex = given.plain->subModelIndex;
  }
  HandOver(to, std::move(given));
}

// What the interface lets a host do to a mark that the engine handed out.
void Session::ChangeAMark() {
  const PlainMarkPtr mark = AnyMark();
  if (mark == nullptr) {
    return;
  }
  const AnnotationPoint point = any.PeerPoint({60, 40});
  const auto both = [&](const char* name, const auto& act, const auto&... with) {
    BothTo(*mark->object, *mark, name, act, with...);
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
      {age, age, age, insert, turn, [&] { both(CALL(Erase, any.Below(3))); },
       [&] { both(CALL(AddPoint, point)); }, [&] { both(CALL(StartMoving, point)); },
       [&] { both(CALL(Moving, point)); }, [&] { both(CALL(ClearPoints)); },
       [&] {
         both(CALL(SetRectEx, CurrentAnnotPageSize{30 + any.Below(90), 30 + any.Below(90)}));
       }});
}
