// BarPainter.h - what the whiteboard's window shows around the page.
#pragma once

#include <cairo.h>
#include <optional>
#include <string>
#include <vector>

#include "Buttons.h"
#include "Layout.h"
#include "Tools.h"

namespace whiteboard {

struct BarState {
  Style style;
  Action hovered;
  bool clickThrough = false;
  std::string document;
  std::string page;  // "2 / 5"
  std::string nickname;
  std::string message;
  bool isComplaint = false;                // the message tells of a failure
  std::optional<std::string> promptLabel;  // a question that is being answered
  std::string answer;
};

// Paints the bars with their buttons, and the desk around the page.
void PaintBars(cairo_t* painter, const Layout& layout, const std::vector<Button>& buttons,
               const BarState& state);

}  // namespace whiteboard
