// HostWindow.h - a top-level window of the whiteboard.
#pragma once

#include <cairo.h>
#include <functional>
#include <string>

#include <parchlet/Platform.h>

#include "whiteboard/XSession.h"

namespace whiteboard {

// Owns an ordinary window, which receives keys and pointer events, and optionally a page inside it.
// One thread; the session outlives it.
class HostWindow {
 public:
  struct Looks {
    std::string title;
    RECT area;  // a window manager may place it elsewhere unless `insistsOnPlace`
    SIZE smallest;
    bool isPanel = false;  // stays above other windows
    bool insistsOnPlace = false;
  };
  HostWindow(XSession& session, const Looks& looks);
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  xcb_window_t Id() const { return window; }
  void SetTitle(const std::string& title);

  // Adds the 32-bit window for the page. Throws apps::Failure when the server has no such visual.
  xcb_window_t AddPage();
  void PlacePage(const RECT& area);

  // Paints the window; Resized sets the size.
  void Paint(const std::function<void(cairo_t*)>& paint);
  void Resized(int width, int height);

  // Returns whether the event asks to close the window.
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

// The events that a page's window selects: every press, move and release.
inline constexpr std::uint32_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace whiteboard
