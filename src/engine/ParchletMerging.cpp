#include <parchlet/Parchlet.h>

#include "annotation/AnnotationState.h"
#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

namespace {

// Hands a mark to its page. Sets `isKept` if the page keeps the object itself. Returns 0 for null,
// an unknown page, or if memory runs out.
int Merge(Parchlet::State& state, const std::string& docId, const std::string& pageId,
          Annotation* annotation, bool& isKept) {
  return Contain(0, [&] {
    if (annotation == nullptr) {
      return 0;
    }
    AnnotationPage* page = state.GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return 0;
    }
    if (annotation->userId == state.userId && annotation->userSubId == state.userSubId) {
      // Init takes the mark's lock: the mark may be the page's own and being painted.
      annotation->Init(annotation->pen, annotation->type, annotation->subType, state.userId,
                       state.userSubId, state.nickname);
    }
    isKept = page->AddAnnotation(annotation, true);
    return 1;
  });
}

}  // namespace

int Parchlet::AddAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                                      Annotation* annotation) {
  bool isKept = false;
  return Merge(*state, docId, pageId, annotation, isKept);
}

int Parchlet::AddAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                                      std::unique_ptr<Annotation> annotation) {
  if (annotation != nullptr && MarkState::Of(*annotation).IsOwned()) {
    return AddAnnotationFromRemote(docId, pageId, annotation.release());  // its page owns it
  }
  bool isKept = false;
  const int result = Merge(*state, docId, pageId, annotation.get(), isKept);
  if (isKept) {
    static_cast<void>(annotation.release());
  }
  return result;
}

void Parchlet::CancelAnnotation(const std::string& docId, const std::string& pageId,
                                const std::string& annotationId) {
  Contain([&] {
    if (AnnotationPage* page = GetPagePtr(docId, pageId)) {
      page->CancelAnnotation(annotationId);
    }
  });
}

int Parchlet::FindAnnotation(const std::string& docId, const std::string& pageId,
                             const std::string& author, const std::string& annotationId) {
  const AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr && page->FindAnnotation(author, annotationId) != nullptr ? 1 : 0;
}

Annotation* Parchlet::GetAnnotation(const std::string& docId, const std::string& pageId,
                                    const std::string& author, const std::string& annotationId) {
  const AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr ? page->GetAnnotation(author, annotationId) : nullptr;
}

Annotation* Parchlet::GetLocalAnnotation(const std::string& docId, const std::string& pageId,
                                         const std::string& annotationId) {
  const AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr ? page->GetLocalAnnotation(annotationId) : nullptr;
}

int Parchlet::ClearAnnotations(const std::string& docId, const std::string& pageId,
                               const std::string& author, const std::string& authorSubId) {
  if (state->activeWindow == nullptr) {
    return 0;
  }
  AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr && page->ClearAnnotations(author, authorSubId) ? 1 : 0;
}
