#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "page/AnnotationPage.h"

int Parchlet::AddAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                                      Annotation* annotation) {
  return Contain(0, [&] {
    if (annotation == nullptr) {
      return 0;
    }
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return 0;
    }
    if (annotation->userId == userId && annotation->userSubId == userSubId) {
      // Under the mark's lock: it may be one of the page's own, which is being painted.
      annotation->Init(annotation->pen, annotation->type, annotation->subType, userId, userSubId,
                       nickname);
    }
    page->AddAnnotation(annotation, true);
    return 1;
  });
}

void Parchlet::CancelAnnotation(const std::string& docId, const std::string& pageId,
                                const std::string& annotationId) {
  Contain(0, [&] {
    if (AnnotationPage* page = GetPagePtr(docId, pageId)) {
      page->CancelAnnotation(annotationId);
    }
    return 1;
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
  if (activeWindow == nullptr) {
    return 0;
  }
  AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr ? page->ClearAnnotations(author, authorSubId) : 0;
}
