#include "model/PlainEngine.h"

#include <algorithm>

PlainPage* PlainEngine::Document::WithIndex(int index) {
  for (auto& [pageId, page] : pages) {
    if (page.index == index) {
      return &page;
    }
  }
  return nullptr;
}

// An id is logged up to its first zero byte.
void PlainEngine::Record(const std::string& function, const std::string& text,
                         const std::string& id) {
  log.push_back("0 Parchlet::" + function + ": " + text + id.substr(0, id.find('\0')));
}

void PlainEngine::SetPen(unsigned long color, unsigned width) {
  pen.color = static_cast<std::uint32_t>(color);
  pen.width = width == 0 ? 1 : width > 30 ? 30 : static_cast<std::int32_t>(width);
}

void PlainEngine::SetType(AnnotationType newType, AnnotationSubType newSubType) {
  if (newType >= 1 && newType <= 4) {
    type = newType;
  }
  if (newSubType >= 0 && newSubType <= 23) {
    subType = newSubType;
  }
}

void PlainEngine::SetUser(const std::string& newUserId, const std::string& newUserSubId,
                          const std::string& newNickname) {
  if (!newUserId.empty()) {
    userId = newUserId;
  }
  userSubId = newUserSubId;
  nickname = newNickname;
}

void PlainEngine::Destroy() {
  if (isInitialised) {
    hasActiveWindow = false;
    current.reset();
    documents.clear();
    isInitialised = false;
  }
}

PlainEngine::Document* PlainEngine::FindDoc(const std::string& docId) {
  if (documents.contains(docId)) {
    return &documents.at(docId);
  }
  Record("IsDocExist", "doc does not exist, docid=", docId);
  return nullptr;
}

int PlainEngine::NewDoc(const std::string& creator, const std::string& docId) {
  if (FindDoc(docId) != nullptr) {
    Record("NewDoc", "doc is already exist, docid=", docId);
    return 1;
  }
  documents[docId] = {docId, creator, {}, {}};
  current = docId;
  return 1;
}

int PlainEngine::DelDoc(const std::string& docId) {
  if (FindDoc(docId) == nullptr) {
    return 0;
  }
  if (current == docId) {
    current.reset();
  }
  documents.erase(docId);
  return 1;
}

PlainPage* PlainEngine::FindPage(const std::string& docId, const std::string& pageId) {
  Document* document = FindDoc(docId);
  if (document == nullptr) {
    return nullptr;
  }
  if (document->pages.contains(pageId)) {
    return &document->pages.at(pageId);
  }
  Record("GetPagePtr", "page does not exist, pageid=", pageId);
  return nullptr;
}

int PlainEngine::NewPage(const std::string& docId, const std::string& pageId,
                         const std::string& creator, bool hasWindow, bool isUsable,
                         AnnotationPageInfo info) {
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
  PlainPage page(info);
  page.id = pageId;
  page.creator = creator;
  page.index = static_cast<int>(document->pages.size()) + 1;
  document->pages.emplace(pageId, page);
  document->current = pageId;
  return 1;
}

int PlainEngine::DelPage(const std::string& docId, const std::string& pageId) {
  Document* document = FindDoc(docId);
  if (document == nullptr || !document->pages.contains(pageId)) {
    return 0;
  }
  const int index = document->pages.at(pageId).index;
  document->pages.erase(pageId);
  for (auto& [id, page] : document->pages) {
    page.index -= page.index > index ? 1 : 0;
  }
  if (document->current == pageId) {
    document->current.reset();
    if (const PlainPage* first = document->WithIndex(1)) {
      document->current = first->id;
    }
  }
  return 1;
}

int PlainEngine::GetPageCreator(const std::string& docId, const std::string& pageId,
                                std::string* buffer) {
  if (buffer == nullptr || buffer->empty()) {
    return 0;
  }
  const PlainPage* page = FindPage(docId, pageId);
  if (page == nullptr || page->creator.empty()) {
    return 0;
  }
  if (page->creator.size() > buffer->size()) {
    buffer->assign(buffer->size(), '\0');
    return 0;
  }
  buffer->replace(0, page->creator.size(), page->creator);
  return 1;
}

int PlainEngine::SetCurrentPage(const std::string& docId, const std::string& pageId) {
  if (FindPage(docId, pageId) == nullptr) {
    return 0;
  }
  documents.at(docId).current = pageId;
  return 1;
}

PlainPage* PlainEngine::CurrentPage() {
  return current ? documents.at(*current).Current() : nullptr;
}

std::string PlainEngine::Goto(int index) {
  PlainPage* page = current ? documents.at(*current).WithIndex(index) : nullptr;
  if (page == nullptr) {
    return "";
  }
  documents.at(*current).current = page->id;
  return page->id;
}

std::string PlainEngine::GotoNext() {
  const PlainPage* page = CurrentPage();
  return page != nullptr ? Goto(page->index + 1) : "";
}

std::string PlainEngine::GotoPrevious() {
  const PlainPage* page = CurrentPage();
  return page != nullptr ? Goto(page->index - 1) : "";
}

std::string PlainEngine::GotoClamped(int index) {
  const int count = current ? static_cast<int>(documents.at(*current).pages.size()) : 0;
  return Goto(index < 1 ? 1 : std::min(index, count));
}

int PlainEngine::GotoId(const std::string& pageId) {
  if (!current || !documents.at(*current).pages.contains(pageId)) {
    return 0;
  }
  documents.at(*current).current = pageId;
  return 1;
}

PlainPage* PlainEngine::PageForDrawing(const std::string& docId, const std::string& pageId,
                                       POINT at) {
  PlainPage* page = type == AnnotationTypeDrawing ? FindPage(docId, pageId) : nullptr;
  return page != nullptr && page->Holds(at) ? page : nullptr;
}

PlainMarkPtr PlainEngine::NewMark(AnnotationType newType, AnnotationSubType newSubType) const {
  auto mark = std::make_shared<PlainMark>();
  mark->pen = pen;
  mark->type = newType;
  mark->subType = newSubType;
  mark->userId = userId;
  mark->userSubId = userSubId;
  mark->nickname = nickname;
  return mark;
}

PlainMarkPtr PlainEngine::Drawing() {
  const PlainPage* page = hasActiveWindow ? CurrentPage() : nullptr;
  const bool isDrawn =
      page != nullptr && page->drawing != nullptr && page->drawing->type == AnnotationTypeDrawing;
  return isDrawn ? page->drawing : nullptr;
}

void PlainEngine::GreetOwn(PlainMark& mark) const {
  if (mark.userId == userId && mark.userSubId == userSubId) {
    mark.nickname = nickname;
  }
}
