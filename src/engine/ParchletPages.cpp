#include <algorithm>
#include <memory>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "engine/LogRecord.h"
#include "page/AnnotationPage.h"

namespace {

constexpr const char* kNewPage = "Parchlet::NewPage";

// Returns null when memory runs out, for the page itself or for what it is made of.
std::unique_ptr<AnnotationPage> MakePage() {
  return Contain(std::unique_ptr<AnnotationPage>(),
                 [] { return std::make_unique<AnnotationPage>(); });
}

// Creates a page that does not exist yet. Returns 0 if its surface cannot be created.
int CreatePage(Parchlet::State& state, const std::string& docId, const std::string& pageId,
               const std::string& creator, HWND window, AnnotationPageInfo info) {
  std::unique_ptr<AnnotationPage> made = MakePage();
  if (made == nullptr) {
    PARCHLET_LOG(kLogFailure, kNewPage) << "create new page failed";
    return 0;
  }
  made->creator = creator;
  made->pageId = pageId;
  state.activeWindow = window;
  info.backgroundColor = state.pageBackgroundColor;
  if (!made->InitPage(window, info, state.tipStyle)) {
    PARCHLET_LOG(kLogFailure, kNewPage) << "init page failed";
    return 0;
  }
  // Look again: the look-up before wrote a record, and the host's logger may have called the
  // engine.
  const auto found = state.documents.find(docId);
  if (found == state.documents.end() || found->second->FindPage(pageId) != nullptr ||
      found->second->AddPage(made.get()) == 0) {
    PARCHLET_LOG(kLogFailure, kNewPage) << "add page failed";
    return 0;
  }
  static_cast<void>(made.release());  // the document owns it now
  state.PublishCurrentPage();
  return 1;
}

}  // namespace

int Parchlet::IsDocExist(const std::string& docId) {
  return state->GetDocById(docId) != nullptr ? 1 : 0;
}

int Parchlet::NewDoc(const std::string& creator, const std::string& docId) {
  return Contain(0, [&] {
    if (IsDocExist(docId) != 0) {
      PARCHLET_LOG(kLogFailure, "Parchlet::NewDoc")
          << "doc is already exist, docid=" << docId.c_str();
      return 1;
    }
    auto document = std::make_unique<AnnotationDoc>();
    document->id = docId;
    document->creator = creator;
    // Look again: the look-up before wrote a record, and the host's logger may have called the
    // engine.
    if (!state->documents.try_emplace(docId, document.get()).second) {
      return 1;
    }
    state->currentDocument = document.release();
    state->PublishCurrentPage();
    return 1;
  });
}

int Parchlet::DelDoc(const std::string& docId) {
  if (IsDocExist(docId) == 0) {
    return 0;
  }
  const auto found = state->documents.find(docId);
  AnnotationDoc* document = found->second;
  state->documents.erase(found);
  if (document == state->currentDocument) {
    state->currentDocument = nullptr;
    state->PublishCurrentPage();
  }
  delete document;
  return 1;
}

int Parchlet::GetDocCount() {
  return static_cast<int>(state->documents.size());
}

int Parchlet::GetDocCreator(const std::string& docId, std::string& creator) {
  return Contain(0, [&] {
    const AnnotationDoc* document = state->GetDocById(docId);
    if (document == nullptr) {
      return 0;
    }
    creator = document->creator;
    return 1;
  });
}

int Parchlet::IsDocOpened(const std::string& /*docId*/, std::string& /*out*/) {
  return 1;
}

AnnotationPage* Parchlet::GetPagePtr(const std::string& docId, const std::string& pageId) {
  return state->GetPagePtr(docId, pageId);
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
    return CreatePage(*state, docId, pageId, creator, window, info);
  });
}

int Parchlet::DelPage(const std::string& docId, const std::string& pageId) {
  AnnotationDoc* document = state->GetDocById(docId);
  if (document == nullptr) {
    return 0;
  }
  AnnotationPage* page = document->FindPage(pageId);
  if (page == nullptr) {
    return 0;
  }
  if (page != state->GetCurrentPage()) {
    return document->DeletePage(pageId);
  }
  state->WithdrawCurrentPage();
  document->DeletePage(pageId);
  state->PublishCurrentPage();
  return 1;
}

int Parchlet::DuplicatePage(const std::string& /*docId*/, const std::string& /*pageId*/,
                            std::string& /*newPageId*/) {
  return 1;
}

int Parchlet::GetPageCount(const std::string& docId) {
  const AnnotationDoc* document = state->GetDocById(docId);
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
  return page != nullptr && page->UpdatePage(info, resize) ? 1 : 0;
}
