#include <utility>

#include "page/AnnotationPage.h"

namespace {

// A mark that is erased already keeps whatever value the host erased it with.
void EraseOnce(Annotation& annotation) {
  if (annotation.IsErased() == 0) {
    annotation.Erase(1);
  }
}

}  // namespace

void AnnotationPage::CancelAnnotation(const std::string& annotationId) {
  MutexLock lock(mutex);
  const auto found = localAnnotations.find(annotationId);
  if (found == localAnnotations.end()) {
    return;
  }
  Annotation* pending = found->second;
  for (const auto& [author, authored] : userAnnotations) {
    const auto confirmed = authored.find(annotationId);
    if (confirmed != authored.end()) {
      *confirmed->second = *pending;
      confirmed->second->Erase(0);
      break;
    }
  }
  localAnnotations.erase(found);
  if (currentAnnotation == pending) {
    currentAnnotation = nullptr;
  }
  delete pending;
}

Annotation* AnnotationPage::GetAnnotation(const std::string& userId,
                                          const std::string& annotationId) const {
  MutexLock lock(mutex);
  return FindConfirmed(userId, annotationId);
}

Annotation* AnnotationPage::FindAnnotation(const std::string& userId,
                                           const std::string& annotationId) const {
  return GetAnnotation(userId, annotationId);
}

Annotation* AnnotationPage::GetLocalAnnotation(const std::string& annotationId) const {
  MutexLock lock(mutex);
  const auto found = localAnnotations.find(annotationId);
  return found != localAnnotations.end() ? found->second : nullptr;
}

int AnnotationPage::IsUserExist(const std::string& userId) const {
  MutexLock lock(mutex);
  return userAnnotations.contains(userId) ? 1 : 0;
}

int AnnotationPage::GetUserAnnotations(const std::string& userId,
                                       std::map<std::string, Annotation*>* out) const {
  MutexLock lock(mutex);
  const auto author = userAnnotations.find(userId);
  if (out == nullptr || author == userAnnotations.end()) {
    return 0;
  }
  *out = author->second;
  return 1;
}

int AnnotationPage::GetAllAnnotations(
    std::map<std::string, std::map<std::string, Annotation*>>* out) const {
  MutexLock lock(mutex);
  if (out == nullptr) {
    return 0;
  }
  *out = userAnnotations;
  return 1;
}

int AnnotationPage::ClearAnnotations(const std::string& userId, const std::string& userSubId) {
  MutexLock lock(mutex);
  if (userId.empty()) {
    for (const auto& [author, authored] : userAnnotations) {
      for (const auto& [id, annotation] : authored) {
        EraseOnce(*annotation);
      }
    }
    return 1;
  }
  const auto author = userAnnotations.find(userId);
  if (author == userAnnotations.end()) {
    return 0;
  }
  for (const auto& [id, annotation] : author->second) {
    if (userSubId.empty() || annotation->userSubId == userSubId) {
      EraseOnce(*annotation);
    }
  }
  return 1;
}
