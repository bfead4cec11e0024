#include "platform/gdi/Gdi.h"

#include <atomic>
#include <new>

namespace {

constexpr int kMaxSide = 32767;
constexpr std::int64_t kMaxPixels = std::int64_t{1} << 28;  // 1 GiB

std::uint64_t NextSerial() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

// A zeroed section, or null when memory runs out.
HBITMAP MakeSection(int width, int height) {
  std::unique_ptr<PixelSection> bitmap(new (std::nothrow) PixelSection);
  if (bitmap == nullptr) {
    return nullptr;
  }
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  bitmap->serial = NextSerial();
  bitmap->width = width;
  bitmap->height = height;
  bitmap->pixels = AllocatePixels(count);
  return bitmap->pixels != nullptr ? bitmap.release() : nullptr;
}

}  // namespace

PixelMemory AllocatePixels(std::size_t count) {
  return PixelMemory(new (kPixelAlignment, std::nothrow) std::uint32_t[count]());
}

bool IsUsableSize(std::int64_t width, std::int64_t height) {
  return width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide &&
         width * height <= kMaxPixels;
}

HDC CreateCompatibleDC(HDC dc) {
  if (dc == nullptr) {
    return nullptr;
  }
  HDC made = new (std::nothrow) DeviceContext;
  if (made != nullptr) {
    made->selected = &made->initial;
  }
  return made;
}

BOOL DeleteDC(HDC dc) {
  delete dc;
  return dc != nullptr ? 1 : 0;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ bitmap) {
  if (dc == nullptr || bitmap == nullptr) {
    return nullptr;
  }
  HGDIOBJ before = dc->selected;
  dc->selected = static_cast<HBITMAP>(bitmap);
  return before;
}

BOOL DeleteObject(HGDIOBJ bitmap) {
  delete static_cast<HBITMAP>(bitmap);
  return bitmap != nullptr ? 1 : 0;
}

HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, void* /*section*/,
                         DWORD /*offset*/) {
  *bits = nullptr;
  const BITMAPINFOHEADER& header = info->bmiHeader;
  const bool known = usage == DIB_RGB_COLORS && header.biCompression == BI_RGB &&
                     header.biBitCount == 32 && header.biHeight < 0 && header.biHeight >= -kMaxSide;
  if (dc == nullptr || !known || !IsUsableSize(header.biWidth, -header.biHeight)) {
    return nullptr;
  }
  HBITMAP bitmap = MakeSection(header.biWidth, -header.biHeight);
  *bits = bitmap != nullptr ? bitmap->pixels.get() : nullptr;
  return bitmap;
}

HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height) {
  return dc != nullptr && IsUsableSize(width, height) ? MakeSection(width, height) : nullptr;
}

PixelView GetPixels(HDC dc) {
  if (dc == nullptr || dc->selected == nullptr || dc->selected->pixels == nullptr) {
    return {};
  }
  return {dc->selected->pixels.get(), dc->selected->width, dc->selected->height};
}
