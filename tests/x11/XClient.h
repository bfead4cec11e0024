// XClient.h - a plain X11 client: the host, or another program on the desktop.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <parchlet/Platform.h>
#include <xcb/xcb.h>

// A reply or event of the X server.
struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Owned = std::unique_ptr<T, FreeReply>;

// What the screen shows in an area: 0x00RRGGBB, row by row.
struct Screenshot {
  RECT area;
  std::vector<std::uint32_t> pixels;

  // The pixel at that place of the screen.
  std::uint32_t At(int x, int y) const {
    return pixels.at(static_cast<std::size_t>(y - area.top) * (area.right - area.left) +
                     (x - area.left));
  }
};

// Whether no channel differs by more than 2: blending rounds in more than one way.
inline bool IsNear(std::uint32_t color, std::uint32_t wanted) {
  const auto isNear = [=](int shift) {
    return (color >> shift & 0xFF) + 2 - (wanted >> shift & 0xFF) <= 4;
  };
  return isNear(0) && isNear(8) && isNear(16);
}

// A connection of its own, without any of the code under test.
class XClient {
 public:
  explicit XClient(const std::string& display)
      : connection(xcb_connect(display.c_str(), nullptr)),
        screen(xcb_setup_roots_iterator(xcb_get_setup(connection)).data) {}
  ~XClient() { xcb_disconnect(connection); }
  XClient(const XClient&) = delete;
  XClient& operator=(const XClient&) = delete;

  // A window of 24 bits and one colour above the others, shown, that hears the pointer's buttons.
  xcb_window_t ShowWindow(const RECT& area, std::uint32_t color) {
    const std::uint32_t values[] = {color, 0, 1, XCB_EVENT_MASK_BUTTON_PRESS,
                                    screen->default_colormap};
    return Show(area, 24, screen->root_visual, values);
  }
  // A window of 32 bits, shown, above the others.
  xcb_window_t ShowAlphaWindow(const RECT& area) {
    auto depths = xcb_screen_allowed_depths_iterator(screen);
    while (depths.data->depth != 32) {
      xcb_depth_next(&depths);
    }
    const xcb_visualid_t visual = xcb_depth_visuals_iterator(depths.data).data->visual_id;
    const xcb_colormap_t colors = xcb_generate_id(connection);
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colors, screen->root, visual);
    const std::uint32_t values[] = {0, 0, 1, 0, colors};
    return Show(area, 32, visual, values);
  }
  void MoveWindow(xcb_window_t window, const RECT& area) {
    const LONG values[] = {area.left, area.top, area.right - area.left, area.bottom - area.top};
    xcb_configure_window(connection, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    Settle();
  }
  void LowerWindow(xcb_window_t window) {
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    Settle();
  }
  void DestroyWindow(xcb_window_t window) {
    xcb_destroy_window(connection, window);
    Settle();
  }
  // Empties an area of a window, as any client may and the server does with what was covered.
  void LoseContent(xcb_window_t window, const RECT& area) {
    const xcb_rectangle_t at = Place(area);
    xcb_clear_area(connection, 1, window, at.x, at.y, at.width, at.height);
    Settle();
  }

  void HearButtons(xcb_window_t window) {
    const std::uint32_t events = XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
    Settle();
  }
  // The window of the next press of a button that this client has heard so far; none for none.
  xcb_window_t NextPress() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
      if ((event->response_type & 0x7F) == XCB_BUTTON_PRESS) {
        return reinterpret_cast<const xcb_button_press_event_t*>(event.get())->event;
      }
    }
    return XCB_NONE;
  }

  xcb_connection_t* Get() const { return connection; }
  xcb_window_t Root() const { return screen->root; }
  xcb_atom_t Atom(const std::string& name) const {
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return Owned<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection, cookie, nullptr))->atom;
  }
  bool HasOwner(const std::string& selection) const {
    const auto cookie = xcb_get_selection_owner(connection, Atom(selection));
    return Owned<xcb_get_selection_owner_reply_t>(
               xcb_get_selection_owner_reply(connection, cookie, nullptr))
               ->owner != XCB_NONE;
  }

  Screenshot Look(const RECT& area) const {
    const xcb_rectangle_t at = Place(area);
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, at.x,
                                      at.y, at.width, at.height, 0xFFFFFFFF);
    const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection, cookie, nullptr));
    if (reply == nullptr) {
      throw std::runtime_error("no screenshot");
    }
    const auto* first = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
    Screenshot shot{area, {first, first + reply->length}};
    for (std::uint32_t& pixel : shot.pixels) {
      pixel &= 0xFFFFFF;  // the rest may be anything
    }
    return shot;
  }
  std::uint32_t ColorAt(int x, int y) const { return Look({x, y, x + 1, y + 1}).pixels[0]; }

 private:
  static xcb_rectangle_t Place(const RECT& area) {
    return {static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
            static_cast<std::uint16_t>(area.right - area.left),
            static_cast<std::uint16_t>(area.bottom - area.top)};
  }

  // `values`: the colours of the background and the border, whether window managers leave it alone,
  // events, colours.
  xcb_window_t Show(const RECT& area, std::uint8_t depth, xcb_visualid_t visual,
                    const std::uint32_t (&values)[5]) {
    const xcb_window_t window = xcb_generate_id(connection);
    const xcb_rectangle_t at = Place(area);
    xcb_create_window(connection, depth, window, screen->root, at.x, at.y, at.width, at.height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                          XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values);
    xcb_map_window(connection, window);
    Settle();
    return window;
  }
  // Waits until the server has done everything so far.
  void Settle() const {
    Owned<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  }

  xcb_connection_t* connection;
  xcb_screen_t* screen;
};
