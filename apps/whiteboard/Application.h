// Application.h - the whiteboard as a whole.
#pragma once

#include <memory>
#include <vector>

#include <parchlet/x11/X11Display.h>

#include "whiteboard/HelpWindow.h"
#include "whiteboard/Keyboard.h"
#include "whiteboard/Meeting.h"
#include "whiteboard/Options.h"
#include "whiteboard/Seat.h"
#include "whiteboard/XSession.h"

namespace whiteboard {

// Owns the windows, the participants and the meeting. One thread.
class Application {
 public:
  // Throws apps::Failure when the contents cannot be read or the windows cannot be created.
  explicit Application(const Options& options);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Handles events until a window is closed. Throws apps::Failure when the X server goes away.
  void Run();

 private:
  void AddSeat(const Options& options, const std::string& userId, const std::string& nickname,
               bool overlay);
  RECT MonitorArea(const std::string& name) const;
  RECT ToolsArea(const Options& options) const;
  RECT WindowArea(const Options& options) const;
  // Waits for the next event. Returns null when a seat needs to settle before one comes.
  Reply<xcb_generic_event_t> NextEvent();
  // Returns false when the program should end.
  bool Handle(const xcb_generic_event_t& event);

  X11Display display;  // the screen that exports capture
  XSession session;
  Keyboard keyboard;
  Meeting meeting;
  std::vector<std::unique_ptr<Seat>> seats;
  std::unique_ptr<HelpWindow> help;
};

}  // namespace whiteboard
