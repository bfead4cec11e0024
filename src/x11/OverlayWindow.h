// OverlayWindow.h - the 32-bit window of an overlay: made, placed, shaped and kept above.
#pragma once

#include <cstdint>
#include <string>

#include <parchlet/Platform.h>
#include <xcb/xcb.h>

#include "x11/Connection.h"

// Owned by the overlay and used under its lock; the connection outlives it. The X server destroys
// the window when the connection closes.
class OverlayWindow {
 public:
  explicit OverlayWindow(const Connection& connection) : connection(connection) {}

  // Creates the window, hidden. Returns false, and a text, on failure.
  bool Create(std::string& error);

  // XCB_NONE before Create and if that failed.
  xcb_window_t Id() const { return window; }

  // Moves and resizes it; the area is not empty and fits X11.
  void Place(const RECT& area);
  void Show();
  void Hide();
  bool IsShown() const { return isShown; }

  // Lets the pointer through, or not. Returns false, and a text, if the server cannot.
  bool SetClickThrough(bool clickThrough, std::string& error);

  // Sets the window to stay right below; XCB_NONE for none. Returns false, and a text, if it does
  // not exist.
  bool KeepBelow(xcb_window_t newTool, std::string& error);

  // Notes other windows that appear, or that move in the stack.
  void Handle(const xcb_generic_event_t& event);

  // Raises the window again if another one came up.
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
