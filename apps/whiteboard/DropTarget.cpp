#include "whiteboard/DropTarget.h"

#include <sstream>

namespace whiteboard {

namespace {

constexpr std::uint32_t kVersion = 5;
constexpr std::size_t kActionInStatus = 4;  // the word of the message that names the action
constexpr std::size_t kActionInFinished = 2;

// One URI per line; lines that start with # are comments.
std::vector<std::string> SplitUris(const std::string& text) {
  std::vector<std::string> uris;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    if (!line.empty() && line.front() != '#') {
      uris.push_back(line);
    }
  }
  return uris;
}

}  // namespace

DropTarget::DropTarget(XSession& session, xcb_window_t window)
    : session(session),
      window(window),
      position(session.Atom("XdndPosition")),
      status(session.Atom("XdndStatus")),
      drop(session.Atom("XdndDrop")),
      finished(session.Atom("XdndFinished")),
      selection(session.Atom("XdndSelection")),
      copy(session.Atom("XdndActionCopy")),
      uriList(session.Atom("text/uri-list")),
      property(session.Atom("PARCHLET_DROP")) {
  xcb_change_property(session.Get(), XCB_PROP_MODE_REPLACE, window, session.Atom("XdndAware"),
                      XCB_ATOM_ATOM, 32, 1, &kVersion);
}

std::optional<std::vector<std::string>> DropTarget::Handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  if (type == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.window == window && message.format == 32) {
      HandleMessage(message);
    }
  } else if (type == XCB_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (notify.requestor == window && notify.selection == selection) {
      return TakeFiles(notify);
    }
  }
  return std::nullopt;
}

void DropTarget::HandleMessage(const xcb_client_message_event_t& message) {
  const std::uint32_t* words = message.data.data32;
  if (message.type == position) {
    // Accept; only the drop shows whether the drag brings files.
    source = words[0];
    Answer(status, 1, copy, kActionInStatus);
  } else if (message.type == drop) {
    source = words[0];
    xcb_convert_selection(session.Get(), window, selection, uriList, property, words[2]);
  }
}

std::vector<std::string> DropTarget::TakeFiles(const xcb_selection_notify_event_t& event) {
  constexpr std::uint32_t kMostWords = 1U << 18;
  std::vector<std::string> uris;
  if (event.property != XCB_ATOM_NONE) {
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(session.Get(),
                               xcb_get_property(session.Get(), 1, window, event.property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords),
                               nullptr));
    if (reply != nullptr && reply->format == 8) {
      const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
      uris =
          SplitUris({text, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
    }
  }
  const bool isTaken = !uris.empty();
  Answer(finished, isTaken ? 1 : 0, isTaken ? copy : static_cast<xcb_atom_t>(XCB_ATOM_NONE),
         kActionInFinished);
  source = XCB_NONE;
  return uris;
}

void DropTarget::Answer(xcb_atom_t type, std::uint32_t flags, xcb_atom_t action,
                        std::size_t actionAt) {
  if (source == XCB_NONE) {
    return;
  }
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = source;
  message.type = type;
  message.data.data32[0] = window;
  message.data.data32[1] = flags;
  message.data.data32[actionAt] = action;
  xcb_send_event(session.Get(), 0, source, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
}

}  // namespace whiteboard
