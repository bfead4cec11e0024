// HostWindow.h - a top-level window of the whiteboard.
#pragma once

#include <cairo.h>
#include <functional>
#include <string>

#include <parchlet/Platform.h>

#include "XSession.h"

namespace whiteboard {

// Owns an ordinary window, which hears keys and pointer, and at will a page inside. One thread's
// own; the session outlives it.
class HostWindow {
 public:
  struct Looks {
    std::string title;
    RECT area;  // the window manager may place it elsewhere, and mostly does unless asked not to
    SIZE smallest;
    bool isPanel = false;  // a window of tools that stays above others
    bool insistsOnPlace = false;
  };
  HostWindow(XSession& session, const Looks& looks);
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  xcb_window_t Id() const { return window; }
  void SetTitle(const std::string& title);

  // Adds the window of 32 bits that the page is shown in. Throws Failure when there is no such
  // visual.
  xcb_window_t AddPage();
  void PlacePage(const RECT& area);

  // Paints into the window, as large as Resized said last.
  void Paint(const std::function<void(cairo_t*)>& paint);
  void Resized(int width, int height);

  // Whether the event asks for the window to be closed.
  bool IsCloseRequest(const xcb_generic_event_t& event) const;

 private:
  void SetHints(const Looks& looks);
  void SetCrosshair(xcb_window_t target);

  XSession& session;
  xcb_window_t window;
  xcb_window_t page = XCB_NONE;
  xcb_atom_t closeProtocol;
  cairo_surface_t* surface;
};

// The events that a page's window is asked for: every press, move and release.
inline constexpr std::uint32_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace whiteboard
