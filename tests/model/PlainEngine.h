// The engine's façade as it must be, told in the plainest way: documents, pages, settings, records.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/PlainPage.h"

// Answers calls as Parchlet does. `log` takes the records of each call as "LEVEL FUNCTION:
// MESSAGE".
class PlainEngine {
 public:
  using Id = std::string;

  struct Document {
    std::string id, creator;
    std::map<std::string, PlainPage> pages;
    std::optional<std::string> current;  // a page's id

    PlainPage* Current() { return current ? &pages.at(*current) : nullptr; }
    PlainPage* WithIndex(int index);
  };

  // --- As the interface has them ---
  void SetPen(unsigned long color, unsigned width);
  void SetAnnotationType(AnnotationType type, AnnotationSubType subType);
  void SetUserInfo(const Id& userId, const Id& userSubId, const Id& nickname);
  int SetPageBackgroundColor(unsigned color);
  void Destroy();

  int NewDoc(const Id& creator, const Id& doc);
  int DelDoc(const Id& doc);
  int GetDocCount() const { return static_cast<int>(documents.size()); }
  int GetDocCreator(const Id& doc, Id& creator);
  int IsDocExist(const Id& doc) { return FindDoc(doc) != nullptr ? 1 : 0; }

  int DelPage(const Id& doc, const Id& page);
  int GetPageCount(const Id& doc);
  int GetPageIndex(const Id& doc, const Id& page);
  int GetPageCreator(const Id& doc, const Id& page, char* buffer, int size);
  int GetPageSize(const Id& doc, const Id& page, AnnotationPageInfo& info, bool initial);
  int UpdatePage(const Id& doc, const Id& page, AnnotationPageInfo info, bool resize);

  int SetCurrentPage(const Id& doc, const Id& page);
  void GetCurrentPageInfo(Id& doc, Id& page);
  Id GotoFirstPage(const Id& /*doc*/) { return Goto(1); }
  Id GotoLastPage(const Id& doc);
  Id GotoNextPage(const Id& doc);
  Id GotoPreviousPage(const Id& doc);
  Id GotoPage(const Id& doc, int index);
  int GotoPage(const Id& doc, const Id& page);

  Id GetCurrentAnnotationInfo(Id& doc, Id& page);

  // --- What the interface does otherwise ---
  Document* FindDoc(const Id& doc);
  PlainPage* FindPage(const Id& doc, const Id& page);
  PlainPage* CurrentPage();
  // `isUsable` tells whether the window and the section can be had.
  int NewPage(const Id& doc, const Id& page, const Id& creator, bool hasWindow, bool isUsable,
              AnnotationPageInfo info);
  // The page to draw on, or null.
  PlainPage* PageForDrawing(const Id& doc, const Id& page, POINT at);
  // A mark of the local user, without an id.
  PlainMarkPtr NewMark(AnnotationType type, AnnotationSubType subType) const;
  void GreetOwn(PlainMark& mark) const;
  // The mark that a pointer event extends or ends.
  PlainMarkPtr Drawing();
  // The page, once any window has been given to one.
  PlainPage* ActivePage(const Id& doc, const Id& page);
  // The result of `act` on the page, or 0, none, null.
  template <class Act>
  static auto On(PlainPage* page, const Act& act) {
    return page != nullptr ? act(*page) : decltype(act(*page)){};
  }

  std::map<std::string, Document> documents;
  std::optional<std::string> current;  // a document's id
  std::string userId, userSubId, nickname;
  AnnotationPen pen = {0xFF000000, 6, 0};
  AnnotationType type = AnnotationTypeDrawing;
  AnnotationSubType subType = AnnotationSubTypePath;
  unsigned backgroundColor = 0xFFFFFFFF;
  bool hasActiveWindow = false;
  bool isInitialised = false;
  std::vector<std::string> log;

 private:
  // The id of the page with that index, now current, or the empty string.
  Id Goto(int index);
  void Record(const std::string& function, const std::string& text, const std::string& id);
};
