#pragma once

#include <memory>
#include <string>

#include "page/DibSection.h"
#include "platform/Platform.h"

// What a page is painted on: a pixel section, the painter on it, and the window that it is pushed
// to, which is the host's.
//
// One thread at a time: the page guards it with its surface lock.
class PageSurface {
 public:
  PageSurface() = default;
  ~PageSurface();
  PageSurface(const PageSurface&) = delete;
  PageSurface& operator=(const PageSurface&) = delete;

  // Makes a device context for the window. False when the system refuses it.
  bool Attach(HWND newWindow);
  // Makes section and painter, in place of those there are. When it fails, the old ones stay in use
  // if there are any. Returns whether there is a painter.
  bool Resize(int width, int height);
  // Releases all but the window. The marks' pictures may outlive it.
  void Release();

  // Null when the surface is not ready.
  Gdiplus::Graphics* Painter() const { return graphics.get(); }
  // Pushes the surface to the window, at the window's place and size. False for a window that is
  // gone, and when the push fails.
  bool Push() const;
  // Writes the pixels to an image file; false when there are none or it cannot be written.
  bool Save(const std::wstring& path, const CLSID& encoder) const;

 private:
  void CreateGraphics();

  std::unique_ptr<Gdiplus::Graphics> graphics;
  DibSection surface;
  HDC memoryDC = nullptr;
  HGDIOBJ previousBitmap = nullptr;
  HWND window = nullptr;
};
