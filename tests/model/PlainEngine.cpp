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
void PlainEngine::Record(const Id& function, const Id& text, const Id& id) {
  log.push_back("0 Parchlet::" + function + ": " + text + id.substr(0, id.find('\0')));
}

void PlainEngine::SetPen(unsigned long color, unsigned width) {
  pen.color = static_cast<std::uint32_t>(color);
  pen.width = width == 0 ? 1 : width > 30 ? 30 : static_cast<std::int32_t>(width);
}

void PlainEngine::SetAnnotationType(AnnotationType newType, AnnotationSubType newSubType) {
  if (newType >= 1 && newType <= 4) {
    type = newType;
  }
  if (newSubType >= 0 && newSubType <= 23) {
    subType = newSubType;
  }
}

void PlainEngine::SetUserInfo(const Id& newUserId, const Id& newUserSubId, const Id& newNickname) {
  if (!newUserId.empty()) {
    userId = newUserId;
  }
  userSubId = newUserSubId;
  nickname = newNickname;
}

int PlainEngine::SetPageBackgroundColor(unsigned color) {
  backgroundColor = color;
  return CurrentPage() != nullptr ? 1 : 0;
}

void PlainEngine::Destroy() {
  if (isInitialised) {
    hasActiveWindow = false;
    current.reset();
    documents.clear();
    isInitialised = false;
  }
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
  documents[docId] = {docId, creator, {}, {}};
  current = docId;
  return 1;
}

int PlainEngine::DelDoc(const Id& docId) {
  if (FindDoc(docId) == nullptr) {
    return 0;
  }
  if (current == docId) {
    current.reset();
  }
  documents.erase(docId);
  return 1;
}

PlainPage* PlainEngine::FindPage(const Id& docId, const Id& pageId) {
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
  PlainPage page(info);
  page.id = pageId;
  page.creator = creator;
  page.index = static_cast<int>(document->pages.size()) + 1;
  document->pages.emplace(pageId, page);
  document->current = pageId;
  return 1;
}

int PlainEngine::DelPage(const Id& docId, const Id& pageId) {
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

int PlainEngine::GetDocCreator(const Id& docId, Id& creator) {
  const Document* document = FindDoc(docId);
  creator = document != nullptr ? document->creator : creator;
  return document != nullptr ? 1 : 0;
}

int PlainEngine::GetPageCount(const Id& docId) {
  const Document* document = FindDoc(docId);
  return document != nullptr ? static_cast<int>(document->pages.size()) : 0;
}

int PlainEngine::GetPageIndex(const Id& docId, const Id& pageId) {
  const PlainPage* page = FindPage(docId, pageId);
  return page != nullptr ? page->index : -1;
}

int PlainEngine::GetPageCreator(const Id& docId, const Id& pageId, char* buffer, int size) {
  if (buffer == nullptr || size < 1) {
    return 0;
  }
  const PlainPage* page = FindPage(docId, pageId);
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
  return On(FindPage(docId, pageId), [&](const PlainPage& page) {
    info = initial ? page.initial : page.now;
    return 1;
  });
}

int PlainEngine::UpdatePage(const Id& docId, const Id& pageId, AnnotationPageInfo info,
                            bool resize) {
  return On(FindPage(docId, pageId), [&](PlainPage& page) { return page.Update(info, resize); });
}

int PlainEngine::SetCurrentPage(const Id& docId, const Id& pageId) {
  if (FindPage(docId, pageId) == nullptr) {
    return 0;
  }
  documents.at(docId).current = pageId;
  return 1;
}

void PlainEngine::GetCurrentPageInfo(Id& doc, Id& page) {
  const PlainPage* now = CurrentPage();
  doc = current.value_or(doc);
  page = now != nullptr ? now->id : page;
}

PlainPage* PlainEngine::CurrentPage() {
  return current ? documents.at(*current).Current() : nullptr;
}

PlainEngine::Id PlainEngine::Goto(int index) {
  PlainPage* page = current ? documents.at(*current).WithIndex(index) : nullptr;
  if (page == nullptr) {
    return "";
  }
  documents.at(*current).current = page->id;
  return page->id;
}

PlainEngine::Id PlainEngine::GotoLastPage(const Id& /*doc*/) {
  return Goto(current ? static_cast<int>(documents.at(*current).pages.size()) : 0);
}

PlainEngine::Id PlainEngine::GotoNextPage(const Id& /*doc*/) {
  const PlainPage* page = CurrentPage();
  return page != nullptr ? Goto(page->index + 1) : "";
}

PlainEngine::Id PlainEngine::GotoPreviousPage(const Id& /*doc*/) {
  const PlainPage* page = CurrentPage();
  return page != nullptr ? Goto(page->index - 1) : "";
}

PlainEngine::Id PlainEngine::GotoPage(const Id& /*doc*/, int index) {
  const int count = current ? static_cast<int>(documents.at(*current).pages.size()) : 0;
  return Goto(index < 1 ? 1 : std::min(index, count));
}

int PlainEngine::GotoPage(const Id& /*doc*/, const Id& pageId) {
  if (!current || !documents.at(*current).pages.contains(pageId)) {
    return 0;
  }
  documents.at(*current).current = pageId;
  return 1;
}

PlainPage* PlainEngine::PageForDrawing(const Id& docId, const Id& pageId, POINT at) {
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

PlainPage* PlainEngine::ActivePage(const Id& doc, const Id& page) {
  return hasActiveWindow ? FindPage(doc, page) : nullptr;
}

PlainEngine::Id PlainEngine::GetCurrentAnnotationInfo(Id& doc, Id& page) {
  GetCurrentPageInfo(doc, page);
  return On(CurrentPage(),
            [](const PlainPage& now) { return now.drawing != nullptr ? now.drawing->id : Id(); });
}
