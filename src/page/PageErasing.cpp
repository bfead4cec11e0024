#include "page/AnnotationPage.h"

Annotation* AnnotationPage::FindAnnotationAtPoint(const std::string& userId,
                                                  const std::string& userSubId,
                                                  const AnnotationPoint& point, bool useFrame) {
  MutexLock lock(mutex);
  return store.FindAtPoint({userId, userSubId}, point, useFrame);
}

std::vector<Annotation*> AnnotationPage::FindAnnotationsOnSegment(const std::string& userId,
                                                                  const std::string& userSubId,
                                                                  const AnnotationPoint& from,
                                                                  const AnnotationPoint& to) {
  MutexLock lock(mutex);
  return store.FindOnSegment({userId, userSubId}, from, to);
}

std::string AnnotationPage::EraseAnnotations(const std::string& userId,
                                             const std::string& userSubId, POINT point) {
  if (!IsPointInPage(point)) {
    return {};
  }
  MutexLock lock(mutex);
  selection.Clear();
  const Annotation* hit = store.FindAtPoint({userId, userSubId}, ToPagePoint(point), false);
  return hit != nullptr ? hit->GetAnnotationId() : std::string();
}

std::vector<std::string> AnnotationPage::EraseAnnotations(const std::string& userId,
                                                          const std::string& userSubId, POINT from,
                                                          POINT to) {
  if (!IsPointInPage(from) && !IsPointInPage(to)) {
    return {};
  }
  MutexLock lock(mutex);
  selection.Clear();
  std::vector<std::string> ids;
  for (const Annotation* hit :
       store.FindOnSegment({userId, userSubId}, ToPagePoint(from), ToPagePoint(to))) {
    ids.push_back(hit->GetAnnotationId());
  }
  return ids;
}

bool AnnotationPage::EraseAnnotation(const std::string& userId, const std::string& annotationId) {
  MutexLock lock(mutex);
  Annotation* annotation = store.FindConfirmed(userId, annotationId);
  if (annotation == nullptr || annotation->IsErased() != 0) {
    return false;
  }
  annotation->Erase(1);
  return true;
}

std::vector<std::string> AnnotationPage::EraseSelectedAnnotations() {
  MutexLock lock(mutex);
  std::vector<std::string> ids;
  ids.reserve(selection.Selected().size());
  for (const auto& [id, annotation] : selection.Selected()) {
    ids.push_back(id);
  }
  selection.Clear();
  return ids;
}
