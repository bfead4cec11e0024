// The generated host's calls about settings, documents, pages, drawing, selecting and erasing.
#include <parchlet/LayeredWindow.h>

#include "model/Session.h"
#include "support/TestAccess.h"

void Session::ChangeSettings() {
  const int kind = any.Below(6);
  const std::uint32_t word = any.Word();
  const unsigned width = any.OneIn(4) ? any.Word() : static_cast<unsigned>(any.Below(40));
  const auto type = static_cast<AnnotationType>(any.OneIn(12) ? any.Below(8) - 2 : 1);
  const AnnotationSubType subType = any.SubType();
  const std::string userId = any.UserId();
  const std::string subId = any.UserSubId();
  const std::string name = any.Name();
  if (kind == 0) {
    Both("SetPen", [&](auto& e) { e.SetPen(word, width); });
  } else if (kind <= 2) {
    Both("SetAnnotationType", [&](auto& e) { e.SetAnnotationType(type, subType); });
  } else if (kind == 3) {
    Both(
        "SetUserInfo", [&](auto& e) { e.SetUserInfo(userId, subId, name); }, userId, subId);
  } else if (kind == 4) {
    Both("SetPageBackgroundColor", [&](auto& e) { return e.SetPageBackgroundColor(word); });
  } else {
    Same("SetNicknameTip", engine->SetNicknameTip(word, width % 30, "no such font", word), 1);
  }
}

void Session::StartAndStop() {
  // Another thread paints from Init on, which the model would not know.
  if (!isPaintedAtOnce && !plain.isInitialised) {
    return;
  }
  if (any.OneIn(3)) {
    Both("Destroy", [](auto& e) { e.Destroy(); });
  }
  Trace("Init");
  Same("Init", engine->Init(), plain.isInitialised ? 0 : 1);
  plain.isInitialised = true;
}

void Session::ChangeDocuments() {
  const std::string doc = any.DocId();
  const std::string creator = any.UserId();
  if (any.OneIn(2)) {
    const Known at = AnyPage();
    Both(
        "DelPage", [&](auto& e) { return e.DelPage(at.doc, at.page); }, at);
    return;
  }
  // Only a new document becomes the current one.
  if (any.OneIn(plain.current ? 12 : 2)) {
    Both(
        "DelDoc", [&](auto& e) { return e.DelDoc(doc); }, doc);
  } else {
    Both(
        "NewDoc", [&](auto& e) { return e.NewDoc(creator, doc); }, doc);
  }
}

