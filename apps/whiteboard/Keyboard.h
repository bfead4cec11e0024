// Keyboard.h - turns key events into symbols and text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <xcb/xcb.h>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;

namespace whiteboard {

struct Key {
  std::uint32_t symbol = 0;  // XKB_KEY_...
  std::string text;          // what it types, UTF-8
  bool control = false;
  bool shift = false;
};

// The keyboard of an X server. Follows changes of the layout. The connection must outlive it. One
// thread.
class Keyboard {
 public:
  // Throws apps::Failure when the server's keyboard cannot be read.
  explicit Keyboard(xcb_connection_t* connection);
  ~Keyboard();
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  Key Read(const xcb_key_press_event_t& event);
  // Handles the event and returns true if it is about the layout.
  bool Handle(const xcb_generic_event_t& event);

 private:
  void Load();

  xcb_connection_t* connection;
  std::uint8_t firstEvent = 0;
  std::int32_t device = -1;
  std::unique_ptr<xkb_context, void (*)(xkb_context*)> context;
  std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> keymap;
  std::unique_ptr<xkb_state, void (*)(xkb_state*)> state;
};

}  // namespace whiteboard
