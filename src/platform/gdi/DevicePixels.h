// The pixels behind device contexts and bitmaps, for the painter.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/gdi/PixelView.h"
#include "platform/System.h"

// The pixels that drawing on a device context writes: those of the bitmap that is selected into it
// at construction, which must outlive this. One thread at a time.
class DevicePixels {
 public:
  explicit DevicePixels(HDC dc);

  // Empty for a context that has no pixels in memory.
  const PixelView& View() const { return view; }

  // Called before pixels are written: what the system still has to draw on them is drawn.
  void Settle();
  // Called when pixels were written: forgets the areas reported for the last change.
  void BeginChange();
  // Reports an area in which pixels may differ from those before the change.
  void AddChanged(const RECT& area);

 private:
  [[maybe_unused]] HDC context;     // which keeps the report on Windows
  [[maybe_unused]] HBITMAP bitmap;  // which keeps it elsewhere
  PixelView view;
};

// A copy of a bitmap's pixels: premultiplied 0xAARRGGBB, top row first.
struct BitmapCopy {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// Copies a bitmap, alpha included; a device's bitmap, which has none, comes out opaque. The copy is
// empty for null and for a bitmap without pixels.
BitmapCopy CopyBitmap(HBITMAP bitmap);
