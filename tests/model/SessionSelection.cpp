// The generated host's calls about selecting, moving and erasing.
#include "model/Session.h"

void Session::StartSelecting() {
  const Known at = AnyPage();
  const std::string author = any.OneIn(3) ? AnyAuthorOn(at.plain) : "";
  const std::string subId = any.UserSubId();
  const POINT point = any.Point();
  Trace("StartSelecting " + Text(at.doc) + " " + Text(at.page) + " " + std::to_string(point.x) +
        "," + std::to_string(point.y));
  const int result = engine->StartSelecting(at.doc, at.page, author, subId, point);
  PlainPage* page = plain.FindPage(at.doc, at.page);
  const bool isOn = page != nullptr && page->Holds(point);
  Same("StartSelecting", result, isOn ? 1 : 0);
  if (isOn) {
    page->StartSelecting(author, subId, point);
  }
}

void Session::MoveSelecting() {
  MoveSelecting(any.Point());
}

void Session::MoveSelecting(POINT point) {
  Trace("MoveSelecting " + std::to_string(point.x) + "," + std::to_string(point.y));
  const int result = engine->MoveSelecting(point);
  PlainPage* page = plain.CurrentPage();
  Same("MoveSelecting", result, page != nullptr ? page->MoveSelecting(point) : 0);
  Settle();
}

void Session::EndSelecting() {
  Trace("EndSelecting");
  const int result = engine->EndSelecting();
  PlainPage* page = plain.CurrentPage();
  Same("EndSelecting", result, page != nullptr ? page->EndSelecting() : 0);
}

void Session::AskForSelection() {
  const Known at = AnyPage();
  Trace("GetSelectedAnnotations");
  const auto selection = engine->GetSelectedAnnotations(at.doc, at.page);
  const PlainPage* page = plain.FindPage(at.doc, at.page);
  SameMarks("GetSelectedAnnotations", selection,
            page != nullptr ? page->selected : PlainPage::Marks());
}

// Chance alone would seldom press on a mark that is selected, and drag it.
void Session::GrabSelection() {
  const PlainPage* page = plain.CurrentPage();
  if (page == nullptr) {
    return;
  }
  if (page->selected.empty()) {
    Press({0, 0});
    MoveSelecting({page->now.width, page->now.height});
    return;
  }
  const auto skipped = any.Below(static_cast<int>(page->selected.size()));
  const RECT& frame = std::next(page->selected.begin(), skipped)->second->frame;
  Press({frame.left, frame.top});
  for (int moves = any.Below(4); moves > 0; --moves) {
    MoveSelecting(any.Point());
  }
  if (any.OneIn(3)) {
    EndSelecting();
  }
}

// On the current page, for any author's mark.
void Session::Press(POINT point) {
  const std::string doc = *plain.current;
  const std::string pageId = plain.CurrentPage()->id;
  Trace("StartSelecting " + std::to_string(point.x) + "," + std::to_string(point.y));
  const int result = engine->StartSelecting(doc, pageId, "", "", point);
  PlainPage* page = plain.FindPage(doc, pageId);
  Same("StartSelecting", result, page->Holds(point) ? 1 : 0);
  if (page->Holds(point)) {
    page->StartSelecting("", "", point);
  }
  Settle();
}

void Session::AskEraser() {
  const Known at = AnyPage();
  const std::string author = any.OneIn(3) ? AnyAuthorOn(at.plain) : "";
  const std::string subId = any.UserSubId();
  std::vector<POINT> path(static_cast<std::size_t>(any.Below(4)));
  for (POINT& point : path) {
    point = AnyPointNearMarksOf(at.plain);
    Trace("eraser " + std::to_string(point.x) + "," + std::to_string(point.y));
  }
  const Ids ids = engine->EraseAnnotations(at.doc, at.page, author, subId, path);
  Ids expected;
  if (plain.hasActiveWindow && !path.empty()) {
    if (PlainPage* page = plain.FindPage(at.doc, at.page)) {
      expected = path.size() == 1 ? Ids{page->EraserAt(author, subId, path[0])}
                                  : page->EraserAlong(author, subId, path[0], path[1]);
    }
  }
  Same("EraseAnnotations", ids, expected);
}

void Session::Erase() {
  const Known at = AnyPage();
  const std::string author = AnyAuthorOn(at.plain);
  const std::string id = AnyMarkIdOn(at.plain);
  Trace("EraseAnnotation " + Text(author) + " " + Text(id));
  const int result = any.OneIn(2) ? engine->EraseAnnotation(at.doc, at.page, author, id)
                                  : engine->EraseAnnotationFromRemote(at.doc, at.page, author, id);
  PlainPage* page = plain.hasActiveWindow ? plain.FindPage(at.doc, at.page) : nullptr;
  Same("EraseAnnotation", result, page != nullptr ? page->Erase(author, id) : 0);
}

void Session::EraseSelection() {
  const Known at = AnyPage();
  Trace("EraseSelectedAnnotations");
  const Ids ids = engine->EraseSelectedAnnotations(at.doc, at.page);
  PlainPage* page = plain.FindPage(at.doc, at.page);
  Same("EraseSelectedAnnotations", ids, page != nullptr ? page->DropSelection() : Ids());
}
