// The generated host's calls about settings, documents, pages, drawing, selecting and erasing.
#include <parchlet/LayeredWindow.h>

#include "model/Session.h"
#include "support/TestAccess.h"

void Session::MakeOneCall() {
  const struct {
    int weight;
    std::function<void()> make;
  } calls[] = {{36, [this] { ReceiveMark(); }},
               {12, [this] { ReceiveAgain(); }},
               {12, [this] { ChangeAMark(); }},
               {16, [this] { StartDrawing(); }},
               {16, [this] { Both(CALL(MoveDrawing, any.Point())); }},
               {4, [this] { Both(CALL(EndDrawing)); }},
               {4, [this] { PlacePicture(); }},
               {1, [this] { SavePage(); }},
               {14, [this] { StartSelecting(); }},
               {16, [this] { Both(CALL(MoveSelecting, any.Point())); }},
               {6, [this] { Both(CALL(EndSelecting)); }},
               {24, [this] { GrabSelection(); }},
               {16, [this] { AskEraser(); }},
               {5, [this] { Erase(); }},
               {12, [this] { Cancel(); }},
               {7, [this] { ChangeSettings(); }},
               {1, [this] { StartAndStop(); }},
               {2, [this] { ChangeDocuments(); }},
               {5, [this] { AddPage(); }},
               {6, [this] { ResizePage(); }},
               {5, [this] { Navigate(); }},
               {12, [this] { AskForEverything(); }},
               {4, [this] { ChangeAWindow(); }},
               {15, [this] { Refresh(); }},
               {5, [this] { PassTime(); }}};  // 256 together
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

void Session::Start() {
  Both(CALL(Init));
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

void Session::Refresh() {
  Trace("refresh");
  const int pushed = ParchletTestAccess::Refresh(*engine);
  // The window may have gone where windows go; see ChangeAWindow.
  Same("a push", pushed != 0 || isPaintedAtOnce, plain.CurrentPage() != nullptr || isPaintedAtOnce);
  PaintModel();
}

void Session::PassTime() {
  if (!isPaintedAtOnce) {
    tick += any.OneOf({1U, 40U, 1999U, 2000U, 2999U, 5000U, 7999U, 8000U});
    Trace("the time is", tick);
    clock.Set(tick);
  }
}

void Session::ChangeSettings() {
  const std::uint32_t word = any.Word();
  const unsigned width = any.OneIn(4) ? any.Word() : static_cast<unsigned>(any.Below(40));
  const auto type = static_cast<AnnotationType>(any.OneIn(12) ? any.Below(8) - 2 : 1);
  const std::string userId = any.UserId();
  const std::string subId = any.UserSubId();
  const auto setKind = [&] { Both(CALL(SetAnnotationType, type, any.SubType())); };
  any.DoOneOf(
      {setKind, setKind, [&] { Both(CALL(SetPen, word, width)); },
       [&] { Both(CALL(SetUserInfo, userId, subId, any.Name())); },
       [&] { Both(CALL(SetPageBackgroundColor, word)); },
       [&] { Same("tip", engine->SetNicknameTip(word, width % 30, "no such font", word), 1); }});
}

void Session::StartAndStop() {
  // Another thread paints from Init on, which the model would not know.
  if (!isPaintedAtOnce && !plain.isInitialised) {
    return;
  }
  if (any.OneIn(3)) {
    Both(CALL(Destroy));
  }
  Both(CALL(Init));
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

// Once, or in a storm.
void Session::ResizePage() {
  for (int left = any.OneIn(8) ? 8 : 1; left > 0; --left) {
    const Known at = AnyPage();
    AnnotationPageInfo info = any.Geometry();
    if (any.OneIn(4) && at.plain != nullptr) {
      info.width = at.plain->now.width;
      info.height = at.plain->now.height;
    }
    BothOn(at, CALL(UpdatePage, info, !any.OneIn(4)));
  }
}

void Session::ChangeAWindow() {
  // Pages whose window has gone are not pushed any more, which the model would have to know.
  if (isPaintedAtOnce && any.OneIn(4)) {
    Trace("a window goes");
    if (any.OneIn(2)) {
      UnregisterLayeredWindow(windows.front().Handle());
    }
    windows.pop_front();
    windows.emplace_back(RECT{0, 0, 64, 48});
    return;
  }
  const LONG x = any.Below(100);
  const LONG width = 1 + any.Below(80);
  Trace("a window at", x);
  AnyWindow().SetScreenRect({x, x, x + width, x + 1 + any.Below(60)});
}

void Session::Navigate() {
  const std::string doc = any.DocId();
  const Known at = AnyPage();
  const int index = any.OneIn(4) ? any.Order() : any.Below(5);
  any.DoOneOf({[&] { Both(CALL(GotoFirstPage, doc)); }, [&] { Both(CALL(GotoLastPage, doc)); },
               [&] { Both(CALL(GotoNextPage, doc)); }, [&] { Both(CALL(GotoPreviousPage, doc)); },
               [&] { Both(CALL(GotoPage, doc, index)); },
               [&] { Both(CALL(GotoPage, doc, at.page)); },
               [&] { Both(CALL(SetCurrentPage, at.doc, at.page)); }});
}

void Session::AskForEverything() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(at.plain);
  const std::string id = AnyMarkIdOn(at.plain);
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
  if (at.plain != nullptr) {
    const AnnotationPage* page = ParchletTestAccess::GetPageById(*engine, at.doc, at.page);
    std::map<std::string, Annotation*> authored;
    Same("GetUserAnnotations", page->GetUserAnnotations(author, &authored),
         at.plain->confirmed.contains(author));
    Same("an author's marks", authored, at.plain->ConfirmedOf(author));
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
  Same("idle calls", out + Text(idle), std::string("?1 1 1 1 1 0 "));
}

// The page's surface, or what the screen shows where a window is.
void Session::SavePage() {
  const Known at = AnyPage();
  HWND const window = any.OneIn(2) ? AnyWindow().Handle() : HWND{nullptr};
  const char* name = any.OneOf({"page.png", "page.jpg", "page.bmp"});
  Trace("SavePage", at.doc, at.page);
  const int result = engine->SavePage(at.doc, at.page, Folder().File(name), window);
  Same("SavePage", result, plain.FindPage(at.doc, at.page) != nullptr);
}

void Session::StartSelecting() {
  const Known at = AnyPage();
  const std::string author = any.OneIn(3) ? AnyAuthorOn(at.plain) : "";
  const POINT point = any.Point();
  BothOn(at, CALL(StartSelecting, author, any.UserSubId(), point));
}

// Chance alone would seldom press on a mark that is selected, and drag it.
void Session::GrabSelection() {
  const PlainPage* page = plain.CurrentPage();
  if (page == nullptr) {
    return;
  }
  const Known at = {plain.current->id, page->id, plain.CurrentPage()};
  if (page->selected.empty()) {
    BothOn(at, CALL(StartSelecting, "", "", POINT{0, 0}));
    Both(CALL(MoveSelecting, POINT{page->now.width, page->now.height}));
    return;
  }
  const RECT frame = any.OneOf(page->selected).second->frame;
  BothOn(at, CALL(StartSelecting, "", "", POINT{frame.left, frame.top}));
  for (int moves = any.Below(4); moves > 0; --moves) {
    Both(CALL(MoveSelecting, any.Point()));
  }
  if (any.OneIn(3)) {
    Both(CALL(EndSelecting));
  }
}

void Session::AskEraser() {
  const Known at = AnyPage();
  const std::string author = any.OneIn(3) ? AnyAuthorOn(at.plain) : "";
  std::vector<POINT> path(static_cast<std::size_t>(any.Below(4)));
  if (path.empty()) {
    Same("no path", engine->EraseAnnotations(at.doc, at.page, author, "", path), Ids());
    return;
  }
  for (POINT& point : path) {
    point = AnyPointNearMarksOf(at.plain);
  }
  BothOn<true>(at, CALL(EraseAnnotations, author, any.UserSubId(), path));
}

// One mark, the selection, or all of an author's.
void Session::Erase() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(at.plain);
  const std::string id = AnyMarkIdOn(at.plain);
  any.DoOneOf({[&] { BothOn(at, CALL(EraseSelectedAnnotations)); },
               [&] { BothOn<true>(at, CALL(ClearAnnotations, author, any.UserSubId())); },
               [&] { BothOn<true>(at, CALL(EraseAnnotation, author, id)); },
               [&] { BothOn<true>(at, CALL(EraseAnnotationFromRemote, author, id)); }});
}

void Session::Cancel() {
  const Known at = AnyPage();
  const bool isPending = at.plain != nullptr && !at.plain->pending.empty() && !any.OneIn(3);
  const std::string id = isPending ? any.OneOf(at.plain->pending).first : AnyMarkIdOn(at.plain);
  BothOn(at, CALL(CancelAnnotation, id));
}
