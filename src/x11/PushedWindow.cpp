#include "x11/PushedWindow.h"

#include <iomanip>
#include <sstream>

#include "x11/Area.h"
#include "x11/Events.h"

namespace {

// Past this many exposed areas the whole window is sent: each costs a request.
constexpr std::size_t kMaxExposed = 64;

}  // namespace

PushedWindow::PushedWindow(const Connection& connection, xcb_window_t window)
    : window(window), pusher(connection, window) {}

void PushedWindow::Handle(const xcb_generic_event_t& event) {
  if (const auto* expose = EventAs<xcb_expose_event_t>(event, XCB_EXPOSE)) {
    if (expose->window == window) {
      Note({expose->x, expose->y, expose->x + expose->width, expose->y + expose->height});
    }
  } else if (const auto* gone = EventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
    isDestroyed = isDestroyed || gone->window == window;
  }
}

void PushedWindow::Note(const RECT& lost) {
  if (exposed.size() < kMaxExposed) {
    exposed.push_back(lost);
  } else {
    shownWidth = 0;
    shownHeight = 0;
  }
}

bool PushedWindow::Show(const LayeredFrame& frame, std::string& error) {
  if (isDestroyed) {
    error = NameOfWindow(window) + " was destroyed";
    return false;
  }
  if (!FitsX11({0, 0, frame.width, frame.height})) {
    error = "the frame is larger than any X11 window";
    return false;
  }
  const bool isShown = pusher.Push(frame, AreasToSend(frame), error);
  exposed.clear();
  shownWidth = isShown ? frame.width : 0;
  shownHeight = isShown ? frame.height : 0;
  return isShown;
}

std::vector<RECT> PushedWindow::AreasToSend(const LayeredFrame& frame) const {
  const RECT whole = {0, 0, frame.width, frame.height};
  if (IsEmptyArea(whole)) {
    return {};
  }
  if (frame.width != shownWidth || frame.height != shownHeight) {
    return {whole};
  }
  std::vector<RECT> areas;
  std::size_t pixels = 0;
  const auto add = [&](const RECT& area) {
    const RECT inside = Intersect(area, whole);
    if (!IsEmptyArea(inside)) {
      areas.push_back(inside);
      pixels += PixelsOf(inside);
    }
  };
  for (std::size_t i = 0; i < frame.changedCount; ++i) {
    add(frame.changed[i]);
  }
  for (const RECT& area : exposed) {
    add(area);
  }
  return pixels < PixelsOf(whole) ? areas : std::vector{whole};
}

std::string NameOfWindow(xcb_window_t window) {
  std::ostringstream name;
  name << "the window 0x" << std::hex << window;
  return name.str();
}
