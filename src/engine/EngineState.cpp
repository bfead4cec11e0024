#include "engine/EngineState.h"

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/LogRecord.h"
#include "page/AnnotationPage.h"

// A frame that throws, even in the window's own code, must not end the host's process. It is
// dropped, and the next tick tries again.
int Parchlet::State::UpdateLayeredContent() {
  try {
    MutexLock lock(handOverMutex);
    return refreshPage != nullptr && refreshPage->UpdateLayeredContent() ? 1 : 0;
  } catch (...) {
    return 0;
  }
}

void Parchlet::State::TearDown() {
  refreshTimer.Stop();
  activeWindow = nullptr;
  currentDocument = nullptr;
  PublishCurrentPage();
  tipStyle.reset();
  ClearDocs();
  initialised = 0;
}

void Parchlet::State::ClearDocs() {
  for (const auto& [docId, document] : documents) {
    delete document;
  }
  documents.clear();
}

AnnotationDoc* Parchlet::State::GetDocById(const std::string& docId) {
  return Contain(static_cast<AnnotationDoc*>(nullptr), [&]() -> AnnotationDoc* {
    const auto found = documents.find(docId);
    if (found != documents.end()) {
      return found->second;
    }
    PARCHLET_LOG(kLogFailure, "Parchlet::IsDocExist")
        << "doc does not exist, docid=" << docId.c_str();
    return nullptr;
  });
}

AnnotationPage* Parchlet::State::GetPagePtr(const std::string& docId, const std::string& pageId) {
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

AnnotationPage* Parchlet::State::GetCurrentPage() const {
  return currentDocument != nullptr ? currentDocument->GetCurrentPage() : nullptr;
}

Annotation* Parchlet::State::GetCurrentAnnotation() const {
  const AnnotationPage* page = GetCurrentPage();
  return page != nullptr ? page->GetCurrentAnnotation() : nullptr;
}

Annotation* Parchlet::State::GetDrawingInProgress() const {
  if (activeWindow == nullptr) {
    return nullptr;
  }
  Annotation* annotation = GetCurrentAnnotation();
  return annotation != nullptr && annotation->type == AnnotationTypeDrawing ? annotation : nullptr;
}

void Parchlet::State::PublishCurrentPage() {
  MutexLock lock(handOverMutex);
  refreshPage = GetCurrentPage();
}

void Parchlet::State::WithdrawCurrentPage() {
  MutexLock lock(handOverMutex);
  refreshPage = nullptr;
}
