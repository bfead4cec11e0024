#include <parchlet/x11/X11Window.h>

#include <optional>
#include <utility>

#include "platform/threads/Mutex.h"

#include "x11/Area.h"
#include "x11/Connection.h"
#include "x11/PixelFormat.h"
#include "x11/PushedWindow.h"
#include "x11/QuietPipe.h"

namespace {

constexpr std::uint8_t kDepth = 32;

// Returns whether the window can show frames as they are; if not, sets the text.
bool CheckWindow(const Connection& connection, xcb_window_t window, std::string& error) {
  if (!connection.CheckAlive(error)) {
    return false;
  }
  const auto attributesAsked = xcb_get_window_attributes(connection.Get(), window);
  const auto geometryAsked = xcb_get_geometry(connection.Get(), window);
  Refusal refusal;
  const Reply<xcb_get_window_attributes_reply_t> attributes(
      xcb_get_window_attributes_reply(connection.Get(), attributesAsked, refusal.Receive()));
  const Reply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection.Get(), geometryAsked, nullptr));
  if (attributes == nullptr || geometry == nullptr) {
    error = connection.Describe("tell of " + NameOfWindow(window), refusal.Get());
    return false;
  }
  if (geometry->depth != kDepth || !HasPlainColors(*connection.Screen(), attributes->visual)) {
    error = NameOfWindow(window) + " has depth " + std::to_string(geometry->depth) +
            ", or other colours, instead of 32 bits of 0xAARRGGBB";
    return false;
  }
  return CheckImageFormat(connection, kDepth, error);
}

}  // namespace

struct X11Window::State {
  State(const std::string& displayName, xcb_window_t window) : connection(displayName) {
    MutexLock lock(mutex);
    if (!CheckWindow(connection, window, error)) {
      return;
    }
    const std::uint32_t events = PushedWindow::kEvents;
    if (connection.Check(xcb_change_window_attributes_checked(connection.Get(), window,
                                                              XCB_CW_EVENT_MASK, &events),
                         "watch " + NameOfWindow(window), error)) {
      pushed.emplace(connection, window);
    }
  }

  RECT QueryScreenRect() PARCHLET_REQUIRES(mutex);
  bool CheckUsable() PARCHLET_REQUIRES(mutex);

  HWND handle = nullptr;  // set once, before the object is shared
  Mutex mutex;
  const Connection connection PARCHLET_GUARDED_BY(mutex);
  std::optional<PushedWindow> pushed PARCHLET_GUARDED_BY(mutex);  // none: error says why
  std::string error PARCHLET_GUARDED_BY(mutex);
};

bool X11Window::State::CheckUsable() {
  if (!pushed) {
    return false;
  }
  while (const auto event = connection.PollEvent()) {
    pushed->Handle(*event);
  }
  if (pushed->IsDestroyed()) {
    error = NameOfWindow(pushed->Id()) + " was destroyed";
    return false;
  }
  return connection.CheckAlive(error);
}

RECT X11Window::State::QueryScreenRect() {
  const auto geometryAsked = xcb_get_geometry(connection.Get(), pushed->Id());
  const auto placeAsked =
      xcb_translate_coordinates(connection.Get(), pushed->Id(), connection.Screen()->root, 0, 0);
  Refusal refusal;
  const Reply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection.Get(), geometryAsked, refusal.Receive()));
  const Reply<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(connection.Get(), placeAsked, nullptr));
  if (geometry == nullptr || place == nullptr) {
    error = connection.Describe("tell where " + NameOfWindow(pushed->Id()) + " is", refusal.Get());
    return {};
  }
  error.clear();
  return {place->dst_x, place->dst_y, place->dst_x + geometry->width,
          place->dst_y + geometry->height};
}

X11Window::X11Window(const std::string& displayName, std::uint32_t window) {
  const QuietPipe quiet;
  state = std::make_unique<State>(displayName, window);
  MutexLock lock(state->mutex);
  if (state->pushed) {
    state->handle = RegisterLayeredWindow(*this);
  }
}

X11Window::~X11Window() {
  UnregisterLayeredWindow(state->handle);
  const QuietPipe quiet;
  state.reset();
}

HWND X11Window::Handle() const {
  return state->handle;
}

std::string X11Window::GetError() const {
  MutexLock lock(state->mutex);
  return state->error;
}

RECT X11Window::GetScreenRect() const {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  return state->CheckUsable() ? state->QueryScreenRect() : RECT{};
}

bool X11Window::Present(const LayeredFrame& frame) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  if (!state->CheckUsable() || !state->pushed->Show(frame, state->error)) {
    return false;
  }
  state->error.clear();
  return true;
}
