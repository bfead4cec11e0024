// PushedWindow.h - a 32-bit X11 window and what it shows of the frames pushed to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <parchlet/LayeredWindow.h>
#include <xcb/xcb.h>

#include "x11/Connection.h"
#include "x11/FramePusher.h"

// Owned by the window's adapter and used under its lock; the connection outlives it.
class PushedWindow {
 public:
  // The events to select on the window, besides those that the adapter needs.
  static constexpr std::uint32_t kEvents =
      XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

  PushedWindow(const Connection& connection, xcb_window_t window);

  xcb_window_t Id() const { return window; }
  bool IsDestroyed() const { return isDestroyed; }

  // Notes what happened to the window.
  void Handle(const xcb_generic_event_t& event);

  // Sends what changed since the last frame, and what the window lost since. Returns false, and a
  // text, if the window does not show the frame; the next frame is then sent whole.
  bool Show(const LayeredFrame& frame, std::string& error);

 private:
  // Remembers an area that lost its content.
  void Note(const RECT& lost);
  std::vector<RECT> AreasToSend(const LayeredFrame& frame) const;

  xcb_window_t window;
  FramePusher pusher;
  std::vector<RECT> exposed;
  bool isDestroyed = false;
  // The size of the frame that the window shows, except in the exposed areas; 0 x 0 for none.
  int shownWidth = 0;
  int shownHeight = 0;
};

std::string NameOfWindow(xcb_window_t window);
