// PushedWindow.h - a 32-bit X11 window and what it shows of the frames pushed to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <parchlet/LayeredWindow.h>
#include <xcb/xcb.h>

#include "x11/Connection.h"
#include "x11/FramePusher.h"

// Owned by the window's adapter, whose lock it is used under; the connection outlives it.
class PushedWindow {
 public:
  // What to select on the window, in addition to what the adapter wants to hear of.
  static constexpr std::uint32_t kEvents =
      XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

  PushedWindow(const Connection& connection, xcb_window_t window);

  xcb_window_t Id() const { return window; }
  bool IsDestroyed() const { return isDestroyed; }

  // Takes note of what happened to the window.
  void Handle(const xcb_generic_event_t& event);

  // Sends what changed since the last frame shown, and what lost its content since. False with a
  // text when the window does not show the frame; the next one is sent as a whole then.
  bool Show(const LayeredFrame& frame, std::string& error);

 private:
  // Remembers an area that lost its content.
  void Note(const RECT& lost);
  std::vector<RECT> AreasToSend(const LayeredFrame& frame) const;

  xcb_window_t window;
  FramePusher pusher;
  std::vector<RECT> exposed;
  bool isDestroyed = false;
  // The size of the frame that the window shows, but for the exposed areas; 0 x 0 for none.
  int shownWidth = 0;
  int shownHeight = 0;
};

std::string NameOfWindow(xcb_window_t window);
