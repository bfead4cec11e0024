#include "page/AnnotationPage.h"

AnnotationPage::AnnotationPage() = default;

AnnotationPage::~AnnotationPage() {
  ReleaseSurface();
  // A page whose surface never came, or was lost, still owns annotations and what was made of it.
  MutexLock surfaceLock(surfaceMutex);
  MutexLock lock(mutex);
  ReleaseSurfaceObjects();
  DestroyAnnotations();
}
