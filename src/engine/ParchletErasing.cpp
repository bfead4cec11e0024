#include <parchlet/Parchlet.h>

#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

std::vector<std::string> Parchlet::EraseAnnotations(const std::string& docId,
                                                    const std::string& pageId,
                                                    const std::string& eraseUserId,
                                                    const std::string& eraseUserSubId,
                                                    const std::vector<POINT>& path) {
  using Ids = std::vector<std::string>;
  return Contain(Ids(), [&] {
    if (state->activeWindow == nullptr || path.empty()) {
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
  if (state->activeWindow == nullptr) {
    return 0;
  }
  AnnotationPage* page = GetPagePtr(docId, pageId);
  return page != nullptr && page->EraseAnnotation(author, annotationId) ? 1 : 0;
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
