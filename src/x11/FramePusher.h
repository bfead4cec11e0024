// FramePusher.h - sends rectangles of frames to an X11 window.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/LayeredWindow.h>
#include <xcb/xcb.h>

#include "x11/Connection.h"
#include "x11/SharedImage.h"

// Owned by the window's adapter and used under its lock; the connection outlives it. Images go
// through shared memory, or through the connection if there is none.
class FramePusher {
 public:
  FramePusher(const Connection& connection, xcb_window_t window);
  ~FramePusher();
  FramePusher(const FramePusher&) = delete;
  FramePusher& operator=(const FramePusher&) = delete;

  // Sends the areas, which lie within the frame, and waits until the server has them; it does not
  // need the frame afterwards. Returns false, and a text, if any of them failed.
  bool Push(const LayeredFrame& frame, const std::vector<RECT>& areas, std::string& error);

 private:
  bool PrepareSharedImage(std::size_t pixelCount);
  void PushShared(const LayeredFrame& frame, const std::vector<RECT>& areas);
  void PushThroughConnection(const LayeredFrame& frame, const RECT& area);
  bool WaitForAll(std::string& error);

  const Connection& connection;
  xcb_window_t window;
  xcb_gcontext_t context;
  bool canShare;
  std::unique_ptr<SharedImage> shared;
  std::vector<std::uint32_t> rows;          // of one request through the connection
  std::vector<xcb_void_cookie_t> underWay;  // requests of the present push
};
