#include "whiteboard/DropSource.h"

#include "x11/XServer.h"

DropSource::DropSource(const std::string& display)
    : client(display), connection(client.Get()), window(xcb_generate_id(connection)) {
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, client.Root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

bool DropSource::Drop(const std::string& uris) {
  const xcb_window_t target = FindTarget();
  xcb_set_selection_owner(connection, window, client.Atom("XdndSelection"), XCB_CURRENT_TIME);
  Send(target, "XdndEnter", 5U << 24, client.Atom("text/uri-list"));
  Send(target, "XdndPosition", 0, 0);
  bool isAccepted = false;
  bool isTaken = false;
  const xcb_atom_t finished = client.Atom("XdndFinished");
  const xcb_atom_t status = client.Atom("XdndStatus");
  Eventually([&] {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
      const int type = event->response_type & 0x7F;
      if (type == XCB_SELECTION_REQUEST) {
        Serve(*reinterpret_cast<const xcb_selection_request_event_t*>(event.get()), uris);
      } else if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = *reinterpret_cast<const xcb_client_message_event_t*>(event.get());
        if (message.type == finished) {
          isTaken = isAccepted && (message.data.data32[1] & 1U) != 0;
          return true;
        }
        if (message.type == status && (message.data.data32[1] & 1U) != 0) {
          isAccepted = true;
          Send(target, "XdndDrop", 0, XCB_CURRENT_TIME);
        }
      }
    }
    return false;
  });
  return isTaken;
}

xcb_window_t DropSource::FindTarget() const {
  const Owned<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(connection, xcb_query_tree(connection, client.Root()), nullptr));
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    const Owned<xcb_get_property_reply_t> aware(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, children[i], client.Atom("XdndAware"), XCB_ATOM_ATOM, 0, 1),
        nullptr));
    if (aware != nullptr && aware->type != XCB_ATOM_NONE) {
      return children[i];
    }
  }
  return XCB_NONE;
}

void DropSource::Send(xcb_window_t target, const char* type, std::uint32_t word1,
                      std::uint32_t word2) const {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = target;
  message.type = client.Atom(type);
  message.data.data32[0] = window;
  message.data.data32[1] = word1;
  message.data.data32[2] = word2;
  xcb_send_event(connection, 0, target, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(connection);
}

void DropSource::Serve(const xcb_selection_request_event_t& request,
                       const std::string& uris) const {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                      request.target, 8, static_cast<std::uint32_t>(uris.size()), uris.data());
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = request.property;
  xcb_send_event(connection, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&notify));
  xcb_flush(connection);
}
