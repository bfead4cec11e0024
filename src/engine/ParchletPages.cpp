#include <algorithm>
#include <memory>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/LogRecord.h"
#include "page/AnnotationPage.h"
#include "page/NicknameTipStyle.h"

namespace {

constexpr const char* kNewPage = "Parchlet::NewPage";

}  // namespace

AnnotationPage* Parchlet::GetPagePtr(const std::string& docId, const std::string& pageId) {
  return Contain(static_cast<AnnotationPage*>(nullptr), [&]() -> AnnotationPage* {
    const AnnotationDoc* document = GetDocById(docId);
    if (document == nullptr) {
      return nullptr;
    }
    AnnotationPage* page = document->FindPage(pageId);
    if (page == nullptr) {
      PARCHLET_LOG(kLogFailure, "Parchlet::GetPagePtr")
          << "page does not exist, pageid=" << pageId.c_str();
    }
    return page;
  });
}

AnnotationPage* Parchlet::GetPageById(const std::string& docId, const std::string& pageId) {
  return GetPagePtr(docId, pageId);
}

int Parchlet::NewPage(const std::string& docId, const std::string& pageId,
                      const std::string& creator, HWND window, AnnotationPageInfo info) {
  return Contain(0, [&] {
    if (window == nullptr || info.width < 1) {
      PARCHLET_LOG(kLogFailure, kNewPage) << "invalid parameters";
      return 0;
    }
    if (IsDocExist(docId) == 0) {
      PARCHLET_LOG(kLogFailure, kNewPage) << "doc does not exist, docid=" << docId.c_str();
      return 0;
    }
    if (GetPagePtr(docId, pageId) != nullptr) {
      PARCHLET_LOG(kLogFailure, kNewPage) << "page is already exist, pageid=" << pageId.c_str();
      return 1;
    }
    return CreatePage(docId, pageId, creator, window, info);
  });
}

int Parchlet::CreatePage(const std::string& docId, const std::string& pageId,
                         const std::string& creator, HWND window, AnnotationPageInfo info) {
  std::unique_ptr<AnnotationPage> made(new (std::nothrow) AnnotationPage);
  if (made == nullptr) {
    PARCHLET_LOG(kLogFailure, kNewPage) << "create new page failed";
    return 0;
  }
  made->creator = creator;
  made->pageId = pageId;
  activeWindow = window;
  info.backgroundColor = pageBackgroundColor;
  if (made->InitPage(window, info, tipStyle) == 0) {
    PARCHLET_LOG(kLogFailure, kNewPage) << "init page failed";
    return 0;
  }
  // The record of its absence went to the host's logger, which may have called the engine.
  const auto found = documents.find(docId);
  if (found == documents.end() || found->second->FindPage(pageId) != nullptr ||
      found->second->AddPage(made.get()) == 0) {
    PARCHLET_LOG(kLogFailure, kNewPage) << "add page failed";
    return 0;
  }
  static_cast<void>(made.release());  // the document owns it now
  PublishCurrentPage();
  return 1;
}

int Parchlet::DelPage(const std::string& docId, const std::string& pageId) {
  AnnotationDoc* document = GetDocById(docId);
  if (document == nullptr) {
    return 0;
  }
  AnnotationPage* page = document->FindPage(pageId);
  if (page == nullptr) {
    return 0;
  }
  if (page != GetCurrentPage()) {
    return document->DeletePage(pageId);
  }
  WithdrawCurrentPage();
  document->DeletePage(pageId);
  PublishCurrentPage();
  return 1;
}

int Parchlet::DuplicatePage(const std::string& /*docId*/, const std::string& /*pageId*/,
                            std::string& /*newPageId*/) {
  return 1;
}

int Parchlet::GetPageCount(const std::string& docId) {
  const AnnotationDoc* document = GetDocById(docId);
  return document != nullptr ? document->GetPageCount() : 0;
}

int Parchlet::GetPageIndex(const std::string& docId, const std::string& pageId) {
  const AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr ? page->pageIndex : -1;
}

int Parchlet::GetPageCreator(const std::string& docId, const std::string& pageId, char* buffer,
                             int size) {
  if (buffer == nullptr || size <= 0) {
    return 0;
  }
  const AnnotationPage* page = GetPagePtr(docId, pageId);
  if (page == nullptr || page->creator.empty()) {
    return 0;
  }
  const auto capacity = static_cast<std::size_t>(size);
  if (page->creator.size() > capacity) {
    std::fill_n(buffer, capacity, char{0});
    return 0;
  }
  std::copy(page->creator.begin(), page->creator.end(), buffer);
  return 1;
}

int Parchlet::GetPageSize(const std::string& docId, const std::string& pageId,
                          AnnotationPageInfo& info, bool initial) {
  const AnnotationPage* page = GetPagePtr(docId, pageId);
  if (page == nullptr) {
    return 0;
  }
  info = initial ? page->GetInitialInfo() : page->GetCurrentInfo();
  return 1;
}

int Parchlet::UpdatePage(const std::string& docId, const std::string& pageId,
                         AnnotationPageInfo info, bool resize) {
  AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr ? page->UpdatePage(info, resize) : 0;
}
