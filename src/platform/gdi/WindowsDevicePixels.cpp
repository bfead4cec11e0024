#include <cstddef>

#include "platform/gdi/DevicePixels.h"

namespace {

constexpr WORD kBitsPerPixel = 32;
constexpr std::uint32_t kOpaque = 0xFF000000;

// The pixels of a section of 32 bits a pixel; an empty view for any other bitmap. The system does
// not tell whether a section is top-down, but nobody here makes others.
PixelView SectionPixels(HBITMAP bitmap) {
  DIBSECTION section{};
  const bool isKnown = bitmap != nullptr &&
                       GetObjectW(bitmap, sizeof section, &section) == sizeof section &&
                       section.dsBm.bmBitsPixel == kBitsPerPixel && section.dsBm.bmBits != nullptr;
  if (!isKnown) {
    return {};
  }
  return {static_cast<std::uint32_t*>(section.dsBm.bmBits), section.dsBm.bmWidth,
          section.dsBm.bmHeight};
}

// The screen's device context for as long as it is needed.
class ScreenContext {
 public:
  ScreenContext() : context(GetDC(nullptr)) {}
  ~ScreenContext() {
    if (context != nullptr) {
      ReleaseDC(nullptr, context);
    }
  }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;

  HDC Get() const { return context; }

 private:
  HDC context;
};

// Asks the system for the pixels of a device's bitmap, which must not be selected into a context.
BitmapCopy CopyDeviceBitmap(HBITMAP bitmap) {
  BITMAP kind{};
  const ScreenContext screen;
  if (screen.Get() == nullptr || GetObjectW(bitmap, sizeof kind, &kind) == 0) {
    return {};
  }
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = kind.bmWidth;
  info.bmiHeader.biHeight = -kind.bmHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = kBitsPerPixel;
  info.bmiHeader.biCompression = BI_RGB;
  BitmapCopy copy = {kind.bmWidth, kind.bmHeight, {}};
  copy.pixels.resize(static_cast<std::size_t>(kind.bmWidth) *
                     static_cast<std::size_t>(kind.bmHeight));
  if (GetDIBits(screen.Get(), bitmap, 0, static_cast<UINT>(kind.bmHeight), copy.pixels.data(),
                &info, DIB_RGB_COLORS) != kind.bmHeight) {
    return {};
  }
  for (std::uint32_t& pixel : copy.pixels) {
    pixel |= kOpaque;
  }
  return copy;
}

}  // namespace

DevicePixels::DevicePixels(HDC dc)
    : context(dc),
      bitmap(dc != nullptr ? static_cast<HBITMAP>(GetCurrentObject(dc, OBJ_BITMAP)) : nullptr),
      view(SectionPixels(bitmap)) {}

void DevicePixels::Settle() {
  GdiFlush();
}

// The context's bounding rectangle is the report: the system keeps it with the context, and whoever
// pushes the frame takes it. That accumulation is on says that there are reports at all.
void DevicePixels::BeginChange() {
  SetBoundsRect(context, nullptr, DCB_ENABLE);
}

void DevicePixels::AddChanged(const RECT& area) {
  SetBoundsRect(context, &area, DCB_ACCUMULATE);
}

BitmapCopy CopyBitmap(HBITMAP bitmap) {
  if (bitmap == nullptr) {
    return {};
  }
  const PixelView section = SectionPixels(bitmap);
  if (section.pixels == nullptr) {
    return CopyDeviceBitmap(bitmap);
  }
  GdiFlush();
  const auto count =
      static_cast<std::size_t>(section.width) * static_cast<std::size_t>(section.height);
  return {section.width, section.height, {section.pixels, section.pixels + count}};
}
