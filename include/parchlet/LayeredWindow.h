// LayeredWindow.h - how a host off Windows shows the engine's frames in its own toolkit.
#pragma once

#include <cstddef>
#include <cstdint>

#include <parchlet/Platform.h>

#if !defined(_WIN32)

// One pushed frame; valid during LayeredWindow::Present only.
struct LayeredFrame {
  const std::uint32_t* pixels;  // premultiplied 0xAARRGGBB, row by row, top row first
  int width;                    // pixels: the window's size; what lies past the page's surface is
  int height;                   // transparent
  std::ptrdiff_t stride;        // bytes from one row to the next
  const RECT* changed;          // what differs from the frame before; at least those pixels
  std::size_t changedCount;
};

// A window that frames are pushed to. A host or an adapter implements it.
class PARCHLET_API LayeredWindow {
 public:
  // The window's rectangle on the screen; its size is the size of the frames. Any thread.
  virtual RECT GetScreenRect() const = 0;
  // Shows a frame; false when it could not. Called on the refresh thread, which meanwhile holds
  // engine locks, so it must not call the engine, nor UnregisterLayeredWindow.
  virtual bool Present(const LayeredFrame& frame) = 0;

 protected:
  ~LayeredWindow() = default;
};

// Makes a handle to give to Parchlet::NewPage. The window is not owned and must stay until its
// handle is unregistered. Throws std::bad_alloc when memory runs out. Any thread.
PARCHLET_API HWND RegisterLayeredWindow(LayeredWindow& window);

// Ends a handle, after waiting for a call into the window under way; unknown handles are ignored.
// The engine treats the handle as a destroyed window from then on. Any thread, but not from within
// the window's own functions.
PARCHLET_API void UnregisterLayeredWindow(HWND handle);

#endif
