#include <parchlet/x11/X11Overlay.h>

#include <optional>
#include <utility>

#include "platform/threads/Mutex.h"

#include "x11/Area.h"
#include "x11/Connection.h"
#include "x11/Events.h"
#include "x11/Monitors.h"
#include "x11/OverlayWindow.h"
#include "x11/PushedWindow.h"
#include "x11/QuietPipe.h"

struct X11Overlay::State {
  explicit State(const std::string& displayName) : connection(displayName), window(connection) {
    MutexLock lock(mutex);
    if (window.Create(error)) {
      pushed.emplace(connection, window.Id());
      WatchRoot();
    }
  }

  void WatchRoot() PARCHLET_REQUIRES(mutex);
  bool CheckUsable() PARCHLET_REQUIRES(mutex);
  void Handle(const xcb_generic_event_t& event) PARCHLET_REQUIRES(mutex);
  bool Cover(const RECT& newArea) PARCHLET_REQUIRES(mutex);
  bool CoverMonitor() PARCHLET_REQUIRES(mutex);
  bool Present(const LayeredFrame& frame) PARCHLET_REQUIRES(mutex);

  HWND handle = nullptr;  // set once, before the object is shared
  Mutex mutex;
  const Connection connection PARCHLET_GUARDED_BY(mutex);
  OverlayWindow window PARCHLET_GUARDED_BY(mutex);
  std::optional<PushedWindow> pushed PARCHLET_GUARDED_BY(mutex);  // none: error says why
  RECT area PARCHLET_GUARDED_BY(mutex) = {};
  std::optional<std::string> monitor PARCHLET_GUARDED_BY(mutex);  // the one that is followed
  unsigned firstMonitorEvent PARCHLET_GUARDED_BY(mutex) = 0;
  bool areMonitorsChanged PARCHLET_GUARDED_BY(mutex) = false;
  std::string error PARCHLET_GUARDED_BY(mutex);
};

void X11Overlay::State::WatchRoot() {
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection.Get(), connection.Screen()->root, XCB_CW_EVENT_MASK,
                               &events);
  firstMonitorEvent = WatchMonitors(connection);
}

// Handles the events that arrived. Returns false, and a text, if the window is gone.
bool X11Overlay::State::CheckUsable() {
  if (!pushed) {
    return false;
  }
  while (const auto event = connection.PollEvent()) {
    Handle(*event);
  }
  if (pushed->IsDestroyed()) {
    error = NameOfWindow(pushed->Id()) + " was destroyed";
    return false;
  }
  if (std::exchange(areMonitorsChanged, false) && monitor) {
    CoverMonitor();
  }
  window.Restack();
  return connection.CheckAlive(error);
}

void X11Overlay::State::Handle(const xcb_generic_event_t& event) {
  pushed->Handle(event);
  window.Handle(event);
  const unsigned number = EventNumber(event);
  const bool isMonitorEvent =
      firstMonitorEvent != 0 && number >= firstMonitorEvent && number <= firstMonitorEvent + 1;
  const auto* configured = EventAs<xcb_configure_notify_event_t>(event, XCB_CONFIGURE_NOTIFY);
  const bool isRootEvent = configured != nullptr && configured->window == connection.Screen()->root;
  areMonitorsChanged = areMonitorsChanged || isMonitorEvent || isRootEvent;
}

bool X11Overlay::State::Cover(const RECT& newArea) {
  if (IsEmptyArea(newArea)) {
    area = {};
    window.Hide();
    return true;
  }
  if (!FitsX11(newArea)) {
    error = "no X11 window can cover that rectangle";
    return false;
  }
  area = newArea;
  window.Place(area);
  return true;
}

bool X11Overlay::State::CoverMonitor() {
  const std::optional<DisplayMonitor> found = FindMonitor(connection, *monitor, error);
  Cover(found ? found->area : RECT{});
  return found.has_value();
}

bool X11Overlay::State::Present(const LayeredFrame& frame) {
  if (IsEmptyArea(area)) {
    if (error.empty()) {
      error = "there is nothing to cover";
    }
    return false;
  }
  // Before the frame: a hidden window loses what is sent to it.
  window.Show();
  if (!pushed->Show(frame, error)) {
    return false;
  }
  error.clear();
  return true;
}

X11Overlay::X11Overlay(const std::string& displayName, const RECT& screenRect) {
  const QuietPipe quiet;
  state = std::make_unique<State>(displayName);
  MutexLock lock(state->mutex);
  if (state->pushed && state->Cover(screenRect)) {
    state->handle = RegisterLayeredWindow(*this);
  }
}

X11Overlay::~X11Overlay() {
  UnregisterLayeredWindow(state->handle);
  const QuietPipe quiet;
  state.reset();
}

HWND X11Overlay::Handle() const {
  return state->handle;
}

std::uint32_t X11Overlay::WindowId() const {
  MutexLock lock(state->mutex);
  return state->window.Id();
}

std::string X11Overlay::GetError() const {
  MutexLock lock(state->mutex);
  return state->error;
}

bool X11Overlay::SetScreenRect(const RECT& screenRect) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  if (!state->CheckUsable() || !state->Cover(screenRect)) {
    return false;
  }
  state->monitor.reset();
  state->error.clear();
  return true;
}

bool X11Overlay::FollowMonitor(const std::string& name) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  if (!state->CheckUsable()) {
    return false;
  }
  const std::optional<DisplayMonitor> found = FindMonitor(state->connection, name, state->error);
  if (!found || !state->Cover(found->area)) {
    return false;
  }
  state->monitor = name;
  state->error.clear();
  return true;
}

bool X11Overlay::SetClickThrough(bool clickThrough) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  if (!state->CheckUsable() || !state->window.SetClickThrough(clickThrough, state->error)) {
    return false;
  }
  state->error.clear();
  return true;
}

bool X11Overlay::KeepBelow(std::uint32_t window) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  if (!state->CheckUsable() || !state->window.KeepBelow(window, state->error)) {
    return false;
  }
  state->error.clear();
  return true;
}

bool X11Overlay::IsBlended() const {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  std::string ignored;
  const Connection& connection = state->connection;
  if (!connection.CheckAlive(ignored)) {
    return false;
  }
  // Only a compositor owns this selection.
  const xcb_atom_t selection =
      connection.Atom("_NET_WM_CM_S" + std::to_string(connection.ScreenNumber()), false);
  const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection.Get(), xcb_get_selection_owner(connection.Get(), selection), nullptr));
  return reply != nullptr && reply->owner != XCB_NONE;
}

RECT X11Overlay::GetScreenRect() const {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  return state->CheckUsable() ? state->area : RECT{};
}

bool X11Overlay::Present(const LayeredFrame& frame) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  return state->CheckUsable() && state->Present(frame);
}
