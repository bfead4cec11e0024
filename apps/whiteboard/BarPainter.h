// BarPainter.h - what the whiteboard's window shows around the page.
#pragma once

#include <cairo.h>
#include <optional>
#include <string>
#include <vector>

#include "whiteboard/Layout.h"
#include "whiteboard/Tools.h"

namespace whiteboard {

struct BarState {
  Style style;
  Action hovered;
  bool clickThrough = false;
  std::string document;
  std::string page;  // "2 / 5"
  std::string nickname;
  std::string message;
  bool isComplaint = false;                // the message reports a failure
  std::optional<std::string> promptLabel;  // set while a question is being answered
  std::string answer;
};

// Paints the bars with their buttons, and the desk around the page.
void PaintBars(cairo_t* painter, const Layout& layout, const std::vector<Button>& buttons,
               const BarState& state);

// Draws the action's icon, centred in a square of that side, in the painter's current colour.
void DrawIcon(cairo_t* painter, const Action& action, double x, double y, double side);

}  // namespace whiteboard
