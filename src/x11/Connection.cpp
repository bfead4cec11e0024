#include "x11/Connection.h"

#include <array>
#include <cstdint>

namespace {

// The core protocol's refusals, by number; extensions add theirs past these.
constexpr std::array kRefusals = {
    "",          "BadRequest",  "BadValue",    "BadWindow",   "BadPixmap", "BadAtom",
    "BadCursor", "BadFont",     "BadMatch",    "BadDrawable", "BadAccess", "BadAlloc",
    "BadColor",  "BadGContext", "BadIDChoice", "BadName",     "BadLength", "BadImplementation"};

std::string NameOf(const xcb_generic_error_t& refusal) {
  if (refusal.error_code < kRefusals.size()) {
    return kRefusals[refusal.error_code];
  }
  return "error " + std::to_string(refusal.error_code);
}

}  // namespace

Connection::Connection(const std::string& displayName)
    : displayName(displayName), connection(nullptr, &xcb_disconnect) {
  const char* name = displayName.empty() ? nullptr : displayName.c_str();
  connection.reset(xcb_connect(name, &screenNumber));
  const xcb_setup_t* setup = xcb_get_setup(connection.get());
  if (xcb_connection_has_error(connection.get()) != 0 || setup == nullptr) {
    return;
  }
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
  for (int i = 0; i < screenNumber && screens.rem > 1; ++i) {
    xcb_screen_next(&screens);
  }
  screen = screens.rem > 0 ? screens.data : nullptr;
}

bool Connection::CheckAlive(std::string& error) const {
  if (screen == nullptr) {
    error = displayName.empty() ? "cannot open the X display that DISPLAY names"
                                : "cannot open the X display \"" + displayName + "\"";
    return false;
  }
  if (xcb_connection_has_error(connection.get()) != 0) {
    error = "the connection to the X server is lost";
    return false;
  }
  return true;
}

bool Connection::Check(xcb_void_cookie_t request, std::string_view what, std::string& error) const {
  const Reply<xcb_generic_error_t> refusal(xcb_request_check(connection.get(), request));
  if (refusal != nullptr) {
    error = Describe(what, refusal.get());
    return false;
  }
  return CheckAlive(error);
}

std::string Connection::Describe(std::string_view what, const xcb_generic_error_t* refusal) const {
  std::string text;
  if (!CheckAlive(text)) {
    return text;
  }
  text = "the X server refused to ";
  text += what;
  return refusal != nullptr ? text + ": " + NameOf(*refusal) : text;
}

bool Connection::Has(xcb_extension_t& extension) const {
  const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection.get(), &extension);
  return data != nullptr && data->present != 0;
}

xcb_atom_t Connection::Atom(std::string_view name, bool create) const {
  const Reply<xcb_intern_atom_reply_t> reply(
      xcb_intern_atom_reply(connection.get(),
                            xcb_intern_atom(connection.get(), create ? 0 : 1,
                                            static_cast<std::uint16_t>(name.size()), name.data()),
                            nullptr));
  return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

Reply<xcb_generic_event_t> Connection::PollEvent() const {
  return Reply<xcb_generic_event_t>(xcb_poll_for_event(connection.get()));
}
