#include <algorithm>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

namespace {

// Makes a page of the current document current. Returns its id, or an empty string for null.
std::string MakeCurrent(Parchlet::State& state, AnnotationPage* page) {
  return Contain(std::string(), [&] {
    if (page == nullptr) {
      return std::string();
    }
    std::string pageId = page->pageId;
    state.currentDocument->SetCurrentPage(page);
    state.PublishCurrentPage();
    return pageId;
  });
}

// Returns the current document's answer to `ask`, or null if there is no current document.
AnnotationPage* AskCurrent(const Parchlet::State& state,
                           AnnotationPage* (AnnotationDoc::*ask)() const) {
  return state.currentDocument != nullptr ? (state.currentDocument->*ask)() : nullptr;
}

}  // namespace

int Parchlet::SetCurrentPage(const std::string& docId, const std::string& pageId) {
  AnnotationPage* page = GetPagePtr(docId, pageId);
  if (page == nullptr) {
    return 0;
  }
  state->documents.find(docId)->second->SetCurrentPage(page);
  state->PublishCurrentPage();
  return 1;
}

void Parchlet::GetCurrentPageInfo(std::string& docId, std::string& pageId) {
  Contain([&] {
    if (state->currentDocument != nullptr) {
      docId = state->currentDocument->id;
    }
    if (const AnnotationPage* page = state->GetCurrentPage()) {
      pageId = page->pageId;
    }
  });
}

std::string Parchlet::GotoFirstPage(const std::string& /*docId*/) {
  return MakeCurrent(*state, AskCurrent(*state, &AnnotationDoc::GetFirstPage));
}

std::string Parchlet::GotoLastPage(const std::string& /*docId*/) {
  return MakeCurrent(*state, AskCurrent(*state, &AnnotationDoc::GetLastPage));
}

std::string Parchlet::GotoNextPage(const std::string& /*docId*/) {
  return MakeCurrent(*state, AskCurrent(*state, &AnnotationDoc::GetNextPage));
}

std::string Parchlet::GotoPreviousPage(const std::string& /*docId*/) {
  return MakeCurrent(*state, AskCurrent(*state, &AnnotationDoc::GetPreviousPage));
}

std::string Parchlet::GotoPage(const std::string& /*docId*/, int index) {
  if (state->currentDocument == nullptr) {
    return {};
  }
  const int last = std::max(state->currentDocument->GetPageCount(), 1);
  return MakeCurrent(*state, state->currentDocument->GetPageAt(std::clamp(index, 1, last)));
}

int Parchlet::GotoPage(const std::string& /*docId*/, const std::string& pageId) {
  AnnotationPage* page =
      state->currentDocument != nullptr ? state->currentDocument->FindPage(pageId) : nullptr;
  if (page == nullptr) {
    return 0;
  }
  state->currentDocument->SetCurrentPage(page);
  state->PublishCurrentPage();
  return 1;
}
