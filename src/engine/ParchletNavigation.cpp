#include <algorithm>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "page/AnnotationPage.h"

int Parchlet::SetCurrentPage(const std::string& docId, const std::string& pageId) {
  AnnotationPage* page = GetPagePtr(docId, pageId);
  if (page == nullptr) {
    return 0;
  }
  documents.find(docId)->second->SetCurrentPage(page);
  PublishCurrentPage();
  return 1;
}

AnnotationPage* Parchlet::GetCurrentPage() {
  return currentDocument != nullptr ? currentDocument->GetCurrentPage() : nullptr;
}

void Parchlet::GetCurrentPageInfo(std::string& docId, std::string& pageId) {
  Contain(0, [&] {
    if (currentDocument != nullptr) {
      docId = currentDocument->id;
    }
    if (const AnnotationPage* page = GetCurrentPage()) {
      pageId = page->pageId;
    }
    return 1;
  });
}

std::string Parchlet::MakeCurrent(AnnotationPage* page) {
  return Contain(std::string(), [&] {
    if (page == nullptr) {
      return std::string();
    }
    std::string pageId = page->pageId;
    currentDocument->SetCurrentPage(page);
    PublishCurrentPage();
    return pageId;
  });
}

std::string Parchlet::GotoFirstPage(const std::string& /*docId*/) {
  return MakeCurrent(currentDocument != nullptr ? currentDocument->GetFirstPage() : nullptr);
}

std::string Parchlet::GotoLastPage(const std::string& /*docId*/) {
  return MakeCurrent(currentDocument != nullptr ? currentDocument->GetLastPage() : nullptr);
}

std::string Parchlet::GotoNextPage(const std::string& /*docId*/) {
  return MakeCurrent(currentDocument != nullptr ? currentDocument->GetNextPage() : nullptr);
}

std::string Parchlet::GotoPreviousPage(const std::string& /*docId*/) {
  return MakeCurrent(currentDocument != nullptr ? currentDocument->GetPreviousPage() : nullptr);
}

std::string Parchlet::GotoPage(const std::string& /*docId*/, int index) {
  if (currentDocument == nullptr) {
    return {};
  }
  const int last = std::max(currentDocument->GetPageCount(), 1);
  return MakeCurrent(currentDocument->GetPageAt(std::clamp(index, 1, last)));
}

int Parchlet::GotoPage(const std::string& /*docId*/, const std::string& pageId) {
  AnnotationPage* page = currentDocument != nullptr ? currentDocument->FindPage(pageId) : nullptr;
  if (page == nullptr) {
    return 0;
  }
  currentDocument->SetCurrentPage(page);
  PublishCurrentPage();
  return 1;
}
