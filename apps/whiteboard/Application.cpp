#include "whiteboard/Application.h"

#include <poll.h>

#include <algorithm>
#include <utility>

#include "common/Input.h"

namespace whiteboard {

namespace {

std::vector<Document> FirstDocuments(const Options& options) {
  std::vector<Document> documents = OpenContents(options.contents);
  if (documents.empty()) {
    documents.push_back(BlankDocument(1));
  }
  return documents;
}

}  // namespace

Application::Application(const Options& options)
    : display(""), keyboard(session.Get()), meeting(FirstDocuments(options)) {
  AddSeat(options, "user-1", options.name, options.overlay);
  if (options.peer) {
    AddSeat(options, "user-2", *options.peer, false);
  }
  SetDisplay(&display);  // last: the destructor, which takes it back, runs for a whole object alone
}

Application::~Application() {
  seats.clear();
  SetDisplay(nullptr);
}

void Application::AddSeat(const Options& options, const std::string& userId,
                          const std::string& nickname, bool overlay) {
  Seat::Order order;
  order.userId = userId;
  order.nickname = nickname;
  order.area = overlay ? ToolsArea(options) : WindowArea(options);
  order.overlay = overlay;
  order.hasNeighbour = options.peer.has_value();
  order.monitor = options.monitor;
  order.exportFolder = options.exportFolder;
  seats.push_back(std::make_unique<Seat>(session, keyboard, meeting, order));
}

RECT Application::MonitorArea(const std::string& name) const {
  for (const DisplayMonitor& monitor : display.GetMonitors()) {
    if (name.empty() || monitor.name == name) {
      return monitor.area;
    }
  }
  return {0, 0, session.Screen().width_in_pixels, session.Screen().height_in_pixels};
}

RECT Application::ToolsArea(const Options& options) const {
  constexpr int kToolsWidth = 1120;
  constexpr int kFromTop = 24;
  const RECT screen = MonitorArea(options.monitor);
  const int left = screen.left + (screen.right - screen.left - kToolsWidth) / 2;
  const int top = screen.top + kFromTop;
  return {left, top, left + kToolsWidth, top + kToolbarHeight + kStatusHeight};
}

// Returns the area of the next seat: beside the first one, or below it when the screen is too
// narrow for both.
RECT Application::WindowArea(const Options& options) const {
  constexpr int kFrame = 40;  // what a window manager may put around a window
  const RECT screen = MonitorArea("");
  const bool isSecond = !seats.empty();
  int left = screen.left;
  int top = screen.top;
  int height = options.height;
  if (2 * options.width <= screen.right - screen.left) {
    left += isSecond ? options.width : 0;
  } else if (options.peer && !options.overlay) {
    const int half = (screen.bottom - screen.top) / 2;
    height = std::min(height, std::max(half - kFrame, kSmallestHeight));
    top += isSecond ? half : 0;
  }
  return {left, top, left + options.width, top + height};
}

void Application::Run() {
  for (;;) {
    for (const auto& seat : seats) {
      seat->Settle();
    }
    xcb_flush(session.Get());
    Reply<xcb_generic_event_t> event = NextEvent();
    // Handle all waiting events, every single move, before the windows are brought up to date.
    for (; event != nullptr; event.reset(xcb_poll_for_event(session.Get()))) {
      if (!Handle(*event)) {
        return;
      }
    }
  }
}

Reply<xcb_generic_event_t> Application::NextEvent() {
  xcb_connection_t* connection = session.Get();
  Reply<xcb_generic_event_t> event;
  if (std::any_of(seats.begin(), seats.end(),
                  [](const auto& seat) { return seat->IsUnsettled(); })) {
    event.reset(xcb_poll_for_event(connection));
    pollfd server = {xcb_get_file_descriptor(connection), POLLIN, 0};
    if (event == nullptr && poll(&server, 1, kBetweenShows.count()) == 1) {
      event.reset(xcb_poll_for_event(connection));
    }
  } else {
    event.reset(xcb_wait_for_event(connection));
  }
  if (event == nullptr && xcb_connection_has_error(connection) != 0) {
    throw apps::Failure("the connection to the X server is lost");
  }
  return event;
}

bool Application::Handle(const xcb_generic_event_t& event) {
  if (keyboard.Handle(event)) {
    return true;
  }
  if (help != nullptr && !help->Handle(event)) {
    help.reset();
    return true;
  }
  for (const auto& seat : seats) {
    switch (seat->Handle(event)) {
      case Seat::Wish::kQuit:
        return false;
      case Seat::Wish::kHelp:
        help = help == nullptr ? std::make_unique<HelpWindow>(session) : nullptr;
        break;
      case Seat::Wish::kNothing:
        break;
    }
  }
  return true;
}

}  // namespace whiteboard
