#include "page/AnnotationPage.h"

void AnnotationPage::StartSelecting(const std::string& userId, const std::string& userSubId,
                                    POINT point) {
  const AnnotationPoint pressed = ToPagePoint(point);
  MutexLock lock(mutex);
  Annotation* hit = store.FindAtPoint({userId, userSubId}, pressed, true);
  if (hit != nullptr && selection.Holds(*hit)) {
    selection.StartMoving(pressed);
  } else {
    selection.StartRubberBand(hit, userId, pressed);
  }
}

bool AnnotationPage::MoveSelecting(POINT point) {
  const AnnotationPoint moved = ToPagePoint(point);
  MutexLock lock(mutex);
  if (selection.IsMoving()) {
    store.AddBackups(selection.Selected());
    selection.MoveTo(moved);
    return true;
  }
  if (selection.RubberBand().IsErased() == 0) {
    MarkStore::Marks within;
    store.AddWithin(selection.RubberBand().userId, selection.Stretch(moved), within);
    selection.Replace(within);
  }
  return false;
}

bool AnnotationPage::EndSelecting() {
  MutexLock lock(mutex);
  return selection.End();
}

void AnnotationPage::SelectAnnotations(const std::string& userId, const RECT& rect) {
  MutexLock lock(mutex);
  MarkStore::Marks selected = selection.Selected();
  store.AddWithin(userId, rect, selected);
  selection.Replace(selected);
}

std::map<std::string, Annotation*> AnnotationPage::GetSelectedAnnotations() const {
  MutexLock lock(mutex);
  return selection.Selected();
}
