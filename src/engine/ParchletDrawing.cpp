#include <algorithm>
#include <memory>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/EngineState.h"
#include "page/AnnotationPage.h"

int Parchlet::StartDrawing(const std::string& docId, const std::string& pageId, POINT point) {
  return Contain(0, [&] {
    if (state->annotationType != AnnotationTypeDrawing) {
      return 0;
    }
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr || !page->IsPointInPage(point)) {
      return 0;
    }
    auto made = std::make_unique<Annotation>();
    made->Init(state->pen, state->annotationType, state->annotationSubType, state->userId,
               state->userSubId, state->nickname);
    // Add the point before the page takes the mark, so that a press that fails leaves no mark.
    made->AddPoint(page->ToPagePoint(point));
    page->AddAnnotation(made.get(), false);
    static_cast<void>(made.release());
    return 1;
  });
}

int Parchlet::MoveDrawing(POINT point) {
  return Contain(0, [&] {
    Annotation* annotation = state->GetDrawingInProgress();
    if (annotation == nullptr) {
      return 0;
    }
    annotation->AddPoint(state->GetCurrentPage()->ToPagePoint(point));
    return 1;
  });
}

int Parchlet::EndDrawing() {
  if (state->GetDrawingInProgress() == nullptr) {
    return 0;
  }
  state->GetCurrentPage()->SetCurrentAnnotation(nullptr);
  return 1;
}

std::string Parchlet::GetCurrentAnnotationInfo(std::string& docId, std::string& pageId) {
  return Contain(std::string(), [&] {
    GetCurrentPageInfo(docId, pageId);
    const Annotation* annotation = state->GetCurrentAnnotation();
    return annotation != nullptr ? annotation->GetAnnotationId() : std::string();
  });
}

int Parchlet::IsPointAnnotation(Annotation* annotation) {
  return Contain(0, [&] {
    if (annotation == nullptr) {
      return 0;
    }
    const Annotation::SubModels subModels = annotation->GetPoints();
    if (subModels.empty() || subModels.begin()->first != 0) {
      return 0;
    }
    const std::vector<AnnotationPoint>& points = subModels.begin()->second;
    const auto moved = std::adjacent_find(points.begin(), points.end(),
                                          [](const AnnotationPoint& a, const AnnotationPoint& b) {
                                            return a.x != b.x || a.y != b.y;
                                          });
    return moved == points.end() ? 1 : 0;
  });
}
