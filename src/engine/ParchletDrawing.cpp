#include <algorithm>
#include <memory>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "page/AnnotationPage.h"

int Parchlet::StartDrawing(const std::string& docId, const std::string& pageId, POINT point) {
  return Contain(0, [&] {
    if (annotationType != AnnotationTypeDrawing) {
      return 0;
    }
    AnnotationPage* page = GetPagePtr(docId, pageId);
    if (page == nullptr || page->IsPointInPage(point) == 0) {
      return 0;
    }
    auto made = std::make_unique<Annotation>();
    made->Init(pen, annotationType, annotationSubType, userId, userSubId, nickname);
    // Before the page has it: a press that fails leaves no mark.
    made->AddPoint(page->ToPagePoint(point));
    page->AddAnnotation(made.get(), false);
    static_cast<void>(made.release());
    return 1;
  });
}

Annotation* Parchlet::GetCurrentAnnotation() {
  const AnnotationPage* page = GetCurrentPage();
  return page != nullptr ? page->GetCurrentAnnotation() : nullptr;
}

// The mark that a move extends and a release ends, or null.
Annotation* Parchlet::GetDrawingInProgress() {
  if (activeWindow == nullptr) {
    return nullptr;
  }
  Annotation* annotation = GetCurrentAnnotation();
  return annotation != nullptr && annotation->type == AnnotationTypeDrawing ? annotation : nullptr;
}

int Parchlet::MoveDrawing(POINT point) {
  return Contain(0, [&] {
    Annotation* annotation = GetDrawingInProgress();
    if (annotation == nullptr) {
      return 0;
    }
    annotation->AddPoint(GetCurrentPage()->ToPagePoint(point));
    return 1;
  });
}

int Parchlet::EndDrawing() {
  if (GetDrawingInProgress() == nullptr) {
    return 0;
  }
  GetCurrentPage()->SetCurrentAnnotation(nullptr);
  return 1;
}

std::string Parchlet::GetCurrentAnnotationInfo(std::string& docId, std::string& pageId) {
  return Contain(std::string(), [&] {
    GetCurrentPageInfo(docId, pageId);
    const Annotation* annotation = GetCurrentAnnotation();
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
