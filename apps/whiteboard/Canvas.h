// Canvas.h - where a participant's pages are shown.
#pragma once

#include <memory>
#include <string>

#include <parchlet/Platform.h>
#include <xcb/xcb.h>

#include "whiteboard/Document.h"
#include "whiteboard/HostWindow.h"

namespace whiteboard {

// The window that the engine's frames go to. Owned by a seat; one thread.
class Canvas {
 public:
  virtual ~Canvas() = default;
  // The handle to give to the engine.
  virtual HWND Handle() const = 0;
  // The X11 window that receives pointer events.
  virtual xcb_window_t Window() const = 0;
  // Shows the page's content in `area` of the host's window; an overlay ignores both. Returns the
  // size that the page must have.
  virtual SIZE Place(const Page& page, const RECT& area) = 0;
  // Lets the pointer through to what lies below. Returns false, and changes nothing, for a window
  // that cannot.
  virtual bool SetClickThrough(bool clickThrough) = 0;
};

// Makes a canvas inside the host's window, over the page's own content. Throws apps::Failure.
std::unique_ptr<Canvas> MakeWindowCanvas(HostWindow& window);

// Makes a canvas over everything on a monitor, below the tools' window. Throws apps::Failure, also
// when no compositor runs.
std::unique_ptr<Canvas> MakeOverlayCanvas(XSession& session, HostWindow& tools,
                                          const std::string& monitor);

}  // namespace whiteboard
