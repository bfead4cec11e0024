// HelpWindow.h - the list of keys in a window of its own.
#pragma once

#include "whiteboard/HostWindow.h"

namespace whiteboard {

// Owns the window. One thread.
class HelpWindow {
 public:
  explicit HelpWindow(XSession& session);

  // Returns false when the event closes the help.
  bool Handle(const xcb_generic_event_t& event);

 private:
  void Paint();

  HostWindow window;
};

}  // namespace whiteboard
