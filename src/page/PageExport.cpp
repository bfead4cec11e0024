#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"
#include "page/ImageFile.h"

namespace {

// A device context that is deleted when it goes out of scope, null ones included.
class OwnedContext {
 public:
  explicit OwnedContext(HDC context) : context(context) {}
  ~OwnedContext() {
    if (context != nullptr) {
      DeleteDC(context);
    }
  }
  OwnedContext(const OwnedContext&) = delete;
  OwnedContext& operator=(const OwnedContext&) = delete;

  HDC Get() const { return context; }

 private:
  HDC context;
};

bool GetEncoder(const std::wstring& path, CLSID* encoder) {
  return !path.empty() && GetEncoderClsid(GetImageMimeType(path), encoder);
}

// Copies that many pixels of the display from `origin` on into a bitmap of their own, and saves it.
bool SaveScreenArea(HDC display, POINT origin, int width, int height, const std::wstring& path,
                    const CLSID& encoder) {
  const OwnedContext memory(CreateCompatibleDC(display));
  HBITMAP captured = CreateCompatibleBitmap(display, width, height);
  if (memory.Get() == nullptr || captured == nullptr) {
    DeleteObject(captured);
    return false;
  }
  HGDIOBJ previous = SelectObject(memory.Get(), captured);
  const bool isCopied = BitBlt(memory.Get(), 0, 0, width, height, display, origin.x, origin.y,
                               SRCCOPY | CAPTUREBLT) != 0;
  SelectObject(memory.Get(), previous);
  const bool isSaved = isCopied && SaveBitmap(captured, width, height, path, encoder);
  DeleteObject(captured);
  return isSaved;
}

}  // namespace

int AnnotationPage::SaveSurface(const std::wstring& path, const CLSID& encoder) {
  if (surface.GetBitmap() == nullptr) {
    return 0;
  }
  return SaveBitmap(surface.GetBitmap(), surface.GetWidth(), surface.GetHeight(), path, encoder)
             ? 1
             : 0;
}

int AnnotationPage::SavePage(const std::wstring& path, const std::wstring& displayDevice) {
  MutexLock lock(mutex);
  CLSID encoder{};
  if (!GetEncoder(path, &encoder)) {
    return 0;
  }
  if (displayDevice.empty()) {
    return SaveSurface(path, encoder);
  }
  const wchar_t* name = displayDevice.c_str();
  const OwnedContext display(CreateDCW(name, name, nullptr, nullptr));
  DEVMODEW mode{};
  mode.dmSize = sizeof(mode);
  if (display.Get() == nullptr || EnumDisplaySettingsW(name, ENUM_CURRENT_SETTINGS, &mode) == 0) {
    return 0;
  }
  return SaveScreenArea(display.Get(), {0, 0}, static_cast<int>(mode.dmPelsWidth),
                        static_cast<int>(mode.dmPelsHeight), path, encoder)
             ? 1
             : 0;
}

int AnnotationPage::SavePage(const std::wstring& path, HWND capturedWindow) {
  MutexLock lock(mutex);
  CLSID encoder{};
  if (!GetEncoder(path, &encoder)) {
    return 0;
  }
  if (capturedWindow == nullptr || IsWindow(capturedWindow) == 0) {
    return SaveSurface(path, encoder);
  }
  RECT area{};
  if (GetWindowRect(capturedWindow, &area) == 0) {
    return 0;
  }
  MONITORINFOEXW monitor{};
  monitor.cbSize = sizeof(monitor);
  if (GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &monitor) == 0) {
    return 0;
  }
  const OwnedContext display(CreateDCW(monitor.szDevice, monitor.szDevice, nullptr, nullptr));
  if (display.Get() == nullptr) {
    return 0;
  }
  const POINT origin = {SaturatingPixel(std::int64_t{area.left} - monitor.rcMonitor.left),
                        SaturatingPixel(std::int64_t{area.top} - monitor.rcMonitor.top)};
  return SaveScreenArea(display.Get(), origin,
                        SaturatingPixel(std::int64_t{area.right} - area.left),
                        SaturatingPixel(std::int64_t{area.bottom} - area.top), path, encoder)
             ? 1
             : 0;
}
