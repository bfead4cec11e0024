// XSession.h - the whiteboard's connection to the X server.
#pragma once

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

namespace whiteboard {

// What the X library allocates with malloc.
template <class T>
struct FreeReply {
  void operator()(T* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, FreeReply<T>>;

// Owns the connection for windows and input; frames travel over others. One thread.
class XSession {
 public:
  // Connects to the environment's DISPLAY. Throws apps::Failure.
  XSession();
  ~XSession();
  XSession(const XSession&) = delete;
  XSession& operator=(const XSession&) = delete;

  xcb_connection_t* Get() const { return connection; }
  const xcb_screen_t& Screen() const { return *screen; }
  // Returns the visual of ordinary windows; never null.
  xcb_visualtype_t* RootVisual() const;
  std::optional<xcb_visualid_t> AlphaVisual() const;
  xcb_atom_t Atom(const std::string& name) const;

 private:
  xcb_connection_t* connection;
  xcb_screen_t* screen = nullptr;
};

}  // namespace whiteboard
