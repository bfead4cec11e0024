#include "x11/OverlayWindow.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "x11/Area.h"
#include "x11/Events.h"
#include "x11/PixelFormat.h"
#include "x11/PushedWindow.h"

namespace {

constexpr std::uint8_t kDepth = 32;
constexpr std::string_view kName = "Parchlet overlay";
// The instance and the class, each with its closing zero.
constexpr std::string_view kClass("parchlet-overlay\0Parchlet\0", 26);

// The children of a window, the topmost last.
std::vector<xcb_window_t> ChildrenOf(const Connection& connection, xcb_window_t parent) {
  const Reply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(connection.Get(), xcb_query_tree(connection.Get(), parent), nullptr));
  if (tree == nullptr) {
    return {};
  }
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  return {children, children + xcb_query_tree_children_length(tree.get())};
}

}  // namespace

bool OverlayWindow::Create(std::string& error) {
  if (!connection.CheckAlive(error) || !CheckImageFormat(connection, kDepth, error)) {
    return false;
  }
  const xcb_screen_t& screen = *connection.Screen();
  const std::optional<xcb_visualid_t> visual = FindAlphaVisual(screen);
  if (!visual) {
    error = "the X display has no 32-bit visual for windows with alpha";
    return false;
  }
  const xcb_colormap_t colors = xcb_generate_id(connection.Get());
  xcb_create_colormap(connection.Get(), XCB_COLORMAP_ALLOC_NONE, colors, screen.root, *visual);
  const xcb_window_t created = xcb_generate_id(connection.Get());
  const std::uint32_t mask = XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                             XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
  const std::uint32_t values[] = {0, 0, 1, PushedWindow::kEvents, colors};
  const auto request =
      xcb_create_window_checked(connection.Get(), kDepth, created, screen.root, 0, 0, 1, 1, 0,
                                XCB_WINDOW_CLASS_INPUT_OUTPUT, *visual, mask, values);
  if (!connection.Check(request, "create a 32-bit window", error)) {
    return false;
  }
  window = created;
  SetNames();
  return true;
}

void OverlayWindow::SetNames() {
  const auto set = [this](xcb_atom_t property, std::string_view text) {
    xcb_change_property(connection.Get(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING,
                        8, static_cast<std::uint32_t>(text.size()), text.data());
  };
  set(XCB_ATOM_WM_NAME, kName);
  set(XCB_ATOM_WM_CLASS, kClass);
}

void OverlayWindow::Place(const RECT& area) {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(area.left),
                                  static_cast<std::uint32_t>(area.top), WidthOf(area),
                                  HeightOf(area)};
  xcb_configure_window(connection.Get(), window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  xcb_flush(connection.Get());
}

void OverlayWindow::Show() {
  if (!isShown) {
    Raise();
    xcb_map_window(connection.Get(), window);
    xcb_flush(connection.Get());
    isShown = true;
  }
}

void OverlayWindow::Hide() {
  if (isShown) {
    xcb_unmap_window(connection.Get(), window);
    xcb_flush(connection.Get());
    isShown = false;
  }
}

bool OverlayWindow::SetClickThrough(bool clickThrough, std::string& error) {
  if (!connection.Has(xcb_xfixes_id)) {
    error = "the X server cannot let the pointer through a window: it has no XFixes";
    return false;
  }
  // A client must negotiate the version first.
  const Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
      connection.Get(), xcb_xfixes_query_version(connection.Get(), 2, 0), nullptr));
  xcb_xfixes_region_t region = XCB_XFIXES_REGION_NONE;  // stands for the whole window
  if (clickThrough) {
    region = xcb_generate_id(connection.Get());
    xcb_xfixes_create_region(connection.Get(), region, 0, nullptr);
  }
  const bool isSet =
      connection.Check(xcb_xfixes_set_window_shape_region_checked(connection.Get(), window,
                                                                  XCB_SHAPE_SK_INPUT, 0, 0, region),
                       "let the pointer through a window", error);
  if (clickThrough) {
    xcb_xfixes_destroy_region(connection.Get(), region);
  }
  return isSet;
}

