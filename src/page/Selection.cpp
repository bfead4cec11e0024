#include "page/Selection.h"

#include <utility>

#include "annotation/AnnotationState.h"

namespace {

constexpr AnnotationPen kRubberBandPen = {0x7F939393, 1, 1};

}  // namespace

Selection::Selection() {
  selectRect.Erase(1);
}

bool Selection::Holds(const Annotation& annotation) const {
  return MarkState::Of(annotation).IsNamedIn(selectedAnnotations);
}

void Selection::StartMoving(const AnnotationPoint& point) {
  movingSelection = true;
  for (const auto& [id, annotation] : selectedAnnotations) {
    annotation->StartMoving(point);
  }
}

// All that takes memory is made before anything changes.
void Selection::StartRubberBand(Annotation* hit, std::string userId,
                                const AnnotationPoint& anchor) {
  Marks selected;
  if (hit != nullptr) {
    selected.emplace(hit->GetAnnotationId(), hit);
  }
  Annotation::SubModels points;
  points[0].push_back(anchor);
  movingSelection = false;
  selectedAnnotations.swap(selected);
  selectRect.userId.swap(userId);
  selectRect.type = AnnotationTypeDrawing;
  selectRect.subType = AnnotationSubTypeRectangle;
  selectRect.pen = kRubberBandPen;
  selectRect.ClearPoints();
  MarkState::Of(selectRect).ReplaceSubModels(points);
  selectRect.Erase(0);
}

void Selection::MoveTo(const AnnotationPoint& point) {
  for (const auto& [id, annotation] : selectedAnnotations) {
    annotation->Moving(point);
  }
}

RECT Selection::Stretch(const AnnotationPoint& point) {
  selectRect.AddPoint(point);
  const POINT anchor = MarkState::Of(selectRect).AnchorPixel();
  return {anchor.x, anchor.y, point.x, point.y};
}

bool Selection::End() {
  const bool wasMove = movingSelection;
  movingSelection = false;
  selectRect.Erase(1);
  return wasMove;
}
