// Canvas.h - where a participant's pages are shown.
#pragma once

#include <memory>
#include <string>

#include <parchlet/Platform.h>
#include <xcb/xcb.h>

#include "Document.h"
#include "HostWindow.h"

namespace whiteboard {

// The window of the engine's frames. Its owner is a seat; one thread's own.
class Canvas {
 public:
  virtual ~Canvas() = default;
  // The handle to give to the engine.
  virtual HWND Handle() const = 0;
  // The X11 window that hears the pointer.
  virtual xcb_window_t Window() const = 0;
  // Shows that page's content, in that area of the host's window where there is a choice. Gives the
  // size that the page has to have.
  virtual SIZE Place(const Page& page, const RECT& area) = 0;
  // Makes the pointer reach what lies below. False, with nothing changed, where that has no sense.
  virtual bool SetClickThrough(bool clickThrough) = 0;
};

// A page inside the host's window, over its own content. Throws Failure.
std::unique_ptr<Canvas> MakeWindowCanvas(HostWindow& window);

// A page over everything on a monitor, below the host's window, which holds the tools. Throws
// Failure, for want of a compositor too.
std::unique_ptr<Canvas> MakeOverlayCanvas(XSession& session, HostWindow& tools,
                                          const std::string& monitor);

}  // namespace whiteboard
