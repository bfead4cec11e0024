#include "page/PageSurface.h"

#include <new>

#include "platform/PictureFiles.h"
#include "platform/window/Push.h"

namespace {

constexpr int kBitsPerPixel = 32;

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

PageSurface::~PageSurface() {
  Release();
}

bool PageSurface::Attach(HWND newWindow) {
  window = newWindow;
  const WindowContext context(window);
  memoryDC = context.Get() != nullptr ? CreateCompatibleDC(context.Get()) : nullptr;
  return memoryDC != nullptr;
}

bool PageSurface::Resize(int width, int height) {
  DibSection resized;
  if (resized.Create(memoryDC, width, height, kBitsPerPixel, false) == 0) {
    return graphics != nullptr;
  }
  HGDIOBJ replaced = SelectObject(memoryDC, resized.GetBitmap());
  if (previousBitmap == nullptr) {
    previousBitmap = replaced;
  }
  graphics.reset();  // it paints on the section that goes
  surface.Swap(resized);
  CreateGraphics();
  if (graphics == nullptr && resized.GetBitmap() != nullptr) {
    SelectObject(memoryDC, resized.GetBitmap());
    surface.Swap(resized);
    CreateGraphics();
  }
  return graphics != nullptr;
}

void PageSurface::CreateGraphics() {
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

void PageSurface::Release() {
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

bool PageSurface::Push() const {
  return PushToWindow(window, memoryDC);
}

bool PageSurface::Save(const std::wstring& path, const CLSID& encoder) const {
  return surface.GetBitmap() != nullptr &&
         SaveBitmap(surface.GetBitmap(), surface.GetWidth(), surface.GetHeight(), path, encoder);
}
