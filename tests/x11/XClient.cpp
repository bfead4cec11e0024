#include "x11/XClient.h"

#include <cstring>
#include <stdexcept>

#include "x11/XServer.h"

namespace {

std::uint16_t Side(LONG low, LONG high) {
  return static_cast<std::uint16_t>(high - low);
}

xcb_visualid_t AlphaVisual(const xcb_screen_t& screen) {
  for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0;
       xcb_depth_next(&depths)) {
    if (depths.data->depth == 32) {
      return xcb_depth_visuals_iterator(depths.data).data->visual_id;
    }
  }
  throw std::runtime_error("no visual of 32 bits");
}

}  // namespace

std::uint32_t Screenshot::At(int x, int y) const {
  return pixels.at(std::size_t{Side(area.top, y)} * Side(area.left, area.right) +
                   Side(area.left, x));
}

XClient::XClient(const std::string& display)
    : connection(xcb_connect(display.c_str(), nullptr)),
      screen(xcb_setup_roots_iterator(xcb_get_setup(connection)).data) {}

XClient::~XClient() {
  xcb_disconnect(connection);
}

void XClient::Settle() const {
  const Owned<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

xcb_window_t XClient::CreateWindow(const RECT& area, std::uint32_t color, bool isManaged) {
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t values[] = {color, isManaged ? 0U : 1U, XCB_EVENT_MASK_BUTTON_PRESS};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root,
                    static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
                    Side(area.left, area.right), Side(area.top, area.bottom), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  return window;
}

xcb_window_t XClient::ShowWindow(const RECT& area, std::uint32_t color) {
  const xcb_window_t window = CreateWindow(area, color, false);
  xcb_map_window(connection, window);
  Settle();
  return window;
}

xcb_window_t XClient::ShowFullScreenWindow(std::uint32_t color) {
  const xcb_window_t window = CreateWindow({0, 0, 100, 100}, color, true);
  const xcb_atom_t fullScreen = Atom("_NET_WM_STATE_FULLSCREEN");
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, Atom("_NET_WM_STATE"),
                      XCB_ATOM_ATOM, 32, 1, &fullScreen);
  xcb_map_window(connection, window);
  Settle();
  return window;
}

xcb_atom_t XClient::Atom(const std::string& name) const {
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection,
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  return reply->atom;
}

xcb_window_t XClient::OwnerOf(const std::string& selection) const {
  const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, Atom(selection)), nullptr));
  return reply->owner;
}

bool XClient::HasRootProperty(const std::string& name) const {
  const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection, xcb_get_property(connection, 0, screen->root, Atom(name), XCB_ATOM_ANY, 0, 1),
      nullptr));
  return reply->type != XCB_ATOM_NONE;
}

xcb_window_t XClient::ShowAlphaWindow(const RECT& area) {
  const xcb_visualid_t visual = AlphaVisual(*screen);
  const xcb_colormap_t colors = xcb_generate_id(connection);
  xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colors, screen->root, visual);
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t values[] = {0, 0, 1, colors};
  xcb_create_window(
      connection, 32, window, screen->root, static_cast<std::int16_t>(area.left),
      static_cast<std::int16_t>(area.top), Side(area.left, area.right), Side(area.top, area.bottom),
      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
  xcb_map_window(connection, window);
  Settle();
  return window;
}

void XClient::MoveWindow(xcb_window_t window, const RECT& area) {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(area.left),
                                  static_cast<std::uint32_t>(area.top), Side(area.left, area.right),
                                  Side(area.top, area.bottom)};
  xcb_configure_window(connection, window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  Settle();
}

void XClient::RaiseWindow(xcb_window_t window) {
  Stack(window, XCB_STACK_MODE_ABOVE);
}

void XClient::LowerWindow(xcb_window_t window) {
  Stack(window, XCB_STACK_MODE_BELOW);
}

void XClient::Stack(xcb_window_t window, std::uint32_t mode) {
  xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
  Settle();
}

void XClient::DestroyWindow(xcb_window_t window) {
  xcb_destroy_window(connection, window);
  Settle();
}

void XClient::HearButtons(xcb_window_t window) {
  const std::uint32_t events = XCB_EVENT_MASK_BUTTON_PRESS;
  xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
  Settle();
}

xcb_window_t XClient::NextPress() {
  while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
    if ((event->response_type & 0x7F) == XCB_BUTTON_PRESS) {
      return reinterpret_cast<const xcb_button_press_event_t*>(event.get())->event;
    }
  }
  return XCB_NONE;
}

xcb_window_t XClient::WaitForPress() {
  xcb_window_t pressed = XCB_NONE;
  Eventually([&] {
    pressed = NextPress();
    return pressed != XCB_NONE;
  });
  return pressed;
}

bool XClient::HasPress(xcb_window_t window) {
  return NextPress() == window;
}

void XClient::LoseContent(xcb_window_t window, const RECT& area) {
  xcb_clear_area(connection, 1, window, static_cast<std::int16_t>(area.left),
                 static_cast<std::int16_t>(area.top), Side(area.left, area.right),
                 Side(area.top, area.bottom));
  Settle();
}

Screenshot XClient::Look(const RECT& area) const {
  const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(
      connection,
      xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root,
                    static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
                    Side(area.left, area.right), Side(area.top, area.bottom), 0xFFFFFFFF),
      nullptr));
  if (reply == nullptr) {
    throw std::runtime_error("no screenshot");
  }
  Screenshot shot{area, std::vector<std::uint32_t>(reply->length)};
  std::memcpy(shot.pixels.data(), xcb_get_image_data(reply.get()),
              shot.pixels.size() * sizeof(std::uint32_t));
  for (std::uint32_t& pixel : shot.pixels) {
    pixel &= 0xFFFFFF;  // the rest may be anything
  }
  return shot;
}

bool XClient::WaitForColor(int x, int y, std::uint32_t color) const {
  return Eventually([&] { return IsNear(Look({x, y, x + 1, y + 1}).At(x, y), color); });
}

bool IsNear(std::uint32_t color, std::uint32_t wanted) {
  for (int shift = 0; shift < 24; shift += 8) {
    const int difference =
        static_cast<int>(color >> shift & 0xFF) - static_cast<int>(wanted >> shift & 0xFF);
    if (std::abs(difference) > 2) {
      return false;
    }
  }
  return true;
}
