#include "model/PlainEngine.h"

// An id is logged up to its first zero byte.
void PlainEngine::Record(const Id& function, const Id& text, const Id& id) {
  log.push_back("0 Parchlet::" + function + ": " + text + id.substr(0, id.find('\0')));
}

void PlainEngine::Destroy() {
  if (std::exchange(isInitialised, false)) {
    hasActiveWindow = false;
    current = nullptr;
    documents.clear();
  }
}

void PlainEngine::SetPen(unsigned long color, unsigned width) {
  own.pen.color = static_cast<std::uint32_t>(color);
  own.pen.width = width == 0 ? 1 : width > 30 ? 30 : static_cast<std::int32_t>(width);
}

void PlainEngine::SetAnnotationType(AnnotationType type, AnnotationSubType subType) {
  own.type = type >= 1 && type <= 4 ? type : own.type;
  own.subType = subType >= 0 && subType <= 23 ? subType : own.subType;
}

void PlainEngine::SetUserInfo(const Id& userId, const Id& userSubId, const Id& nickname) {
  own.userId = userId.empty() ? own.userId : userId;
  own.userSubId = userSubId;
  own.nickname = nickname;
}

int PlainEngine::SetPageBackgroundColor(unsigned color) {
  backgroundColor = color;
  return CurrentPage() != nullptr ? 1 : 0;
}

PlainEngine::Document* PlainEngine::FindDoc(const Id& docId) {
  if (documents.contains(docId)) {
    return &documents.at(docId);
  }
  Record("IsDocExist", "doc does not exist, docid=", docId);
  return nullptr;
}

int PlainEngine::NewDoc(const Id& creator, const Id& docId) {
  if (FindDoc(docId) != nullptr) {
    Record("NewDoc", "doc is already exist, docid=", docId);
    return 1;
  }
  current = &documents[docId];
  *current = {docId, creator, {}, nullptr};
  return 1;
}

int PlainEngine::DelDoc(const Id& docId) {
  const Document* document = FindDoc(docId);
  if (document == nullptr) {
    return 0;
  }
  current = current == document ? nullptr : current;
  documents.erase(docId);
  return 1;
}

int PlainEngine::GetDocCreator(const Id& docId, Id& creator) {
  const Document* document = FindDoc(docId);
  creator = document != nullptr ? document->creator : creator;
  return document != nullptr ? 1 : 0;
}

PlainPage* PlainEngine::In(const Document* document, const Id& pageId) {
  PlainPage* page = nullptr;
  for (int i = 0; i < CountPages(document); ++i) {
    page = document->pages[i]->id == pageId ? document->pages[i].get() : page;
  }
  return page;
}

PlainPage* PlainEngine::FindPage(const Id& docId, const Id& pageId) {
  const Document* document = FindDoc(docId);
  PlainPage* page = In(document, pageId);
  if (document != nullptr && page == nullptr) {
    Record("GetPagePtr", "page does not exist, pageid=", pageId);
  }
  return page;
}

int PlainEngine::NewPage(const Id& docId, const Id& pageId, const Id& creator, bool hasWindow,
                         bool isUsable, AnnotationPageInfo info) {
  if (!hasWindow || info.width < 1) {
    Record("NewPage", "invalid parameters", "");
    return 0;
  }
  Document* document = FindDoc(docId);
  if (document == nullptr) {
    Record("NewPage", "doc does not exist, docid=", docId);
    return 0;
  }
  if (FindPage(docId, pageId) != nullptr) {
    Record("NewPage", "page is already exist, pageid=", pageId);
    return 1;
  }
  hasActiveWindow = true;
  if (!isUsable || info.height < 1) {
    Record("NewPage", "init page failed", "");
    return 0;
  }
  info.backgroundColor = backgroundColor;
  document->pages.push_back(std::make_shared<PlainPage>(info));
  document->current = document->pages.back().get();
  document->current->id = pageId;
  document->current->creator = creator;
  document->current->index = CountPages(document);
  return 1;
}

int PlainEngine::DelPage(const Id& docId, const Id& pageId) {
  Document* document = FindDoc(docId);
  const PlainPage* gone = In(document, pageId);
  if (gone == nullptr) {
    return 0;
  }
  const bool wasCurrent = document->current == gone;
  document->pages.erase(document->pages.begin() + gone->index - 1);
  for (int i = 0; i < CountPages(document); ++i) {
    document->pages[i]->index = i + 1;
  }
  if (wasCurrent) {
    document->current = document->pages.empty() ? nullptr : document->pages.front().get();
  }
  return 1;
}

int PlainEngine::GetPageCreator(const Id& docId, const Id& pageId, char* buffer, int size) {
  const PlainPage* page = buffer != nullptr && size > 0 ? FindPage(docId, pageId) : nullptr;
  if (page == nullptr || page->creator.empty()) {
    return 0;
  }
  const bool fits = page->creator.size() <= static_cast<std::size_t>(size);
  const std::string text = fits ? page->creator : std::string(static_cast<std::size_t>(size), 0);
  text.copy(buffer, text.size());
  return fits ? 1 : 0;
}

int PlainEngine::GetPageSize(const Id& docId, const Id& pageId, AnnotationPageInfo& info,
                             bool initial) {
  const PlainPage* page = FindPage(docId, pageId);
  info = page == nullptr ? info : initial ? page->initial : page->now;
  return page != nullptr ? 1 : 0;
}

int PlainEngine::Turn(Document* document, PlainPage* page) {
  if (page == nullptr) {
    return 0;
  }
  document->current = page;
  return 1;
}

void PlainEngine::GetCurrentPageInfo(Id& doc, Id& page) {
  doc = current != nullptr ? current->id : doc;
  page = CurrentPage() != nullptr ? CurrentPage()->id : page;
}

PlainEngine::Id PlainEngine::Goto(int index) {
  if (index < 1 || index > CountPages(current)) {
    return "";
  }
  current->current = current->pages[index - 1].get();
  return current->current->id;
}

int PlainEngine::StartDrawing(const Id& docId, const Id& pageId, POINT at) {
  PlainPage* page = own.type == AnnotationTypeDrawing ? FindPage(docId, pageId) : nullptr;
  if (page == nullptr || !page->Holds(at)) {
    return 0;
  }
  page->AddLocal(std::make_shared<PlainMark>(own));
  page->drawing->AddPoint(page->At(at));
  return 1;
}

int PlainEngine::MoveDrawing(POINT at) {
  if (!IsDrawing()) {
    return 0;
  }
  CurrentPage()->drawing->AddPoint(CurrentPage()->At(at));
  return 1;
}

int PlainEngine::EndDrawing() {
  if (!IsDrawing()) {
    return 0;
  }
  CurrentPage()->drawing = nullptr;
  return 1;
}

PlainEngine::Id PlainEngine::GetCurrentAnnotationInfo(Id& doc, Id& page) {
  GetCurrentPageInfo(doc, page);
  return InProgress() != nullptr ? InProgress()->annotationId : "";
}