bool OverlayWindow::KeepBelow(xcb_window_t newTool, std::string& error) {
  const xcb_window_t topLevel = newTool != XCB_NONE ? TopLevelOf(newTool) : XCB_NONE;
  if (newTool != XCB_NONE && topLevel == XCB_NONE) {
    error = "there is no window to stay below: " + NameOfWindow(newTool);
    return false;
  }
  tool = newTool;
  toolTopLevel = topLevel;
  Raise();
  return connection.CheckAlive(error);
}

void OverlayWindow::Handle(const xcb_generic_event_t& event) {
  xcb_window_t other = XCB_NONE;
  if (const auto* moved = EventAs<xcb_configure_notify_event_t>(event, XCB_CONFIGURE_NOTIFY)) {
    other = moved->window;
  } else if (const auto* shown = EventAs<xcb_map_notify_event_t>(event, XCB_MAP_NOTIFY)) {
    other = shown->window;
  } else if (const auto* placed =
                 EventAs<xcb_reparent_notify_event_t>(event, XCB_REPARENT_NOTIFY)) {
    other = placed->window;
  }
  isStackChanged = isStackChanged || (other != XCB_NONE && other != window);
}

void OverlayWindow::Restack() {
  if (!isShown || !isStackChanged) {
    return;
  }
  isStackChanged = false;
  if (tool != XCB_NONE) {
    toolTopLevel = TopLevelOf(tool);
  }
  if (!IsInPlace()) {
    Raise();
  }
}

// Returns whether the tool is above the overlay, and no window is that the overlay may cover.
bool OverlayWindow::IsInPlace() const {
  const std::vector<xcb_window_t> stack = ChildrenOf(connection, connection.Screen()->root);
  const auto own = std::find(stack.begin(), stack.end(), window);
  // A window manager that puts the tool into a frame stacks that frame where it likes.
  const bool coversTool = std::find(stack.begin(), own, toolTopLevel) != own;
  return own == stack.end() ||
         (!coversTool && std::none_of(own + 1, stack.end(),
                                      [this](xcb_window_t other) { return HidesUs(other); }));
}

bool OverlayWindow::HidesUs(xcb_window_t other) const {
  if (other == toolTopLevel) {
    return false;
  }
  const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
      connection.Get(), xcb_get_window_attributes(connection.Get(), other), nullptr));
  return attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
         attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT && !IsOtherOverlay(other);
}

// Else two overlays would raise themselves above each other for ever.
bool OverlayWindow::IsOtherOverlay(xcb_window_t other) const {
  const Reply<xcb_get_property_reply_t> name(xcb_get_property_reply(
      connection.Get(),
      xcb_get_property(connection.Get(), 0, other, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
      nullptr));
  if (name == nullptr) {
    return false;
  }
  const auto* text = static_cast<const char*>(xcb_get_property_value(name.get()));
  return std::string_view(
             text, static_cast<std::size_t>(xcb_get_property_value_length(name.get()))) == kClass;
}

void OverlayWindow::Raise() {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  if (toolTopLevel == XCB_NONE) {
    xcb_configure_window(connection.Get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  } else {
    // If a window manager manages the tool, it sees this request.
    xcb_configure_window(connection.Get(), tool, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    const std::uint32_t belowTool[] = {toolTopLevel, XCB_STACK_MODE_BELOW};
    xcb_configure_window(connection.Get(), window,
                         XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, belowTool);
  }
  xcb_flush(connection.Get());
}

xcb_window_t OverlayWindow::TopLevelOf(xcb_window_t inner) const {
  for (xcb_window_t at = inner;;) {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection.Get(), xcb_query_tree(connection.Get(), at), nullptr));
    if (tree == nullptr || tree->parent == XCB_NONE) {
      return XCB_NONE;
    }
    if (tree->parent == connection.Screen()->root) {
      return at;
    }
    at = tree->parent;
  }
}
