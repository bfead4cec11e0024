#include "whiteboard/HostWindow.h"

#include <cairo-xcb.h>
#include <string_view>

#include "common/Input.h"
#include "whiteboard/Content.h"

namespace whiteboard {

namespace {

std::uint16_t Side(LONG low, LONG high) {
  return static_cast<std::uint16_t>(high - low);
}

void SetText(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
             xcb_atom_t type, std::string_view text) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

void SetAtom(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
             xcb_atom_t value) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32, 1,
                      &value);
}

}  // namespace

HostWindow::HostWindow(XSession& session, const Looks& looks)
    : session(session),
      window(xcb_generate_id(session.Get())),
      closeProtocol(session.Atom("WM_DELETE_WINDOW")) {
  const std::uint32_t values[] = {
      XCB_BACK_PIXMAP_NONE, kPointerEvents | XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_KEY_PRESS |
                                XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_LEAVE_WINDOW};
  const std::uint16_t width = Side(looks.area.left, looks.area.right);
  const std::uint16_t height = Side(looks.area.top, looks.area.bottom);
  xcb_create_window(session.Get(), XCB_COPY_FROM_PARENT, window, session.Screen().root,
                    static_cast<std::int16_t>(looks.area.left),
                    static_cast<std::int16_t>(looks.area.top), width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, session.Screen().root_visual,
                    XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values);
  SetHints(looks);
  SetTitle(looks.title);
  surface = cairo_xcb_surface_create(session.Get(), window, session.RootVisual(), width, height);
  xcb_map_window(session.Get(), window);
}

HostWindow::~HostWindow() {
  cairo_surface_finish(surface);
  cairo_surface_destroy(surface);
  xcb_destroy_window(session.Get(), window);
}

void HostWindow::SetHints(const Looks& looks) {
  xcb_connection_t* connection = session.Get();
  SetText(connection, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
          std::string_view("whiteboard\0Parchlet-whiteboard\0", 31));
  SetAtom(connection, window, session.Atom("WM_PROTOCOLS"), closeProtocol);
  if (looks.isPanel) {
    SetAtom(connection, window, session.Atom("_NET_WM_WINDOW_TYPE"),
            session.Atom("_NET_WM_WINDOW_TYPE_UTILITY"));
    SetAtom(connection, window, session.Atom("_NET_WM_STATE"), session.Atom("_NET_WM_STATE_ABOVE"));
  }
  // The layout of WM_SIZE_HINTS: flags, four obsolete words, the smallest and the largest size, ...
  constexpr std::uint32_t kPlace = 1U << 2;
  constexpr std::uint32_t kMinSize = 1U << 4;
  std::uint32_t hints[18] = {kMinSize | (looks.insistsOnPlace ? kPlace : 0)};
  hints[5] = static_cast<std::uint32_t>(looks.smallest.cx);
  hints[6] = static_cast<std::uint32_t>(looks.smallest.cy);
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                      XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
}

void HostWindow::SetTitle(const std::string& title) {
  const xcb_atom_t utf8 = session.Atom("UTF8_STRING");
  SetText(session.Get(), window, session.Atom("_NET_WM_NAME"), utf8, title);
  SetText(session.Get(), window, XCB_ATOM_WM_NAME, utf8, title);
}

xcb_window_t HostWindow::AddPage() {
  const std::optional<xcb_visualid_t> visual = session.AlphaVisual();
  if (!visual) {
    throw apps::Failure("the X display has no 32-bit visual for windows with alpha");
  }
  const xcb_colormap_t colors = xcb_generate_id(session.Get());
  xcb_create_colormap(session.Get(), XCB_COLORMAP_ALLOC_NONE, colors, window, *visual);
  page = xcb_generate_id(session.Get());
  const std::uint32_t values[] = {kPaper, 0, XCB_GRAVITY_NORTH_WEST, kPointerEvents, colors};
  xcb_create_window(session.Get(), 32, page, window, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    *visual,
                    XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY |
                        XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                    values);
  SetCrosshair(page);
  xcb_map_window(session.Get(), page);
  // Wait until the server has the window: another connection uses it next.
  const Reply<xcb_get_input_focus_reply_t> settled(
      xcb_get_input_focus_reply(session.Get(), xcb_get_input_focus(session.Get()), nullptr));
  return page;
}

void HostWindow::SetCrosshair(xcb_window_t target) {
  constexpr std::uint16_t kGlyph = 34;  // in the server's cursor font; its mask comes next
  constexpr std::string_view kFont = "cursor";
  const xcb_font_t font = xcb_generate_id(session.Get());
  xcb_open_font(session.Get(), font, static_cast<std::uint16_t>(kFont.size()), kFont.data());
  const xcb_cursor_t cursor = xcb_generate_id(session.Get());
  xcb_create_glyph_cursor(session.Get(), cursor, font, font, kGlyph, kGlyph + 1, 0, 0, 0, 0xFFFF,
                          0xFFFF, 0xFFFF);
  xcb_change_window_attributes(session.Get(), target, XCB_CW_CURSOR, &cursor);
  xcb_free_cursor(session.Get(), cursor);
  xcb_close_font(session.Get(), font);
}

void HostWindow::PlacePage(const RECT& area) {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(area.left),
                                  static_cast<std::uint32_t>(area.top), Side(area.left, area.right),
                                  Side(area.top, area.bottom)};
  xcb_configure_window(session.Get(), page,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  xcb_flush(session.Get());
}

void HostWindow::Paint(const std::function<void(cairo_t*)>& paint) {
  cairo_t* painter = cairo_create(surface);
  paint(painter);
  cairo_destroy(painter);
  cairo_surface_flush(surface);
}

void HostWindow::Resized(int width, int height) {
  cairo_xcb_surface_set_size(surface, width, height);
}

bool HostWindow::IsCloseRequest(const xcb_generic_event_t& event) const {
  if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) {
    return false;
  }
  const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
  return message.window == window && message.data.data32[0] == closeProtocol;
}

}  // namespace whiteboard
