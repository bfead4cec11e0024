#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "page/AnnotationPage.h"

int Parchlet::StartSelecting(const std::string& docId, const std::string& pageId,
                             const std::string& selectUserId, const std::string& selectUserSubId,
                             POINT point) {
  return Contain(0, [&] {
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr || page->IsPointInPage(point) == 0) {
      return 0;
    }
    return page->StartSelecting(selectUserId, selectUserSubId, point);
  });
}

int Parchlet::MoveSelecting(POINT point) {
  return Contain(0, [&] {
    AnnotationPage* page = GetCurrentPage();
    return page != nullptr ? page->MoveSelecting(point) : 0;
  });
}

int Parchlet::EndSelecting() {
  AnnotationPage* page = GetCurrentPage();
  return page != nullptr ? page->EndSelecting() : 0;
}

std::map<std::string, Annotation*> Parchlet::GetSelectedAnnotations(const std::string& docId,
                                                                    const std::string& pageId) {
  using Selection = std::map<std::string, Annotation*>;
  return Contain(Selection(), [&] {
    const AnnotationPage* page = GetPagePtr(docId, pageId);
    return page != nullptr ? page->GetSelectedAnnotations() : Selection();
  });
}

std::vector<std::string> Parchlet::EraseAnnotations(const std::string& docId,
                                                    const std::string& pageId,
                                                    const std::string& eraseUserId,
                                                    const std::string& eraseUserSubId,
                                                    const std::vector<POINT>& path) {
  using Ids = std::vector<std::string>;
  return Contain(Ids(), [&] {
    if (activeWindow == nullptr || path.empty()) {
      return Ids();
    }
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr) {
      return Ids();
    }
    if (path.size() == 1) {
      return Ids{page->EraseAnnotations(eraseUserId, eraseUserSubId, path[0])};
    }
    return page->EraseAnnotations(eraseUserId, eraseUserSubId, path[0], path[1]);
  });
}

int Parchlet::EraseAnnotation(const std::string& docId, const std::string& pageId,
                              const std::string& author, const std::string& annotationId) {
  if (activeWindow == nullptr) {
    return 0;
  }
  AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr ? page->EraseAnnotation(author, annotationId) : 0;
}

int Parchlet::EraseAnnotationFromRemote(const std::string& docId, const std::string& pageId,
                                        const std::string& author,
                                        const std::string& annotationId) {
  return EraseAnnotation(docId, pageId, author, annotationId);
}

std::vector<std::string> Parchlet::EraseSelectedAnnotations(const std::string& docId,
                                                            const std::string& pageId) {
  using Ids = std::vector<std::string>;
  return Contain(Ids(), [&] {
    AnnotationPage* page = GetPagePtr(docId, pageId);
    return page != nullptr ? page->EraseSelectedAnnotations() : Ids();
  });
}
