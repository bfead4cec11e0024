// X11Overlay.h - a layered window of its own over everything on an X11 screen.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <parchlet/LayeredWindow.h>
#include <parchlet/Platform.h>

// A 32-bit window above the others that this object creates, moves and destroys. It shows itself
// with its first frame. Blending it over the desktop takes a compositor: see IsBlended.
//
// The window goes past the window manager (override-redirect): that works without one, and with one
// it keeps the exact place asked for and stays above full-screen windows, which windows "kept
// above" do not. In return it never gets the keyboard focus by itself, and raising it over windows
// that come up later is done here, with the next frame, but not over other overlays, and not over
// the window of KeepBelow.
//
// Monitors that move, change their mode or go away are followed with the next frame as well. While
// there is nothing to cover the window is hidden and its rectangle empty.
//
// Failure, frames and threads are as with X11Window.
class PARCHLET_API X11Overlay final : public LayeredWindow {
 public:
  // Creates the window on `displayName`, or for an empty name on that in the environment's DISPLAY.
  // `screenRect` may be empty: nothing is shown then until SetScreenRect or FollowMonitor. GetError
  // tells whether that succeeded.
  X11Overlay(const std::string& displayName, const RECT& screenRect);
  ~X11Overlay();
  X11Overlay(const X11Overlay&) = delete;
  X11Overlay& operator=(const X11Overlay&) = delete;

  // The handle to give to Parchlet::NewPage; null when the window could not be had.
  HWND Handle() const;

  // The X11 window, for a host that wants its pointer events: it selects them on a connection of
  // its own, and must not destroy or move the window. 0 when it could not be had.
  std::uint32_t WindowId() const;

  // Why the window cannot be had or the last call failed, in words; empty after a success.
  std::string GetError() const;

  // Moves and resizes the window, and ends following a monitor. False for a rectangle that no X11
  // window can have; nothing changes then.
  bool SetScreenRect(const RECT& screenRect);

  // Covers the monitor of that name, as X11Display tells it, wherever it goes; the main monitor for
  // an empty name. False when there is none now; the window then keeps its place.
  bool FollowMonitor(const std::string& name);

  // Makes the pointer reach what lies below the window, or the window again. It starts off. False
  // when the X server cannot do it.
  bool SetClickThrough(bool clickThrough);

  // Keeps the window right below `window`, a toolbar of the host, which is raised with it; 0 ends
  // that. False when there is no such window.
  bool KeepBelow(std::uint32_t window);

  // Whether a compositor is there to blend the window over what lies below. Without one it hides
  // that: transparent pixels show black.
  bool IsBlended() const;

  // The rectangle that the window covers; empty while it is hidden for want of its monitor.
  RECT GetScreenRect() const override;

  // Sends what changed and waits until the server has taken it.
  bool Present(const LayeredFrame& frame) override;

 private:
  struct State;
  std::unique_ptr<State> state;
};
