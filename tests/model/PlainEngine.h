// The engine's façade as it must be, told in the plainest way: documents, pages, settings, records.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/PlainPage.h"

// Answers calls as Parchlet does, with operations of the same names; those on one page are the
// page's own.
class PlainEngine {
 public:
  using Id = std::string;

  struct Document {
    Id id, creator;
    std::vector<std::shared_ptr<PlainPage>> pages;  // in the order of their indices
    PlainPage* current = nullptr;
  };

  int Init() { return std::exchange(isInitialised, true) ? 0 : 1; }
  void Destroy();
  void SetPen(unsigned long color, unsigned width);
  void SetAnnotationType(AnnotationType type, AnnotationSubType subType);
  void SetUserInfo(const Id& userId, const Id& userSubId, const Id& nickname);
  int SetPageBackgroundColor(unsigned color);

  int NewDoc(const Id& creator, const Id& doc);
  int DelDoc(const Id& doc);
  int GetDocCount() const { return static_cast<int>(documents.size()); }
  int GetDocCreator(const Id& doc, Id& creator);
  int IsDocExist(const Id& doc) { return FindDoc(doc) != nullptr ? 1 : 0; }

  // `isUsable` tells whether the window and the section can be had.
  int NewPage(const Id& doc, const Id& page, const Id& creator, bool hasWindow, bool isUsable,
              AnnotationPageInfo info);
  int DelPage(const Id& doc, const Id& page);
  int GetPageCount(const Id& doc) { return CountPages(FindDoc(doc)); }
  int GetPageIndex(const Id& doc, const Id& page) {
    const PlainPage* found = FindPage(doc, page);
    return found != nullptr ? found->index : -1;
  }
  int GetPageCreator(const Id& doc, const Id& page, char* buffer, int size);
  int GetPageSize(const Id& doc, const Id& page, AnnotationPageInfo& info, bool initial);

  int SetCurrentPage(const Id& doc, const Id& page) {
    PlainPage* found = FindPage(doc, page);
    return Turn(found != nullptr ? &documents.at(doc) : nullptr, found);
  }
  void GetCurrentPageInfo(Id& doc, Id& page);
  Id GotoFirstPage(const Id& /*doc*/) { return Goto(1); }
  Id GotoLastPage(const Id& /*doc*/) { return Goto(CountPages(current)); }
  Id GotoNextPage(const Id& /*doc*/) { return Step(1); }
  Id GotoPreviousPage(const Id& /*doc*/) { return Step(-1); }
  Id GotoPage(const Id& /*doc*/, int index) {
    return Goto(std::max(1, std::min(index, CountPages(current))));
  }
  int GotoPage(const Id& /*doc*/, const Id& page) { return Turn(current, In(current, page)); }

  int StartDrawing(const Id& doc, const Id& page, POINT at);
  int MoveDrawing(POINT at);
  int EndDrawing();
  Id GetCurrentAnnotationInfo(Id& doc, Id& page);
  int MoveSelecting(POINT at) {
    return CurrentPage() != nullptr ? CurrentPage()->MoveSelecting(at) : 0;
  }
  int EndSelecting() { return CurrentPage() != nullptr ? CurrentPage()->EndSelecting() : 0; }

  // --- What the interface does otherwise ---
  Document* FindDoc(const Id& doc);
  PlainPage* FindPage(const Id& doc, const Id& page);
  PlainPage* CurrentPage() const { return current != nullptr ? current->current : nullptr; }

  std::map<Id, Document> documents;
  Document* current = nullptr;
  bool isInitialised = false;
  bool hasActiveWindow = false;  // some page has been given one
  PlainMark own;                 // what a new mark of the local user has
  std::vector<std::string> log;  // the records of each call, as "LEVEL FUNCTION: MESSAGE"

 private:
  static int CountPages(const Document* document) {
    return document != nullptr ? static_cast<int>(document->pages.size()) : 0;
  }
  // Without a record; null when there is none.
  static PlainPage* In(const Document* document, const Id& page);
  // Makes the page, if there is one, the document's current page.
  static int Turn(Document* document, PlainPage* page);
  // The id of the page with that index, now current, or the empty string.
  Id Goto(int index);
  Id Step(int way) { return CurrentPage() != nullptr ? Goto(CurrentPage()->index + way) : ""; }
  PlainMarkPtr InProgress() const {
    return CurrentPage() != nullptr ? CurrentPage()->drawing : nullptr;
  }
  // Whether a pointer event extends or ends a mark.
  bool IsDrawing() const {
    return InProgress() != nullptr && InProgress()->type == AnnotationTypeDrawing;
  }
  void Record(const Id& function, const Id& text, const Id& id);

  unsigned backgroundColor = 0xFFFFFFFF;
};
