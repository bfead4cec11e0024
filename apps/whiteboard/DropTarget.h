// DropTarget.h - files dropped on a window from another program.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "whiteboard/XSession.h"

namespace whiteboard {

// Lets a window accept files that are dragged onto it, by the protocol XDND 5. The session outlives
// it. One thread.
class DropTarget {
 public:
  DropTarget(XSession& session, xcb_window_t window);

  // Answers the event if it belongs to a drag. When a drop is complete, returns the URIs of what
  // was dropped; an empty list when the source sent nothing.
  std::optional<std::vector<std::string>> Handle(const xcb_generic_event_t& event);

 private:
  void HandleMessage(const xcb_client_message_event_t& message);
  std::vector<std::string> TakeFiles(const xcb_selection_notify_event_t& event);
  void Answer(xcb_atom_t type, std::uint32_t flags, xcb_atom_t action, std::size_t actionAt);

  XSession& session;
  xcb_window_t window;
  xcb_window_t source = XCB_NONE;  // of the current drag
  xcb_atom_t position;
  xcb_atom_t status;
  xcb_atom_t drop;
  xcb_atom_t finished;
  xcb_atom_t selection;
  xcb_atom_t copy;
  xcb_atom_t uriList;
  xcb_atom_t property;
};

}  // namespace whiteboard
