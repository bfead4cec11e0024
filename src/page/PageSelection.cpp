#include <memory>

#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"

namespace {

constexpr AnnotationPen kRubberBandPen = {0x7F939393, 1, 1};

}  // namespace

int AnnotationPage::StartSelecting(const std::string& userId, const std::string& userSubId,
                                   POINT point) {
  const AnnotationPoint pressed = ToPagePoint(point);
  MutexLock lock(mutex);
  Annotation* hit = FindAtPoint(userId, userSubId, pressed, true);
  if (hit != nullptr && hit->IsNamedIn(selectedAnnotations)) {
    movingSelection = 1;
    for (const auto& [id, annotation] : selectedAnnotations) {
      annotation->StartMoving(pressed);
    }
    return 1;
  }
  StartRubberBand(hit, userId, pressed);
  return 1;
}

// All that takes memory is made before anything changes.
void AnnotationPage::StartRubberBand(Annotation* hit, std::string userId,
                                     const AnnotationPoint& anchor) {
  AnnotationMap selection;
  if (hit != nullptr) {
    selection.emplace(hit->GetAnnotationId(), hit);
  }
  Annotation::SubModels points;
  points[0].push_back(anchor);
  movingSelection = 0;
  selectedAnnotations.swap(selection);
  selectRect.userId.swap(userId);
  selectRect.type = AnnotationTypeDrawing;
  selectRect.subType = AnnotationSubTypeRectangle;
  selectRect.pen = kRubberBandPen;
  selectRect.ClearPoints();
  selectRect.ReplaceSubModels(points);
  selectRect.Erase(0);
}

int AnnotationPage::MoveSelecting(POINT point) {
  const AnnotationPoint moved = ToPagePoint(point);
  MutexLock lock(mutex);
  if (movingSelection == 1) {
    MoveSelection(moved);
    return 1;
  }
  if (selectRect.IsErased() == 0) {
    StretchRubberBand(moved);
  }
  return 0;
}

void AnnotationPage::MoveSelection(const AnnotationPoint& point) {
  AnnotationMap backups;
  try {
    for (const auto& [id, annotation] : selectedAnnotations) {
      if (!localAnnotations.contains(id)) {
        auto backup = std::make_unique<Annotation>(*annotation);
        backup->Erase(1);
        backup->isOwned = true;
        backups.emplace(id, backup.get());
        static_cast<void>(backup.release());
      }
    }
  } catch (...) {
    for (const auto& [id, backup] : backups) {
      delete backup;
    }
    throw;
  }
  localAnnotations.merge(backups);
  for (const auto& [id, annotation] : selectedAnnotations) {
    annotation->Moving(point);
  }
}

void AnnotationPage::StretchRubberBand(const AnnotationPoint& point) {
  selectRect.AddPoint(point);
  const POINT anchor = selectRect.AnchorPixel();
  AnnotationMap within;
  Select(selectRect.userId, {anchor.x, anchor.y, point.x, point.y}, within);
  selectedAnnotations.swap(within);
}

int AnnotationPage::EndSelecting() {
  MutexLock lock(mutex);
  const int wasMove = movingSelection;
  movingSelection = 0;
  selectRect.Erase(1);
  return wasMove;
}

void AnnotationPage::SelectAnnotations(const std::string& userId, const RECT& rect) {
  MutexLock lock(mutex);
  Select(userId, rect, selectedAnnotations);
}

void AnnotationPage::Select(const std::string& userId, const RECT& rect,
                            AnnotationMap& selection) const {
  const auto selectFrom = [&](const AnnotationMap& authored) PARCHLET_REQUIRES(mutex) {
    for (const auto& [id, annotation] : authored) {
      // A host may erase with any value, while IsInSelectRect knows 1 alone.
      if (annotation->IsErased() == 0 && annotation->IsInSelectRect(rect) != 0) {
        selection[id] = annotation;
      }
    }
  };
  if (userId.empty()) {
    for (const auto& [author, authored] : userAnnotations) {
      selectFrom(authored);
    }
    return;
  }
  const auto author = userAnnotations.find(userId);
  if (author != userAnnotations.end()) {
    selectFrom(author->second);
  }
}

std::map<std::string, Annotation*> AnnotationPage::GetSelectedAnnotations() const {
  MutexLock lock(mutex);
  return selectedAnnotations;
}
