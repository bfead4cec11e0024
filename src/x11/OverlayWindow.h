// OverlayWindow.h - the 32-bit window of an overlay: made, placed, shaped and kept above.
#pragma once

#include <cstdint>
#include <string>

#include <parchlet/Platform.h>
#include <xcb/xcb.h>

#include "x11/Connection.h"

// Owned by the overlay, whose lock it is used under; the connection outlives it. The X server
// destroys the window with the connection.
class OverlayWindow {
 public:
  explicit OverlayWindow(const Connection& connection) : connection(connection) {}

  // Creates the window, hidden; false with a text when the display cannot have it.
  bool Create(std::string& error);

  // None before Create and when that failed.
  xcb_window_t Id() const { return window; }

  // Moves and resizes it; the area is not empty and fits X11.
  void Place(const RECT& area);
  void Show();
  void Hide();
  bool IsShown() const { return isShown; }

  // Lets the pointer through, or not; false with a text when the server cannot.
  bool SetClickThrough(bool clickThrough, std::string& error);

  // The window to stay right below, none for XCB_NONE; false with a text when there is none such.
  bool KeepBelow(xcb_window_t newTool, std::string& error);

  // Takes note of other windows that come up, or that move in the stack.
  void Handle(const xcb_generic_event_t& event);

  // Goes above the others again when one came up.
  void Restack();

 private:
  bool IsOtherOverlay(xcb_window_t other) const;
  bool HidesUs(xcb_window_t other) const;
  bool IsInPlace() const;
  void Raise();
  xcb_window_t TopLevelOf(xcb_window_t inner) const;
  void SetNames();

  const Connection& connection;
  xcb_window_t window = XCB_NONE;
  xcb_window_t tool = XCB_NONE;
  xcb_window_t toolTopLevel = XCB_NONE;  // the tool, or its frame
  bool isShown = false;
  bool isStackChanged = false;
};
