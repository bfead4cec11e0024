// Connection.h - a connection to an X server, opened and closed.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <xcb/xcb.h>

#include "x11/Reply.h"

// Owned by the object that uses it, and used under that object's lock. If it could not be opened,
// or its server went away, requests on it do nothing.
class Connection {
 public:
  // An empty name stands for the environment's DISPLAY.
  explicit Connection(const std::string& displayName);

  xcb_connection_t* Get() const { return connection.get(); }

  // Returns null if the connection could not be opened; else valid for its lifetime.
  const xcb_screen_t* Screen() const { return screen; }
  int ScreenNumber() const { return screenNumber; }

  // Returns false, and a text, if there is no server at the other end.
  bool CheckAlive(std::string& error) const;

  // Waits for a request's outcome. Returns false, and a text that names `what` was tried, if it
  // failed.
  bool Check(xcb_void_cookie_t request, std::string_view what, std::string& error) const;

  // Returns why there is no reply: the server's refusal, or a broken connection.
  std::string Describe(std::string_view what, const xcb_generic_error_t* refusal) const;

  // Returns whether the server has an extension.
  bool Has(xcb_extension_t& extension) const;

  // Returns the atom of a name. If it does not exist: none, or a new one if `create` is set.
  xcb_atom_t Atom(std::string_view name, bool create) const;

  // Returns the next event or asynchronous refusal that arrived; null if there is none.
  Reply<xcb_generic_event_t> PollEvent() const;

 private:
  std::string displayName;
  std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection;
  const xcb_screen_t* screen = nullptr;
  int screenNumber = 0;
};

// Receives the error of a call of XCB whose reply is missing.
class Refusal {
 public:
  xcb_generic_error_t** Receive() { return &error; }
  const xcb_generic_error_t* Get() const { return error; }

  Refusal() = default;
  ~Refusal() { std::free(error); }
  Refusal(const Refusal&) = delete;
  Refusal& operator=(const Refusal&) = delete;

 private:
  xcb_generic_error_t* error = nullptr;
};
