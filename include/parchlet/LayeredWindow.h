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
  const RECT* changed;          // rectangles that hold every pixel that changed
  std::size_t changedCount;
};

// A window that frames are pushed to. A host or an adapter implements it.
//
// The engine calls it while it holds locks: in a refresh the lock on which page is current and that
// of the page's surface, in an export the page's own lock (GetScreenRect alone). So both functions
// must not call the engine, nor UnregisterLayeredWindow. What they throw is contained: it counts as
// a window whose rectangle is unknown, and whose frame or export fails; the next frame tries again.
class PARCHLET_API LayeredWindow {
 public:
  // Returns the window's rectangle on the screen; its size is the size of the frames. Called on the
  // refresh thread, and on the host thread when an export captures this window.
  virtual RECT GetScreenRect() const = 0;
  // Shows a frame; returns false if it could not. The next frame is then marked as changed all
  // over. Called on the refresh thread.
  virtual bool Present(const LayeredFrame& frame) = 0;

 protected:
  ~LayeredWindow() = default;
};

// Returns a new handle for Parchlet::NewPage. The window is not owned and must live until its
// handle is unregistered. Throws std::bad_alloc if memory runs out. Any thread.
PARCHLET_API HWND RegisterLayeredWindow(LayeredWindow& window);

// Ends a handle; to the engine it is then a destroyed window. Waits for calls into the window that
// are under way. Ignores unknown handles. Any thread, but not from within the window's own
// functions.
PARCHLET_API void UnregisterLayeredWindow(HWND handle);

#endif
