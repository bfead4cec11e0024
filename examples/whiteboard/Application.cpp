#include "Application.h"

#include <poll.h>

#include <algorithm>
#include <utility>

#include "Failure.h"

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
  SetDisplay(&display);
  AddSeat(options, "user-1", options.name, options.overlay);
  if (options.peer) {
    AddSeat(options, "user-2", *options.peer, false);
  }
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
  const int left = static_cast<int>(seats.size()) * options.width;
  order.area = {left, 0, left + options.width, options.height};
  order.overlay = overlay;
  order.monitor = options.monitor;
  order.exportFolder = options.exportFolder;
  if (overlay) {
    order.area = ToolsArea(options);
  }
  seats.push_back(std::make_unique<Seat>(session, keyboard, meeting, order));
}

RECT Application::ToolsArea(const Options& options) const {
  constexpr int kToolsWidth = 1120;
  constexpr int kFromTop = 24;
  RECT screen = {0, 0, session.Screen().width_in_pixels, session.Screen().height_in_pixels};
  for (const DisplayMonitor& monitor : display.GetMonitors()) {
    if (options.monitor.empty() || monitor.name == options.monitor) {
      screen = monitor.area;
      break;
    }
  }
  const int left = screen.left + (screen.right - screen.left - kToolsWidth) / 2;
  const int top = screen.top + kFromTop;
  return {left, top, left + kToolsWidth, top + kToolbarHeight + kStatusHeight};
}

void Application::Run() {
  for (;;) {
    for (const auto& seat : seats) {
      seat->Settle();
    }
    xcb_flush(session.Get());
    Reply<xcb_generic_event_t> event = NextEvent();
    // Everything that has come, every single move, before the windows are brought up to date.
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
    throw Failure("the connection to the X server is lost");
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
