#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/gdi/DevicePixels.h"
#include "platform/window/Push.h"

namespace {

// Neither position nor size: they are the host's, and those that were read here may be old by now.
bool Show(HWND window, HDC surface) {
  POINT origin = {0, 0};
  BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  return UpdateLayeredWindow(window, nullptr, nullptr, nullptr, surface, &origin, 0, &blend,
                             ULW_ALPHA) != 0;
}

// A surface in the corner of a transparent section that is as large as the window.
class PaddedSurface {
 public:
  PaddedSurface(HDC surface, const PixelView& from, int width, int height)
      : context(CreateCompatibleDC(surface)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    section = CreateDIBSection(context, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (context == nullptr || section == nullptr) {
      return;
    }
    previous = SelectObject(context, section);
    const int columns = std::min(from.width, width);
    for (int y = 0; y < std::min(from.height, height); ++y) {
      std::copy_n(from.pixels + std::ptrdiff_t{y} * from.width, columns,
                  static_cast<std::uint32_t*>(bits) + std::ptrdiff_t{y} * width);
    }
  }
  ~PaddedSurface() {
    if (previous != nullptr) {
      SelectObject(context, previous);
    }
    DeleteObject(section);
    DeleteDC(context);
  }
  PaddedSurface(const PaddedSurface&) = delete;
  PaddedSurface& operator=(const PaddedSurface&) = delete;

  // Null if the system could not make it.
  HDC Context() const { return previous != nullptr ? context : nullptr; }

 private:
  HDC context;
  HBITMAP section = nullptr;
  HGDIOBJ previous = nullptr;
};

}  // namespace

// A window that grows past the surface between the look at its size and the push gets no frame; the
// next one is padded.
bool PushToWindow(HWND window, HDC surface) {
  RECT area{};
  DevicePixels pixels(surface);
  const PixelView& view = pixels.View();
  if (view.pixels == nullptr || GetWindowRect(window, &area) == 0) {
    return false;
  }
  pixels.Settle();
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  if (width <= view.width && height <= view.height) {
    return Show(window, surface);
  }
  const PaddedSurface padded(surface, view, width, height);
  return padded.Context() != nullptr && Show(window, padded.Context());
}