void Session::AddPage() {
  const Known at = AnyPage();
  const std::string doc = plain.current && !any.OneIn(3) ? *plain.current
                          : any.OneIn(2)                 ? at.doc
                                                         : any.DocId();
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
    const bool isResize = !any.OneIn(4);
    const auto resize = [&](auto& e) { return e.UpdatePage(at.doc, at.page, info, isResize); };
    Both("UpdatePage", resize, at, info);
    Settle();
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
  const int kind = any.Below(7);
  const std::string doc = any.DocId();
  const Known at = AnyPage();
  const int index = any.OneIn(4) ? any.Order() : any.Below(5);
  if (kind == 6) {
    Both(
        "SetCurrentPage", [&](auto& e) { return e.SetCurrentPage(at.doc, at.page); }, at);
  } else if (kind == 5) {
    Both(
        "GotoPage", [&](auto& e) { return e.GotoPage(doc, at.page); }, at);
  } else {
    const auto go = [&](auto& e) {
      return kind == 0   ? e.GotoFirstPage(doc)
             : kind == 1 ? e.GotoLastPage(doc)
             : kind == 2 ? e.GotoNextPage(doc)
             : kind == 3 ? e.GotoPreviousPage(doc)
                         : e.GotoPage(doc, index);
    };
    Both("navigate", go, kind, index);
  }
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
    const int numbers[] = {
        e.GetDocCount(),
        e.IsDocExist(at.doc),
        e.GetDocCreator(at.doc, creator),
        e.GetPageCount(at.doc),
        e.GetPageIndex(at.doc, at.page),
        e.GetPageSize(at.doc, at.page, info, isInitial),
        e.GetPageCreator(at.doc, at.page, isNull ? nullptr : buffer.data(), size)};
    e.GetCurrentPageInfo(now[0], now[1]);
    const std::string drawn = e.GetCurrentAnnotationInfo(now[2], now[3]);
    Ids answers = {creator, buffer, Text(info), Text(now), drawn};
    for (const int number : numbers) {
      answers.push_back(std::to_string(number));
    }
    return answers;
  };
  Both("ask for everything", ask, at, author, id);
  const auto confirmed = [&](PlainPage& page) { return page.Confirmed(author, id); };
  SameObject("GetAnnotation", engine->GetAnnotation(at.doc, at.page, author, id),
             OnPage(at, confirmed));
  Same("FindAnnotation", engine->FindAnnotation(at.doc, at.page, author, id),
       OnPage(at, confirmed) != nullptr ? 1 : 0);
  const auto pending = [&](PlainPage& page) {
    return page.pending.contains(id) ? page.pending.at(id) : nullptr;
  };
  SameObject("GetLocalAnnotation", engine->GetLocalAnnotation(at.doc, at.page, id),
             OnPage(at, pending));
  SameMarks("GetSelectedAnnotations", engine->GetSelectedAnnotations(at.doc, at.page),
            OnPage(at, [](PlainPage& page) { return page.selected; }));
  const PlainMarkPtr mark = any.OneIn(8) ? nullptr : AnyMark();
  Same("IsPointAnnotation", engine->IsPointAnnotation(mark != nullptr ? mark->object : nullptr),
       mark != nullptr && mark->IsDot() ? 1 : 0);
  // Accepted whatever they say, and to no effect; the last one refused.
  std::string out = "?";
  const int idle[] = {engine->SetZoom(at.doc, 2.0F, -1, 1),
                      engine->SetPageSize(at.doc, at.page, 0, -1),
                      engine->IsDocOpened(at.doc, out),
                      engine->DuplicatePage(at.doc, at.page, out),
                      engine->SaveAs(at.doc, id),
                      engine->AddAnnotationFromRemote(at.doc, at.page, nullptr)};
  for (const int answer : idle) {
    out += Text(answer);
  }
  Same("idle calls", out, std::string("?111110"));
}

void Session::MoveDrawing() {
  const POINT point = any.Point();
  Trace("MoveDrawing", point);
  const PlainMarkPtr mark = plain.Drawing();
  Same("MoveDrawing", engine->MoveDrawing(point), mark != nullptr ? 1 : 0);
  if (mark != nullptr) {
    mark->AddPoint(plain.CurrentPage()->At(point));
  }
}

void Session::EndDrawing() {
  Trace("EndDrawing");
  const bool isDrawing = plain.Drawing() != nullptr;
  Same("EndDrawing", engine->EndDrawing(), isDrawing ? 1 : 0);
  if (isDrawing) {
    plain.CurrentPage()->drawing = nullptr;
  }
}

// The page's surface, or what the screen shows where a window is.
void Session::SavePage() {
  static const std::vector<std::string> names = {"page.png", "page.jpg", "page.bmp"};
  const Known at = AnyPage();
  HWND const window = any.OneIn(2) ? AnyWindow().Handle() : HWND{nullptr};
  Trace("SavePage", at);
  const int result = engine->SavePage(at.doc, at.page, Folder().File(any.OneOf(names)), window);
  Same("SavePage", result, plain.FindPage(at.doc, at.page) != nullptr ? 1 : 0);
}

void Session::StartSelecting() {
  const Known at = AnyPage();
  const std::string author = any.OneIn(3) ? AnyAuthorOn(at.plain) : "";
  const std::string subId = any.UserSubId();
  Press(at, author, subId, any.Point());
}

