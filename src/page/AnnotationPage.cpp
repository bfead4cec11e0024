#include "page/AnnotationPage.h"

#include <new>
#include <utility>

#include "annotation/PixelMath.h"

namespace {

constexpr std::uint32_t kTransparentPageColor = 0x0A000000;

bool IsEmptyExtent(LONG low, LONG high) {
  return std::int64_t{high} - low < 1;
}

}  // namespace

AnnotationPage::AnnotationPage() = default;

AnnotationPage::~AnnotationPage() {
  ReleaseSurface();
}

bool AnnotationPage::InitPage(HWND window, AnnotationPageInfo info,
                              std::shared_ptr<const NicknameTipStyle> style) {
  MutexLock surfaceLock(surfaceMutex);
  if (surfaceReady || window == nullptr || info.width < 1 || info.height < 1) {
    return false;
  }
  MutexLock lock(mutex);
  if (style != nullptr) {
    tipStyle = std::move(style);
  }
  if (!surface.Attach(window)) {
    return false;
  }
  initialInfo = info;
  currentInfo = info;
  clearColor = info.transparent ? kTransparentPageColor : info.backgroundColor;
  const int width = IsEmptyExtent(info.viewRect.left, info.viewRect.right) ? 1 : info.width;
  const int height = IsEmptyExtent(info.viewRect.top, info.viewRect.bottom) ? 1 : info.height;
  surfaceReady = surface.Resize(width, height);
  if (!surfaceReady) {
    surface.Release();
  }
  return surfaceReady;
}

bool AnnotationPage::UpdatePage(AnnotationPageInfo info, bool resize) {
  currentInfo.userValue1 = info.userValue1;
  currentInfo.userValue2 = info.userValue2;
  currentInfo.viewRect = info.viewRect;
  const RECT& view = initialInfo.viewRect;
  if (IsEmptyExtent(view.left, view.right) || IsEmptyExtent(view.top, view.bottom)) {
    initialInfo.viewRect = info.viewRect;
  }
  if (!resize) {
    return true;
  }
  const bool isSameSize = info.width == currentInfo.width && info.height == currentInfo.height;
  if (info.width < 1 || info.height < 1 || isSameSize) {
    return false;
  }
  MutexLock surfaceLock(surfaceMutex);
  MutexLock lock(mutex);
  currentInfo.width = info.width;
  currentInfo.height = info.height;
  surfaceReady = surface.Resize(info.width, info.height);
  return surfaceReady;
}

bool AnnotationPage::UpdateLayeredContent() {
  MutexLock surfaceLock(surfaceMutex);
  if (!surfaceReady) {
    return false;
  }
  try {
    DrawPage();
  } catch (const std::bad_alloc&) {
    // The window gets the surface as it is: it may have moved or lost its content meanwhile.
  }
  return surface.Push();
}

void AnnotationPage::SetPageBackgroundColor(unsigned int color) {
  MutexLock lock(mutex);
  if (!currentInfo.transparent) {
    clearColor = color;
  }
}

void AnnotationPage::ReleaseSurface() {
  MutexLock surfaceLock(surfaceMutex);
  if (!surfaceReady) {
    return;
  }
  surfaceReady = false;
  MutexLock lock(mutex);
  tipStyle.reset();
  surface.Release();
  selection.End();
  selection.Clear();
  store.DestroyAnnotations();
  currentAnnotation = nullptr;
  backgroundPicture.reset();
}

bool AnnotationPage::IsPointInPage(POINT point) const {
  return point.x >= 0 && point.x <= currentInfo.width && point.y >= 0 &&
         point.y <= currentInfo.height;
}

AnnotationPoint AnnotationPage::ToPagePoint(POINT pixel) const {
  return PagePoint(pixel, GetSize());
}

bool AnnotationPage::SetNicknameTip(std::shared_ptr<const NicknameTipStyle> style) {
  if (style == nullptr) {
    return false;
  }
  MutexLock lock(mutex);
  tipStyle = std::move(style);
  return true;
}
