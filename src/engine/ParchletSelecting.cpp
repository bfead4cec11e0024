#include <parchlet/Parchlet.h>

#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

int Parchlet::StartSelecting(const std::string& docId, const std::string& pageId,
                             const std::string& selectUserId, const std::string& selectUserSubId,
                             POINT point) {
  return Contain(0, [&] {
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr || !page->IsPointInPage(point)) {
      return 0;
    }
    page->StartSelecting(selectUserId, selectUserSubId, point);
    return 1;
  });
}

int Parchlet::MoveSelecting(POINT point) {
  return Contain(0, [&] {
    AnnotationPage* page = state->GetCurrentPage();
    return page != nullptr && page->MoveSelecting(point) ? 1 : 0;
  });
}

int Parchlet::EndSelecting() {
  AnnotationPage* page = state->GetCurrentPage();
  return page != nullptr && page->EndSelecting() ? 1 : 0;
}

std::map<std::string, Annotation*> Parchlet::GetSelectedAnnotations(const std::string& docId,
                                                                    const std::string& pageId) {
  using Selection = std::map<std::string, Annotation*>;
  return Contain(Selection(), [&] {
    const AnnotationPage* page = GetPagePtr(docId, pageId);
    return page != nullptr ? page->GetSelectedAnnotations() : Selection();
  });
}
