// HelpWindow.h - the list of keys in a window of its own.
#pragma once

#include "HostWindow.h"

namespace whiteboard {

// Owns the window. One thread's own.
class HelpWindow {
 public:
  explicit HelpWindow(XSession& session);

  // False when the event closes the help.
  bool Handle(const xcb_generic_event_t& event);

 private:
  void Paint();

  HostWindow window;
};

}  // namespace whiteboard
