// X11Window.h - makes a 32-bit window of an X11 host a layered window of the engine.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <parchlet/LayeredWindow.h>
#include <parchlet/Platform.h>

// A window of the host, which creates, maps, moves and destroys it as ever, on a connection of its
// own; frames go to it over a second connection that this object opens. The window needs a 32-bit
// visual with colours laid out as 0xAARRGGBB. A compositor blends it over what lies below when it
// is a top-level window; without one its pixels are shown as they are, premultiplied, without what
// lies below.
//
// Frames travel through memory shared with the X server where that can be had, else through the
// connection; only changed and freshly exposed rectangles are sent. Exposed ones are repaired with
// the next frame.
//
// Nothing fails louder than by a false result and a text: a server that goes away, a window that
// another client destroys, a display that cannot be reached. Memory alone that runs out is thrown,
// as std::bad_alloc; the refresh thread gives up its frame for it and goes on.
//
// Threads: every function may be called from any thread; the refresh thread calls Present and
// GetScreenRect, and a call may wait for a frame of this window under way. The lock that sees to it
// is this object's own and taken after every lock of the engine. The destructor waits for a frame
// under way; no other call may be under way then.
class PARCHLET_API X11Window final : public LayeredWindow {
 public:
  // Opens a connection to `displayName`, or for an empty name to that in the environment's DISPLAY,
  // and takes `window` as the target of frames. GetError tells whether that succeeded.
  X11Window(const std::string& displayName, std::uint32_t window);
  ~X11Window();
  X11Window(const X11Window&) = delete;
  X11Window& operator=(const X11Window&) = delete;

  // The handle to give to Parchlet::NewPage; null when the window could not be had.
  HWND Handle() const;

  // Why the window cannot be had or the last call failed, in words; empty after a success.
  std::string GetError() const;

  // The window's inside on the screen, asked from the X server; empty when it cannot be told.
  RECT GetScreenRect() const override;

  // Sends what changed and waits until the server has taken it.
  bool Present(const LayeredFrame& frame) override;

 private:
  struct State;
  std::unique_ptr<State> state;
};
