#include "whiteboard/XSession.h"

#include "common/Input.h"

namespace whiteboard {

namespace {

const char* DisplayName() {
  const char* name = std::getenv("DISPLAY");
  return name != nullptr && *name != '\0' ? name : "(DISPLAY is not set)";
}

}  // namespace

XSession::XSession() {
  int number = 0;
  connection = xcb_connect(nullptr, &number);
  if (xcb_connection_has_error(connection) != 0) {
    xcb_disconnect(connection);
    throw apps::Failure(std::string("cannot reach the X server ") + DisplayName());
  }
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; number > 0 && screens.rem > 1; --number) {
    xcb_screen_next(&screens);
  }
  screen = screens.data;
}

XSession::~XSession() {
  xcb_disconnect(connection);
}

xcb_visualtype_t* XSession::RootVisual() const {
  for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0;
       xcb_depth_next(&depths)) {
    for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
         xcb_visualtype_next(&visuals)) {
      if (visuals.data->visual_id == screen->root_visual) {
        return visuals.data;
      }
    }
  }
  throw apps::Failure("the X server does not describe its own visual");
}

std::optional<xcb_visualid_t> XSession::AlphaVisual() const {
  for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0;
       xcb_depth_next(&depths)) {
    if (depths.data->depth != 32) {
      continue;
    }
    for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
         xcb_visualtype_next(&visuals)) {
      if (visuals.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR &&
          visuals.data->red_mask == 0xFF0000) {
        return visuals.data->visual_id;
      }
    }
  }
  return std::nullopt;
}

xcb_atom_t XSession::Atom(const std::string& name) const {
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection,
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  return reply != nullptr ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace whiteboard
