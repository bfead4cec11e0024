#include <new>
#include <utility>

#include "page/AnnotationPage.h"

namespace {

constexpr std::uint32_t kTransparentPageColor = 0x0A000000;
constexpr int kBitsPerPixel = 32;

bool IsEmpty(LONG low, LONG high) {
  return std::int64_t{high} - low < 1;
}

// A window's device context for as long as it is needed.
class WindowContext {
 public:
  explicit WindowContext(HWND window) : window(window), context(GetDC(window)) {}
  ~WindowContext() {
    if (context != nullptr) {
      ReleaseDC(window, context);
    }
  }
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;

  HDC Get() const { return context; }

 private:
  HWND window;
  HDC context;
};

}  // namespace

int AnnotationPage::InitPage(HWND newWindow, AnnotationPageInfo info,
                             std::shared_ptr<const NicknameTipStyle> style) {
  MutexLock surfaceLock(surfaceMutex);
  if (surfaceReady == 1 || newWindow == nullptr || info.width < 1 || info.height < 1) {
    return 0;
  }
  MutexLock lock(mutex);
  window = newWindow;
  if (style != nullptr) {
    tipStyle = std::move(style);
  }
  if (!CreateMemoryContext()) {
    return 0;
  }
  selectRect.Erase(1);
  initialInfo = info;
  currentInfo = info;
  clearColor = info.transparent ? kTransparentPageColor : info.backgroundColor;
  const int width = IsEmpty(info.viewRect.left, info.viewRect.right) ? 1 : info.width;
  const int height = IsEmpty(info.viewRect.top, info.viewRect.bottom) ? 1 : info.height;
  if (surface.Create(memoryDC, width, height, kBitsPerPixel, false) != 0) {
    previousBitmap = SelectObject(memoryDC, surface.GetBitmap());
    CreateGraphics();
  }
  surfaceReady = graphics != nullptr ? 1 : 0;
  if (surfaceReady == 0) {
    ReleaseSurfaceObjects();
  }
  return surfaceReady;
}

bool AnnotationPage::CreateMemoryContext() {
  const WindowContext context(window);
  memoryDC = context.Get() != nullptr ? CreateCompatibleDC(context.Get()) : nullptr;
  return memoryDC != nullptr;
}

void AnnotationPage::CreateGraphics() {
  graphics.reset();
  try {
    graphics = std::make_unique<Gdiplus::Graphics>(memoryDC);
  } catch (const std::bad_alloc&) {
    return;  // a page that cannot paint is not ready, and no call throws for it
  }
  if (graphics->GetLastStatus() != Gdiplus::Ok) {
    graphics.reset();
  } else {
    graphics->SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
  }
}

int AnnotationPage::UpdatePage(AnnotationPageInfo info, bool resize) {
  currentInfo.userValue1 = info.userValue1;
  currentInfo.userValue2 = info.userValue2;
  currentInfo.viewRect = info.viewRect;
  const RECT& view = initialInfo.viewRect;
  if (IsEmpty(view.left, view.right) || IsEmpty(view.top, view.bottom)) {
    initialInfo.viewRect = info.viewRect;
  }
  if (!resize) {
    return 1;
  }
  const bool isSameSize = info.width == currentInfo.width && info.height == currentInfo.height;
  if (info.width < 1 || info.height < 1 || isSameSize) {
    return 0;
  }
  MutexLock surfaceLock(surfaceMutex);
  MutexLock lock(mutex);
  currentInfo.width = info.width;
  currentInfo.height = info.height;
  DibSection resized;
  if (resized.Create(memoryDC, info.width, info.height, kBitsPerPixel, false) != 0) {
    HGDIOBJ replaced = SelectObject(memoryDC, resized.GetBitmap());
    if (previousBitmap == nullptr) {
      previousBitmap = replaced;
    }
    graphics.reset();  // it paints on the section that goes
    surface.Swap(resized);
    CreateGraphics();
    if (graphics == nullptr) {
      // The old section paints on, as when the new one cannot be had.
      SelectObject(memoryDC, resized.GetBitmap());
      surface.Swap(resized);
      CreateGraphics();
    }
  }
  surfaceReady = graphics != nullptr ? 1 : 0;
  return surfaceReady;
}

int AnnotationPage::UpdateLayeredContent() {
  MutexLock surfaceLock(surfaceMutex);
  if (surfaceReady == 0 || window == nullptr) {
    return 0;
  }
  DrawPage();
  return PushToWindow();
}

int AnnotationPage::PushToWindow() {
  const WindowContext context(window);
  RECT area{};
  if (context.Get() == nullptr || GetWindowRect(window, &area) == 0) {
    return 0;
  }
  POINT position = {area.left, area.top};
  SIZE size = {static_cast<LONG>(std::int64_t{area.right} - area.left),
               static_cast<LONG>(std::int64_t{area.bottom} - area.top)};
  POINT origin = {0, 0};
  BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  return UpdateLayeredWindow(window, context.Get(), &position, &size, memoryDC, &origin, 0, &blend,
                             ULW_ALPHA);
}

void AnnotationPage::SetPageBackgroundColor(unsigned int color) {
  MutexLock lock(mutex);
  if (!currentInfo.transparent) {
    clearColor = color;
  }
}

void AnnotationPage::ReleaseSurface() {
  MutexLock surfaceLock(surfaceMutex);
  if (surfaceReady == 0) {
    return;
  }
  MutexLock lock(mutex);
  tipStyle.reset();
  ReleaseSurfaceObjects();
  DestroyAnnotations();
  surfaceReady = 0;
}

void AnnotationPage::ReleaseSurfaceObjects() {
  graphics.reset();
  if (memoryDC != nullptr) {
    if (previousBitmap != nullptr) {
      SelectObject(memoryDC, previousBitmap);
    }
    DeleteDC(memoryDC);
  }
  previousBitmap = nullptr;
  memoryDC = nullptr;
  surface.Release();
}
