// Application.h - the whiteboard as a whole.
#pragma once

#include <memory>
#include <vector>

#include <parchlet/x11/X11Display.h>

#include "HelpWindow.h"
#include "Keyboard.h"
#include "Meeting.h"
#include "Options.h"
#include "Seat.h"
#include "XSession.h"

namespace whiteboard {

// Owns the windows, the participants and what they have in common. One thread's own.
class Application {
 public:
  // Throws Failure when the contents or the windows cannot be had.
  explicit Application(const Options& options);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Serves the person until a window is closed. Throws Failure when the X server goes away.
  void Run();

 private:
  void AddSeat(const Options& options, const std::string& userId, const std::string& nickname,
               bool overlay);
  RECT MonitorArea(const std::string& name) const;
  RECT ToolsArea(const Options& options) const;
  RECT WindowArea(const Options& options) const;
  // Waits for an event; gives none when the seats want to settle before one comes.
  Reply<xcb_generic_event_t> NextEvent();
  // False when it is time to go.
  bool Handle(const xcb_generic_event_t& event);

  X11Display display;  // the screen that exports capture
  XSession session;
  Keyboard keyboard;
  Meeting meeting;
  std::vector<std::unique_ptr<Seat>> seats;
  std::unique_ptr<HelpWindow> help;
};

}  // namespace whiteboard
