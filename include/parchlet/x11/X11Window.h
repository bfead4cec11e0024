// X11Window.h - makes a 32-bit window of an X11 host a layered window of the engine.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <parchlet/LayeredWindow.h>
#include <parchlet/Platform.h>

// Shows frames in a window of the host, which creates, maps, moves and destroys it on its own
// connection. This object opens a second connection for the frames. The window needs a 32-bit
// visual with colours laid out as 0xAARRGGBB. If it is a top-level window, a compositor blends it
// over what lies below. Without a compositor its premultiplied pixels are shown as they are.
//
// Frames go through memory shared with the X server if there is any, else through the connection.
// Only rectangles that changed, or that the server exposed since the last frame, are sent.
//
// A failed call returns false or nothing, and GetError says why: a server that goes away, a window
// that another client destroys, a display that cannot be reached. Memory that runs out is thrown as
// std::bad_alloc; if that happens to the refresh thread, it drops the frame and goes on.
//
// Every function may be called from any thread; the refresh thread calls Present and GetScreenRect.
// A call may wait for a frame of this window under way, on a lock of this object that is taken
// after every lock of the engine. The destructor waits for such a frame too; no other call may be
// under way then.
class PARCHLET_API X11Window final : public LayeredWindow {
 public:
  // Connects to `displayName`, to show frames in `window`; an empty name stands for the
  // environment's DISPLAY. GetError returns an empty text if that succeeded.
  X11Window(const std::string& displayName, std::uint32_t window);
  ~X11Window();
  X11Window(const X11Window&) = delete;
  X11Window& operator=(const X11Window&) = delete;

  // Returns the handle for Parchlet::NewPage; null if the constructor failed.
  HWND Handle() const;

  // Returns why the constructor or the last call failed, in words; empty after a success.
  std::string GetError() const;

  // Asks the X server and returns where the window's inside is on the screen; empty on failure.
  RECT GetScreenRect() const override;

  // Sends what changed and waits until the server has it.
  bool Present(const LayeredFrame& frame) override;

 private:
  struct State;
  std::unique_ptr<State> state;
};
