// DropSource.h - another program that files are dragged from.
#pragma once

#include <string>

#include "x11/XClient.h"
#include "x11/XServer.h"

// Owns a client with an unseen window.
class DropSource {
 public:
  explicit DropSource(const std::string& display)
      : client(display), connection(client.Get()), window(xcb_generate_id(connection)) {
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, client.Root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  }

  // Drags that list of URIs over the top-level window under the pointer, and lets go. Whether the
  // window says that it took them.
  bool Drop(const std::string& uris) {
    const Owned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, client.Root()), nullptr));
    const xcb_window_t target = pointer->child;
    xcb_set_selection_owner(connection, window, client.Atom("XdndSelection"), XCB_CURRENT_TIME);
    Send(target, "XdndEnter", 5U << 24, client.Atom("text/uri-list"));
    Send(target, "XdndPosition", 0, 0);
    int answer = 0;  // of the last word: 1 for no, 2 for yes
    Eventually([&] {
      while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
        const int type = event->response_type & 0x7F;
        if (type == XCB_SELECTION_REQUEST) {
          Serve(*reinterpret_cast<const xcb_selection_request_event_t*>(event.get()), uris);
        } else if (type == XCB_CLIENT_MESSAGE) {
          const auto& message = *reinterpret_cast<const xcb_client_message_event_t*>(event.get());
          const bool isYes = (message.data.data32[1] & 1U) != 0;
          if (message.type == client.Atom("XdndFinished")) {
            answer = isYes ? 2 : 1;
          } else if (isYes) {  // the window's status: it would take a drop
            Send(target, "XdndDrop", 0, XCB_CURRENT_TIME);
          }
        }
      }
      return answer != 0;
    });
    return answer == 2;
  }

 private:
  void Send(xcb_window_t target, const char* type, std::uint32_t word1, std::uint32_t word2) const {
    const xcb_client_message_event_t message = {
        XCB_CLIENT_MESSAGE, 32, 0, target, client.Atom(type), {.data32 = {window, word1, word2}}};
    SendEvent(target, &message);
  }
  void SendEvent(xcb_window_t to, const void* event) const {
    xcb_send_event(connection, 0, to, XCB_EVENT_MASK_NO_EVENT, static_cast<const char*>(event));
    xcb_flush(connection);
  }

  void Serve(const xcb_selection_request_event_t& request, const std::string& uris) const {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        request.target, 8, static_cast<std::uint32_t>(uris.size()), uris.data());
    xcb_selection_notify_event_t notify = {};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = request.property;
    SendEvent(request.requestor, &notify);
  }

  XClient client;
  xcb_connection_t* connection;
  xcb_window_t window;
};
