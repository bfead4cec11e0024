#pragma once

#include "platform/Platform.h"

// Holds one pixel section and frees it when it is destroyed. The section must not be selected into
// a device context then. One thread at a time.
class DibSection {
 public:
  DibSection() = default;
  ~DibSection();
  DibSection(const DibSection&) = delete;
  DibSection& operator=(const DibSection&) = delete;

  // Makes a section for `dc` in place of the one it holds. 1, or 0: with nothing changed for a
  // width or depth below 1, with an empty holder when the section cannot be had.
  int Create(HDC dc, int width, int height, int bitsPerPixel, bool bottomUp);
  // Frees the section.
  void Release();
  void Swap(DibSection& other);

  // Null when there is none.
  HBITMAP GetBitmap() const { return bitmap; }
  int GetWidth() const;
  int GetHeight() const;

 private:
  BITMAPINFO header{};
  HBITMAP bitmap = nullptr;
  void* bits = nullptr;  // the section's pixels; freed with it
};
