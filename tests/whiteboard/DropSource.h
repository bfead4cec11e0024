// DropSource.h - another program that files are dragged from.
#pragma once

#include <string>

#include <xcb/xcb.h>

// Owns a connection and an unseen window.
class DropSource {
 public:
  explicit DropSource(const std::string& display);
  ~DropSource();
  DropSource(const DropSource&) = delete;
  DropSource& operator=(const DropSource&) = delete;

  // Drags that list of URIs over the window that takes drops, and lets go. Whether the window says
  // that it took them.
  bool Drop(const std::string& uris);

 private:
  xcb_atom_t Atom(const std::string& name) const;
  xcb_window_t FindTarget() const;
  void Send(xcb_window_t target, const char* type, std::uint32_t word1, std::uint32_t word2) const;
  void Serve(const xcb_selection_request_event_t& request, const std::string& uris) const;

  xcb_connection_t* connection;
  xcb_window_t root;
  xcb_window_t window;
};
