// Connection.h - a connection to an X server, opened and closed.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <xcb/xcb.h>

#include "x11/Reply.h"

// Owned by the object that uses it, whose lock it is used under. A connection that could not be
// opened, or whose server went away, stays a harmless object: requests on it do nothing.
class Connection {
 public:
  // An empty name stands for the environment's DISPLAY.
  explicit Connection(const std::string& displayName);

  xcb_connection_t* Get() const { return connection.get(); }

  // Null when the connection could not be opened; else valid for its lifetime.
  const xcb_screen_t* Screen() const { return screen; }
  int ScreenNumber() const { return screenNumber; }

  // False, with a text, when there is no server at the other end.
  bool CheckAlive(std::string& error) const;

  // Waits for a request's outcome; false with a text that says what was tried when it failed.
  bool Check(xcb_void_cookie_t request, std::string_view what, std::string& error) const;

  // Says why there is no reply: the server's refusal, or none when the connection broke.
  std::string Describe(std::string_view what, const xcb_generic_error_t* refusal) const;

  // Whether the server has an extension.
  bool Has(xcb_extension_t& extension) const;

  // The atom of a name; none when it does not exist, unless `create` is set.
  xcb_atom_t Atom(std::string_view name, bool create) const;

  // The next event, or an asynchronous refusal, that has arrived; null when there is none.
  Reply<xcb_generic_event_t> PollEvent() const;

 private:
  std::string displayName;
  std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection;
  const xcb_screen_t* screen = nullptr;
  int screenNumber = 0;
};

// What a call of XCB takes for the reason why its reply is missing.
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
