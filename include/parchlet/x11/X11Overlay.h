// X11Overlay.h - a layered window of its own over everything on an X11 screen.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <parchlet/LayeredWindow.h>
#include <parchlet/Platform.h>

// A 32-bit window above all others, which this object creates, moves and destroys. It appears with
// its first frame. A compositor is needed to blend it over the desktop: see IsBlended.
//
// The window is hidden from the window manager (override-redirect). So it needs none, it has the
// exact place asked for, and it stays above full-screen windows, which windows "kept above" do not.
// It never gets the keyboard focus by itself. Each frame raises it over windows that came up since,
// except other overlays and the window of KeepBelow.
//
// Each frame also follows a monitor that moved, changed its mode or went away. While there is
// nothing to cover, the window is hidden and its rectangle is empty.
//
// Failure, frames and threads are as with X11Window.
class PARCHLET_API X11Overlay final : public LayeredWindow {
 public:
  // Creates the window on `displayName`; an empty name stands for the environment's DISPLAY. If
  // `screenRect` is empty, nothing is shown until SetScreenRect or FollowMonitor. GetError returns
  // an empty text if that succeeded.
  X11Overlay(const std::string& displayName, const RECT& screenRect);
  ~X11Overlay();
  X11Overlay(const X11Overlay&) = delete;
  X11Overlay& operator=(const X11Overlay&) = delete;

  // Returns the handle for Parchlet::NewPage; null if the constructor failed.
  HWND Handle() const;

  // Returns the X11 window, for a host that selects its pointer events on a connection of its own;
  // the host must not move or destroy it. 0 if the constructor failed.
  std::uint32_t WindowId() const;

  // Returns why the constructor or the last call failed, in words; empty after a success.
  std::string GetError() const;

  // Moves and resizes the window and stops following a monitor. Returns false, and changes nothing,
  // for a rectangle that no X11 window can have.
  bool SetScreenRect(const RECT& screenRect);

  // Covers the monitor of that name (see X11Display::GetMonitors), wherever it goes; an empty name
  // stands for the main monitor. Returns false if there is no such monitor now; the window then
  // keeps its place.
  bool FollowMonitor(const std::string& name);

  // Chooses whether pointer events go to what lies below the window (true) or to the window (false,
  // as at first). Returns false if the X server cannot do that.
  bool SetClickThrough(bool clickThrough);

  // Keeps the overlay right below `window`, a toolbar of the host, and raises both together; 0 ends
  // that. Returns false if there is no such window.
  bool KeepBelow(std::uint32_t window);

  // Returns whether a compositor blends the window over what lies below. Without one, transparent
  // pixels are black.
  bool IsBlended() const;

  // Returns the rectangle that the window covers; empty while it is hidden because its monitor is
  // gone.
  RECT GetScreenRect() const override;

  // Sends what changed and waits until the server has it.
  bool Present(const LayeredFrame& frame) override;

 private:
  struct State;
  std::unique_ptr<State> state;
};
