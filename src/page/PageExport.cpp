#include <memory>
#include <type_traits>

#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"
#include "page/ImageFile.h"
#include "platform/PictureFiles.h"

namespace {

struct DeleteHandle {
  void operator()(HDC context) const { DeleteDC(context); }
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using OwnedContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteHandle>;
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteHandle>;

bool GetEncoder(const std::wstring& path, CLSID* encoder) {
  return !path.empty() && GetEncoderClsid(GetImageMimeType(path), encoder);
}

// Copies that many pixels of the display from `origin` on into a bitmap of their own, and saves it.
bool SaveScreenArea(HDC display, POINT origin, int width, int height, const std::wstring& path,
                    const CLSID& encoder) {
  // The context, in which the bitmap may still be selected, goes before the bitmap.
  const OwnedBitmap captured(CreateCompatibleBitmap(display, width, height));
  const OwnedContext memory(CreateCompatibleDC(display));
  if (memory == nullptr || captured == nullptr) {
    return false;
  }
  HGDIOBJ previous = SelectObject(memory.get(), captured.get());
  const bool isCopied = BitBlt(memory.get(), 0, 0, width, height, display, origin.x, origin.y,
                               SRCCOPY | CAPTUREBLT) != 0;
  SelectObject(memory.get(), previous);
  return isCopied && SaveBitmap(captured.get(), width, height, path, encoder);
}

}  // namespace

bool AnnotationPage::SaveSurface(const std::wstring& path, const CLSID& encoder) const {
  return ReadableSurface().Save(path, encoder);
}

bool AnnotationPage::SavePage(const std::wstring& path, const std::wstring& displayDevice) {
  MutexLock lock(mutex);
  CLSID encoder{};
  if (!GetEncoder(path, &encoder)) {
    return false;
  }
  if (displayDevice.empty()) {
    return SaveSurface(path, encoder);
  }
  const wchar_t* name = displayDevice.c_str();
  const OwnedContext display(CreateDCW(name, name, nullptr, nullptr));
  DEVMODEW mode{};
  mode.dmSize = sizeof(mode);
  if (display == nullptr || EnumDisplaySettingsW(name, ENUM_CURRENT_SETTINGS, &mode) == 0) {
    return false;
  }
  return SaveScreenArea(display.get(), {0, 0}, static_cast<int>(mode.dmPelsWidth),
                        static_cast<int>(mode.dmPelsHeight), path, encoder);
}

bool AnnotationPage::SavePage(const std::wstring& path, HWND capturedWindow) {
  MutexLock lock(mutex);
  CLSID encoder{};
  if (!GetEncoder(path, &encoder)) {
    return false;
  }
  if (capturedWindow == nullptr || IsWindow(capturedWindow) == 0) {
    return SaveSurface(path, encoder);
  }
  RECT area{};
  if (GetWindowRect(capturedWindow, &area) == 0) {
    return false;
  }
  MONITORINFOEXW monitor{};
  monitor.cbSize = sizeof(monitor);
  if (GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &monitor) == 0) {
    return false;
  }
  const OwnedContext display(CreateDCW(monitor.szDevice, monitor.szDevice, nullptr, nullptr));
  if (display == nullptr) {
    return false;
  }
  const POINT origin = {SaturatingPixel(std::int64_t{area.left} - monitor.rcMonitor.left),
                        SaturatingPixel(std::int64_t{area.top} - monitor.rcMonitor.top)};
  return SaveScreenArea(display.get(), origin,
                        SaturatingPixel(std::int64_t{area.right} - area.left),
                        SaturatingPixel(std::int64_t{area.bottom} - area.top), path, encoder);
}
