#include "page/AnnotationPage.h"

namespace {

// A mark that is erased already keeps whatever value the host erased it with.
void EraseOnce(Annotation& annotation) {
  if (annotation.IsErased() == 0) {
    annotation.Erase(1);
  }
}

}  // namespace

bool AnnotationPage::AddAnnotation(Annotation* annotation, bool fromRemote) {
  if (annotation == nullptr) {
    return false;
  }
  MutexLock lock(mutex);
  if (fromRemote) {
    const MarkStore::Merged merged = store.Merge(annotation, GetSize());
    if (merged.ended != nullptr && merged.ended == currentAnnotation) {
      currentAnnotation = nullptr;
    }
    return merged.isKept;
  }
  store.AddLocal(annotation);
  currentAnnotation = annotation;
  selection.Clear();
  return true;
}

void AnnotationPage::CancelAnnotation(const std::string& annotationId) {
  MutexLock lock(mutex);
  const Annotation* pending = store.FindPending(annotationId);
  const bool isCurrent = pending != nullptr && pending == currentAnnotation;
  store.Cancel(annotationId);
  if (isCurrent) {
    currentAnnotation = nullptr;
  }
}

Annotation* AnnotationPage::GetAnnotation(const std::string& userId,
                                          const std::string& annotationId) const {
  MutexLock lock(mutex);
  return store.FindConfirmed(userId, annotationId);
}

Annotation* AnnotationPage::FindAnnotation(const std::string& userId,
                                           const std::string& annotationId) const {
  return GetAnnotation(userId, annotationId);
}

Annotation* AnnotationPage::GetLocalAnnotation(const std::string& annotationId) const {
  MutexLock lock(mutex);
  return store.FindPending(annotationId);
}

bool AnnotationPage::IsUserExist(const std::string& userId) const {
  MutexLock lock(mutex);
  return store.FindAuthor(userId) != nullptr;
}

bool AnnotationPage::GetUserAnnotations(const std::string& userId,
                                        std::map<std::string, Annotation*>* out) const {
  MutexLock lock(mutex);
  const MarkStore::Marks* authored = store.FindAuthor(userId);
  if (out == nullptr || authored == nullptr) {
    return false;
  }
  *out = *authored;
  return true;
}

bool AnnotationPage::GetAllAnnotations(
    std::map<std::string, std::map<std::string, Annotation*>>* out) const {
  MutexLock lock(mutex);
  if (out == nullptr) {
    return false;
  }
  *out = store.UserAnnotations();
  return true;
}

bool AnnotationPage::ClearAnnotations(const std::string& userId, const std::string& userSubId) {
  MutexLock lock(mutex);
  if (userId.empty()) {
    for (const auto& [author, authored] : store.UserAnnotations()) {
      for (const auto& [id, annotation] : authored) {
        EraseOnce(*annotation);
      }
    }
    return true;
  }
  const MarkStore::Marks* authored = store.FindAuthor(userId);
  if (authored == nullptr) {
    return false;
  }
  for (const auto& [id, annotation] : *authored) {
    if (userSubId.empty() || annotation->userSubId == userSubId) {
      EraseOnce(*annotation);
    }
  }
  return true;
}
