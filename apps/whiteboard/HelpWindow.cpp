#include "whiteboard/HelpWindow.h"

#include "whiteboard/Brush.h"
#include "whiteboard/Keys.h"

namespace whiteboard {

namespace {

constexpr int kWidth = 720;
constexpr int kLine = 27;
constexpr int kMargin = 26;
constexpr int kTitle = 44;
constexpr int kKeys = 190;

int Height() {
  return 2 * kMargin + kTitle + static_cast<int>(HelpLines().size()) * kLine;
}

}  // namespace

HelpWindow::HelpWindow(XSession& session)
    : window(
          session,
          {"Whiteboard help", {120, 120, 120 + kWidth, 120 + Height()}, {kWidth, Height()}, true}) {
}

bool HelpWindow::Handle(const xcb_generic_event_t& event) {
  if (window.IsCloseRequest(event)) {
    return false;
  }
  switch (event.response_type & 0x7F) {
    case XCB_EXPOSE:
      if (reinterpret_cast<const xcb_expose_event_t&>(event).window == window.Id()) {
        Paint();
      }
      return true;
    case XCB_KEY_PRESS:
    case XCB_BUTTON_PRESS:
      // Both events name their window in the same field.
      return reinterpret_cast<const xcb_button_press_event_t&>(event).event != window.Id();
    default:
      return true;
  }
}

void HelpWindow::Paint() {
  window.Paint([](cairo_t* painter) {
    cairo_push_group(painter);
    Fill(painter, {0, 0, kWidth, Height()}, look::kEdge);
    Fill(painter, {1, 1, kWidth - 1, Height() - 1}, look::kBar);
    TextStyle title;
    title.size = 20;
    title.bold = true;
    DrawText(painter, {kMargin, kMargin - 8, kWidth - kMargin, kMargin + kTitle - 16},
             "The whiteboard's keys", title);
    int top = kMargin + kTitle;
    TextStyle keys;
    keys.color = look::kAccent;
    keys.bold = true;
    for (const HelpLine& line : HelpLines()) {
      DrawText(painter, {kMargin, top, kMargin + kKeys, top + kLine}, line.keys, keys);
      DrawText(painter, {kMargin + kKeys, top, kWidth - kMargin, top + kLine}, line.meaning, {});
      top += kLine;
    }
    cairo_pop_group_to_source(painter);
    cairo_paint(painter);
  });
}

}  // namespace whiteboard
