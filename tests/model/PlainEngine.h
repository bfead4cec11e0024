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
  struct Document {
    std::string id, creator;
    std::map<std::string, PlainPage> pages;
    std::optional<std::string> current;  // a page's id

    PlainPage* Current() { return current ? &pages.at(*current) : nullptr; }
    PlainPage* WithIndex(int index);
  };

  void SetPen(unsigned long color, unsigned width);
  void SetType(AnnotationType type, AnnotationSubType subType);
  void SetUser(const std::string& userId, const std::string& userSubId,
               const std::string& nickname);
  void Destroy();

  int NewDoc(const std::string& creator, const std::string& docId);
  int DelDoc(const std::string& docId);
  Document* FindDoc(const std::string& docId);

  // `isUsable` tells whether the window and the section can be had.
  int NewPage(const std::string& docId, const std::string& pageId, const std::string& creator,
              bool hasWindow, bool isUsable, AnnotationPageInfo info);
  int DelPage(const std::string& docId, const std::string& pageId);
  PlainPage* FindPage(const std::string& docId, const std::string& pageId);
  int GetPageCreator(const std::string& docId, const std::string& pageId, std::string* buffer);

  int SetCurrentPage(const std::string& docId, const std::string& pageId);
  PlainPage* CurrentPage();
  // The id of the page with that index, now current, or the empty string.
  std::string Goto(int index);
  std::string GotoNext();
  std::string GotoPrevious();
  std::string GotoClamped(int index);
  int GotoId(const std::string& pageId);

  // The page to draw on, or null.
  PlainPage* PageForDrawing(const std::string& docId, const std::string& pageId, POINT at);
  // A mark of the local user, without an id.
  PlainMarkPtr NewMark(AnnotationType type, AnnotationSubType subType) const;
  // The mark that a pointer event extends or ends.
  PlainMarkPtr Drawing();
  void GreetOwn(PlainMark& mark) const;

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
  void Record(const std::string& function, const std::string& text, const std::string& id);
};
