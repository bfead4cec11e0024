#include "whiteboard/Keyboard.h"

// The xcb header has a field named by a C++ keyword.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitly
#include <xcb/xkb.h>
#undef explicit
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include "common/Input.h"

namespace whiteboard {

Keyboard::Keyboard(xcb_connection_t* connection)
    : connection(connection),
      context(xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref),
      keymap(nullptr, xkb_keymap_unref),
      state(nullptr, xkb_state_unref) {
  if (context == nullptr ||
      xkb_x11_setup_xkb_extension(
          connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
          XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr) == 0) {
    throw apps::Failure("the X server's keyboard cannot be read: it has no XKB");
  }
  device = xkb_x11_get_core_keyboard_device_id(connection);
  Load();
  if (state == nullptr) {
    throw apps::Failure("the X server's keyboard has no layout that can be read");
  }
  constexpr std::uint16_t kEvents =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr std::uint16_t kParts =
      XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
  xcb_xkb_select_events(connection, static_cast<std::uint16_t>(device), kEvents, 0, kEvents, kParts,
                        kParts, nullptr);
}

Keyboard::~Keyboard() = default;

void Keyboard::Load() {
  std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> map(
      xkb_x11_keymap_new_from_device(context.get(), connection, device,
                                     XKB_KEYMAP_COMPILE_NO_FLAGS),
      xkb_keymap_unref);
  if (map != nullptr) {
    state.reset(xkb_x11_state_new_from_device(map.get(), connection, device));
    keymap = std::move(map);
  }
}

Key Keyboard::Read(const xcb_key_press_event_t& event) {
  Key key;
  if (state == nullptr) {
    return key;
  }
  // The event has the modifiers at the time of the press, whatever has happened since.
  constexpr unsigned int kModifiers = 0xFF;
  constexpr unsigned int kGroupShift = 13;
  xkb_state_update_mask(state.get(), event.state & kModifiers, 0, 0, 0, 0,
                        event.state >> kGroupShift & 3U);
  key.symbol = xkb_state_key_get_one_sym(state.get(), event.detail);
  key.control = (event.state & XCB_MOD_MASK_CONTROL) != 0;
  key.shift = (event.state & XCB_MOD_MASK_SHIFT) != 0;
  char text[16] = {};
  if (!key.control && xkb_state_key_get_utf8(state.get(), event.detail, text, sizeof text) > 0) {
    key.text = text;
  }
  return key;
}

bool Keyboard::Handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7F) != firstEvent) {
    return false;
  }
  Load();
  return true;
}

}  // namespace whiteboard
