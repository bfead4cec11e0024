// The generated host's calls about the engine's life, documents, pages and navigation.
#include "model/Session.h"

#include <parchlet/LayeredWindow.h>

void Session::StartAndStop() {
  // Another thread paints from Init on, which the model would not know.
  if (!isPaintedAtOnce && !plain.isInitialised) {
    return;
  }
  if (any.OneIn(3)) {
    Trace("Destroy");
    engine->Destroy();
    plain.Destroy();
  }
  Trace("Init");
  Same("Init", engine->Init(), plain.isInitialised ? 0 : 1);
  plain.isInitialised = true;
}

void Session::ChangeDocuments() {
  const std::string doc = any.DocId();
  // Only a new document becomes the current one.
  if (any.OneIn(plain.current ? 12 : 2)) {
    Trace("DelDoc " + Text(doc));
    Same("DelDoc", engine->DelDoc(doc), plain.DelDoc(doc));
    return;
  }
  const std::string creator = any.UserId();
  Trace("NewDoc " + Text(doc));
  Same("NewDoc", engine->NewDoc(creator, doc), plain.NewDoc(creator, doc));
}

void Session::AskForDocuments() {
  const std::string doc = any.DocId();
  Trace("ask for " + Text(doc));
  Same("GetDocCount", engine->GetDocCount(), static_cast<int>(plain.documents.size()));
  Same("IsDocExist", engine->IsDocExist(doc), plain.FindDoc(doc) != nullptr ? 1 : 0);
  std::string creator = "?";
  const int result = engine->GetDocCreator(doc, creator);
  const PlainEngine::Document* document = plain.FindDoc(doc);
  Same("GetDocCreator", result, document != nullptr ? 1 : 0);
  Same("a document's creator", creator, document != nullptr ? document->creator : "?");
  const int count = engine->GetPageCount(doc);
  document = plain.FindDoc(doc);
  Same("GetPageCount", count, document != nullptr ? static_cast<int>(document->pages.size()) : 0);
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
  Trace("NewPage " + Text(doc) + " " + Text(page) + " " + std::to_string(info.width) + "x" +
        std::to_string(info.height));
  const std::string creator = any.UserId();
  const int result = engine->NewPage(doc, page, creator, hasWindow ? window : nullptr, info);
  Same("NewPage", result, plain.NewPage(doc, page, creator, hasWindow, !isDead && !isHuge, info));
}

void Session::RemovePage() {
  const Known at = AnyPage();
  Trace("DelPage " + Text(at.doc) + " " + Text(at.page));
  Same("DelPage", engine->DelPage(at.doc, at.page), plain.DelPage(at.doc, at.page));
}

void Session::AskForPages() {
  const Known at = AnyPage();
  Trace("ask for " + Text(at.doc) + " " + Text(at.page));
  const int index = engine->GetPageIndex(at.doc, at.page);
  const PlainPage* page = plain.FindPage(at.doc, at.page);
  Same("GetPageIndex", index, page != nullptr ? page->index : -1);
  const bool isInitial = any.OneIn(2);
  AnnotationPageInfo info = {7, 7, 7, 7, true, {7, 7, 7, 7}, 7};
  AnnotationPageInfo expected = info;
  const int result = engine->GetPageSize(at.doc, at.page, info, isInitial);
  page = plain.FindPage(at.doc, at.page);
  Same("GetPageSize", result, page != nullptr ? 1 : 0);
  if (page != nullptr) {
    expected = isInitial ? page->initial : page->now;
  }
  Same("a page's geometry", Text(info), Text(expected));
  AskForPageCreator();
}

void Session::AskForPageCreator() {
  const Known at = AnyPage();
  std::string buffer(static_cast<std::size_t>(any.Below(8)), '?');
  std::string expected = buffer;
  const bool isNull = any.OneIn(8);
  const bool isNegative = any.OneIn(8);
  Trace("GetPageCreator");
  const int size = isNegative ? -1 : static_cast<int>(buffer.size());
  const int result =
      engine->GetPageCreator(at.doc, at.page, isNull ? nullptr : buffer.data(), size);
  Same("GetPageCreator", result,
       plain.GetPageCreator(at.doc, at.page, isNull || isNegative ? nullptr : &expected));
  Same("a page's creator", buffer, expected);
}

