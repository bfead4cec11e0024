// DropSource.h - another program that files are dragged from.
#pragma once

#include <string>

#include "x11/XClient.h"

// Owns a client with an unseen window.
class DropSource {
 public:
  explicit DropSource(const std::string& display);

  // Drags that list of URIs over the window that takes drops, and lets go. Whether the window says
  // that it took them.
  bool Drop(const std::string& uris);

 private:
  xcb_window_t FindTarget() const;
  void Send(xcb_window_t target, const char* type, std::uint32_t word1, std::uint32_t word2) const;
  void Serve(const xcb_selection_request_event_t& request, const std::string& uris) const;

  XClient client;
  xcb_connection_t* connection;
  xcb_window_t window;
};
