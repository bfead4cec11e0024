#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/gdi/DevicePixels.h"
#include "platform/window/Push.h"

namespace {

// Neither position nor size: they are the host's, and those that were read here may be old by now.
// Without a dirty rectangle all is shown.
bool Show(HWND window, HDC surface, const RECT* dirty) {
  const POINT origin = {0, 0};
  const BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  UPDATELAYEREDWINDOWINFO info{};
  info.cbSize = sizeof info;
  info.hdcSrc = surface;
  info.pptSrc = &origin;
  info.pblend = &blend;
  info.dwFlags = ULW_ALPHA;
  info.prcDirty = dirty;
  return UpdateLayeredWindowIndirect(window, &info) != 0;
}

// What a window shows, kept with the window itself: several pages may push to it, of engines that
// do not know each other.
class ShownFrame {
 public:
  ShownFrame(HWND window, const PixelView& surface, int width, int height)
      : window(window), surface(surface.pixels), size(Pack(width, height)) {}

  // Whether it is an earlier state of the surface, in that size.
  bool IsOfSurface() const {
    return GetPropW(window, kSurface) == surface && GetPropW(window, kSize) == size;
  }
  // Whether it was shown within the last second.
  bool IsFresh() const {
    constexpr DWORD kFreshMs = 1000;
    return Now() - static_cast<DWORD>(reinterpret_cast<UINT_PTR>(GetPropW(window, kTime))) <
           kFreshMs;
  }
  void Remember() const {
    SetPropW(window, kSurface, surface);
    SetPropW(window, kSize, size);
    SetPropW(window, kTime, reinterpret_cast<HANDLE>(UINT_PTR{Now()}));
  }
  void Forget() const {
    if (GetPropW(window, kSurface) == nullptr) {
      return;
    }
    for (const wchar_t* name : {kSurface, kSize, kTime}) {
      RemovePropW(window, name);
    }
  }

 private:
  static constexpr const wchar_t* kSurface = L"Parchlet.Surface";
  static constexpr const wchar_t* kSize = L"Parchlet.Size";
  static constexpr const wchar_t* kTime = L"Parchlet.Time";

  static DWORD Now() { return static_cast<DWORD>(GetTickCount64()); }

  static HANDLE Pack(int width, int height) {
    constexpr int kBits = 16;  // a window's sides are shorter
    return reinterpret_cast<HANDLE>(std::intptr_t{height} << kBits | width);
  }

  HWND window;
  HANDLE surface;  // its first pixel: a resized page keeps its context
  HANDLE size;
};

// Whether the painter reports what it paints.
bool HasReports(HDC surface) {
  return (SetBoundsRect(surface, nullptr, 0) & DCB_ENABLE) != 0;
}

// Takes the area that was painted since the last call.
RECT TakeChanged(HDC surface, int width, int height) {
  RECT changed{};
  if ((GetBoundsRect(surface, &changed, DCB_RESET) & DCB_SET) != DCB_SET) {
    return {};  // DCB_RESET, a bit of DCB_SET: nothing was
  }
  const RECT all = {0, 0, width, height};
  RECT shown{};
  IntersectRect(&shown, &all, &changed);
  return shown;
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

// A frame in which nothing changed is not pushed, but for one a second, which is pushed whole: what
// else the host or the system may have done to the window's content lasts no longer.
//
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
  const ShownFrame shown(window, view, width, height);
  if (width > view.width || height > view.height) {
    shown.Forget();
    const PaddedSurface padded(surface, view, width, height);
    return padded.Context() != nullptr && Show(window, padded.Context(), nullptr);
  }
  if (!HasReports(surface)) {
    shown.Forget();
    return Show(window, surface, nullptr);
  }
  const RECT changed = TakeChanged(surface, width, height);
  const bool isUnchanged = IsRectEmpty(&changed) != FALSE;
  const bool isKnown = shown.IsOfSurface() && shown.IsFresh();
  if (isKnown && isUnchanged) {
    return true;
  }
  const bool isShown = Show(window, surface, isKnown ? &changed : nullptr);
  if (isShown) {
    shown.Remember();
  } else {
    shown.Forget();
  }
  return isShown;
}