void Session::ResizePage() {
  const Known at = AnyPage();
  AnnotationPageInfo info = any.Geometry();
  if (any.OneIn(4) && at.plain != nullptr) {
    info.width = at.plain->now.width;
    info.height = at.plain->now.height;
  }
  const bool isResize = !any.OneIn(4);
  Trace("UpdatePage " + Text(at.doc) + " " + Text(at.page) + " " + std::to_string(info.width) +
        "x" + std::to_string(info.height));
  const int result = engine->UpdatePage(at.doc, at.page, info, isResize);
  PlainPage* page = plain.FindPage(at.doc, at.page);
  Same("UpdatePage", result, page != nullptr ? page->Update(info, isResize) : 0);
  Settle();
}

void Session::ResizeStorm() {
  for (int i = 0; i < 8; ++i) {
    ResizePage();
  }
}

void Session::Navigate() {
  const int kind = any.Below(7);
  Trace("navigate " + std::to_string(kind));
  const std::string doc = any.DocId();
  if (kind == 0) {
    Same("GotoFirstPage", engine->GotoFirstPage(doc), plain.Goto(1));
  } else if (kind == 1) {
    const int count =
        plain.current ? static_cast<int>(plain.documents.at(*plain.current).pages.size()) : 0;
    Same("GotoLastPage", engine->GotoLastPage(doc), plain.Goto(count));
  } else if (kind == 2) {
    Same("GotoNextPage", engine->GotoNextPage(doc), plain.GotoNext());
  } else if (kind == 3) {
    Same("GotoPreviousPage", engine->GotoPreviousPage(doc), plain.GotoPrevious());
  } else if (kind == 4) {
    const int index = any.OneIn(4) ? any.Order() : any.Below(5);
    Same("GotoPage", engine->GotoPage(doc, index), plain.GotoClamped(index));
  } else if (kind == 5) {
    const std::string page = any.PageId();
    Same("GotoPage", engine->GotoPage(doc, page), plain.GotoId(page));
  } else {
    const Known at = AnyPage();
    Same("SetCurrentPage", engine->SetCurrentPage(at.doc, at.page),
         plain.SetCurrentPage(at.doc, at.page));
  }
}

void Session::AskForCurrentPage() {
  Trace("GetCurrentPageInfo");
  std::string doc = "?";
  std::string pageId = "?";
  engine->GetCurrentPageInfo(doc, pageId);
  const PlainPage* page = plain.CurrentPage();
  Same("the current document", doc, plain.current.value_or("?"));
  Same("the current page", pageId, page != nullptr ? page->id : "?");
}

void Session::MoveAWindow() {
  const LONG x = any.Below(100);
  const LONG width = 1 + any.Below(80);
  Trace("a window at " + std::to_string(x));
  AnyWindow().SetScreenRect({x, x, x + width, x + 1 + any.Below(60)});
}

// Pages whose window has gone are not pushed any more, which the model would have to know.
void Session::ReplaceAWindow() {
  if (!isPaintedAtOnce) {
    return;
  }
  Trace("a window goes");
  if (any.OneIn(2)) {
    UnregisterLayeredWindow(windows.front().Handle());
  }
  windows.pop_front();
  windows.emplace_back(RECT{0, 0, 64, 48});
}

// Accepted whatever they say, and to no effect.
void Session::MakeIdleCalls() {
  const std::string doc = any.DocId();
  const std::string page = any.PageId();
  Trace("idle calls");
  std::string out = "?";
  Same("SetZoom", engine->SetZoom(doc, 2.0F, -1, 1), 1);
  Same("SetPageSize", engine->SetPageSize(doc, page, 0, -1), 1);
  Same("IsDocOpened", engine->IsDocOpened(doc, out), 1);
  Same("DuplicatePage", engine->DuplicatePage(doc, page, out), 1);
  Same("SaveAs", engine->SaveAs(doc, page), 1);
  Same("what they write", out, std::string("?"));
}