void Session::Press(const Known& at, const std::string& author, const std::string& subId,
                    POINT point) {
  Trace("StartSelecting", at, author, subId, point);
  const int result = engine->StartSelecting(at.doc, at.page, author, subId, point);
  Same("StartSelecting", result, OnPage(at, [&](PlainPage& page) {
         return page.Holds(point) ? page.StartSelecting(author, subId, point) : 0;
       }));
  Settle();
}

void Session::MoveSelecting() {
  MoveSelecting(any.Point());
}

void Session::MoveSelecting(POINT point) {
  Trace("MoveSelecting", point);
  const int result = engine->MoveSelecting(point);
  Same("MoveSelecting", result, PlainEngine::On(plain.CurrentPage(), [&](PlainPage& page) {
         return page.MoveSelecting(point);
       }));
  Settle();
}

void Session::EndSelecting() {
  Trace("EndSelecting");
  const int result = engine->EndSelecting();
  Same("EndSelecting", result,
       PlainEngine::On(plain.CurrentPage(), [](PlainPage& page) { return page.EndSelecting(); }));
}

// Chance alone would seldom press on a mark that is selected, and drag it.
void Session::GrabSelection() {
  PlainPage* page = plain.CurrentPage();
  if (page == nullptr) {
    return;
  }
  const Known at = {*plain.current, page->id, page};
  if (page->selected.empty()) {
    Press(at, "", "", {0, 0});
    MoveSelecting({page->now.width, page->now.height});
    return;
  }
  const RECT frame = AnyOf(page->selected).second->frame;
  Press(at, "", "", {frame.left, frame.top});
  for (int moves = any.Below(4); moves > 0; --moves) {
    MoveSelecting(any.Point());
  }
  if (any.OneIn(3)) {
    EndSelecting();
  }
}

void Session::AskEraser() {
  const Known at = AnyPage();
  const std::string author = any.OneIn(3) ? AnyAuthorOn(at.plain) : "";
  const std::string subId = any.UserSubId();
  std::vector<POINT> path(static_cast<std::size_t>(any.Below(4)));
  for (POINT& point : path) {
    point = AnyPointNearMarksOf(at.plain);
    Trace("eraser", point);
  }
  Trace("EraseAnnotations", at, author, subId);
  const Ids ids = engine->EraseAnnotations(at.doc, at.page, author, subId, path);
  PlainPage* page = path.empty() ? nullptr : plain.ActivePage(at.doc, at.page);
  Same("EraseAnnotations", ids, PlainEngine::On(page, [&](PlainPage& found) {
         return path.size() == 1 ? Ids{found.EraserAt(author, subId, path[0])}
                                 : found.EraserAlong(author, subId, path[0], path[1]);
       }));
}

// One mark, the selection, all of an author's; or a pending change is cancelled.
void Session::Erase() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(at.plain);
  const std::string subId = any.UserSubId();
  std::string id = AnyMarkIdOn(at.plain);
  const int kind = any.Below(16);
  Trace("erase", kind, at, author, subId, id);
  if (kind == 0) {
    const Ids ids = engine->EraseSelectedAnnotations(at.doc, at.page);
    Same("the selection", ids, OnPage(at, [](PlainPage& page) { return page.DropSelection(); }));
  } else if (kind < 5) {
    const int result = kind == 1   ? engine->ClearAnnotations(at.doc, at.page, author, subId)
                       : kind == 2 ? engine->EraseAnnotation(at.doc, at.page, author, id)
                                   : engine->EraseAnnotationFromRemote(at.doc, at.page, author, id);
    PlainPage* page = plain.ActivePage(at.doc, at.page);
    Same("erased", result, PlainEngine::On(page, [&](PlainPage& found) {
           return kind == 1 ? found.Clear(author, subId) : found.Erase(author, id);
         }));
  } else {
    if (at.plain != nullptr && !at.plain->pending.empty() && !any.OneIn(3)) {
      id = AnyOf(at.plain->pending).first;
    }
    engine->CancelAnnotation(at.doc, at.page, id);
    OnPage(at, [&](PlainPage& page) { return page.Cancel(id); });
  }
}
