#include "document/AnnotationDoc.h"

#include <algorithm>

#include "page/AnnotationPage.h"

AnnotationDoc::AnnotationDoc() = default;

AnnotationDoc::~AnnotationDoc() {
  currentPage = nullptr;
  for (const auto& [pageId, page] : pages) {
    delete page;
  }
}

int AnnotationDoc::AddPage(AnnotationPage* page) {
  if (page == nullptr) {
    return 0;
  }
  const int nextIndex = GetPageCount() + 1;
  AnnotationPage*& entry = pages[page->pageId];
  if (entry != nullptr && entry != page) {
    page->pageIndex = entry->pageIndex;
    delete entry;
  } else if (entry == nullptr) {
    page->pageIndex = nextIndex;
  }
  entry = page;
  currentPage = page;
  return 1;
}

int AnnotationDoc::DeletePage(const std::string& pageId) {
  const auto found = pages.find(pageId);
  if (found == pages.end()) {
    return 0;
  }
  AnnotationPage* page = found->second;
  pages.erase(found);
  for (const auto& [otherId, other] : pages) {
    if (other->pageIndex > page->pageIndex) {
      --other->pageIndex;
    }
  }
  if (page == currentPage) {
    currentPage = GetFirstPage();
  }
  delete page;
  return 1;
}

AnnotationPage* AnnotationDoc::FindPage(const std::string& pageId) const {
  const auto found = pages.find(pageId);
  return found != pages.end() ? found->second : nullptr;
}

void AnnotationDoc::SetCurrentPage(AnnotationPage* page) {
  currentPage = page;
}

int AnnotationDoc::GetPageCount() const {
  return static_cast<int>(pages.size());
}

AnnotationPage* AnnotationDoc::GetFirstPage() const {
  return GetPageAt(1);
}

AnnotationPage* AnnotationDoc::GetLastPage() const {
  return GetPageAt(GetPageCount());
}

AnnotationPage* AnnotationDoc::GetPageAt(int index) const {
  const auto found = std::find_if(pages.begin(), pages.end(), [index](const auto& entry) {
    return entry.second->pageIndex == index;
  });
  return found != pages.end() ? found->second : nullptr;
}

AnnotationPage* AnnotationDoc::GetNextPage() const {
  if (currentPage == nullptr || currentPage->pageIndex == GetPageCount()) {
    return nullptr;
  }
  return GetPageAt(currentPage->pageIndex + 1);
}

AnnotationPage* AnnotationDoc::GetPreviousPage() const {
  if (currentPage == nullptr || currentPage->pageIndex == 1) {
    return nullptr;
  }
  return GetPageAt(currentPage->pageIndex - 1);
}
