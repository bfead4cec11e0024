#include "platform/gdi/DevicePixels.h"

DevicePixels::DevicePixels(HDC dc)
    : context(dc), bitmap(dc != nullptr ? dc->selected : nullptr), view(GetPixels(dc)) {}

void DevicePixels::Settle() {}  // every call has drawn when it returns

void DevicePixels::BeginChange() {
  bitmap->BeginChange();
}

void DevicePixels::AddChanged(const RECT& area) {
  bitmap->changed.push_back(area);
}

BitmapCopy CopyBitmap(HBITMAP bitmap) {
  if (bitmap == nullptr || bitmap->pixels == nullptr) {
    return {};
  }
  const auto* pixels = bitmap->pixels.get();
  const auto count =
      static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height);
  return {bitmap->width, bitmap->height, {pixels, pixels + count}};
}
