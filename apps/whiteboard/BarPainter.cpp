#include "whiteboard/BarPainter.h"

#include <cmath>

#include "whiteboard/Brush.h"

namespace whiteboard {

namespace {

constexpr std::uint32_t kComplaint = 0xC92A2A;

bool IsSame(const Action& a, const Action& b) {
  return a.command == b.command && a.value == b.value;
}

bool IsChosen(const Action& action, const BarState& state) {
  switch (action.command) {
    case Command::kTool:
      return action.value == static_cast<int>(state.style.tool);
    case Command::kColor:
      return action.value == state.style.color;
    case Command::kWidth:
      return action.value == state.style.width;
    case Command::kClickThrough:
      return state.clickThrough;
    default:
      return false;
  }
}

RECT Inner(const RECT& area, int margin) {
  return {area.left + margin, area.top + margin, area.right - margin, area.bottom - margin};
}

void PaintDisc(cairo_t* painter, const RECT& area, double radius) {
  cairo_new_path(painter);
  cairo_arc(painter, (area.left + area.right) / 2.0, (area.top + area.bottom) / 2.0, radius, 0,
            2 * M_PI);
}

void PaintSwatch(cairo_t* painter, const Button& button, bool isChosen) {
  constexpr double kRadius = 9.5;
  const std::uint32_t color = kColors[static_cast<std::size_t>(button.action.value)];
  PaintDisc(painter, button.area, kRadius);
  SetColor(painter, color & 0xFFFFFF, (color >> 24) < 0xFF ? 0.75 : 1);
  cairo_fill_preserve(painter);
  SetColor(painter, 0, 0.22);
  cairo_set_line_width(painter, 1);
  cairo_stroke(painter);
  if (isChosen) {
    PaintDisc(painter, button.area, kRadius + 3);
    SetColor(painter, look::kAccent);
    cairo_set_line_width(painter, 2);
    cairo_stroke(painter);
  }
}

void PaintWidth(cairo_t* painter, const Button& button, bool isChosen) {
  static const double radii[] = {1.6, 3.2, 5.4, 8.2};
  PaintDisc(painter, button.area, radii[button.action.value]);
  SetColor(painter, isChosen ? look::kAccent : look::kText);
  cairo_fill(painter);
}

void PaintButton(cairo_t* painter, const Button& button, const BarState& state) {
  constexpr double kCorner = 7;
  const bool isChosen = IsChosen(button.action, state);
  const bool isHovered = IsSame(button.action, state.hovered);
  const bool isSwatch = button.action.command == Command::kColor;
  if ((isChosen && !isSwatch) || isHovered) {
    RoundedBox(painter, Inner(button.area, 1), kCorner);
    SetColor(painter, isChosen && !isSwatch ? look::kChosen : look::kHover);
    cairo_fill(painter);
  }
  if (isSwatch) {
    PaintSwatch(painter, button, isChosen);
  } else if (button.action.command == Command::kWidth) {
    PaintWidth(painter, button, isChosen);
  } else {
    const double side = button.area.right - button.area.left;
    const double iconSide = side > 32 ? 24 : 18;
    SetColor(painter, isChosen ? look::kAccent : look::kText);
    DrawIcon(painter, button.action, button.area.left + (side - iconSide) / 2,
             button.area.top + (side - iconSide) / 2, iconSide);
  }
}

void PaintDesk(cairo_t* painter, const Layout& layout) {
  constexpr int kShadow = 6;
  Fill(painter, layout.desk, look::kDesk);
  for (int ring = kShadow; ring >= 1; --ring) {
    RoundedBox(painter,
               {layout.page.left - ring, layout.page.top - ring + 2, layout.page.right + ring,
                layout.page.bottom + ring + 2},
               ring + 1.0);
    SetColor(painter, 0x1B2430, 0.022);
    cairo_fill(painter);
  }
  SetColor(painter, 0x1B2430, 0.16);
  cairo_set_line_width(painter, 1);
  cairo_rectangle(painter, layout.page.left - 0.5, layout.page.top - 0.5,
                  layout.page.right - layout.page.left + 1,
                  layout.page.bottom - layout.page.top + 1);
  cairo_stroke(painter);
}

// Draws the question and the answer so far, with a cursor.
void PaintPrompt(cairo_t* painter, const RECT& area, const BarState& state) {
  const RECT box = {area.left - 8, area.top + 4, area.right, area.bottom - 4};
  RoundedBox(painter, box, 6);
  SetColor(painter, 0xFFFFFF);
  cairo_fill_preserve(painter);
  SetColor(painter, look::kAccent);
  cairo_set_line_width(painter, 1.5);
  cairo_stroke(painter);
  TextStyle label;
  label.bold = true;
  const int width = DrawText(painter, area, *state.promptLabel, label);
  const RECT answer = {area.left + width + 8, area.top, area.right - 6, area.bottom};
  DrawText(painter, answer, state.answer + "▏", {});
}

void PaintStatus(cairo_t* painter, const Layout& layout, const BarState& state) {
  const StatusTexts texts = PlaceStatusTexts(layout);
  TextStyle title;
  title.bold = true;
  DrawText(painter, texts.document, state.document, title);
  TextStyle middle;
  middle.align = Align::kCenter;
  DrawText(painter, texts.page, state.page, middle);
  RoundedBox(painter, texts.nickname, 6);
  SetColor(painter, state.hovered.command == Command::kNickname ? look::kChosen : look::kHover);
  cairo_fill(painter);
  TextStyle name;
  name.color = look::kAccent;
  name.bold = true;
  name.align = Align::kCenter;
  DrawText(painter, Inner(texts.nickname, 4), state.nickname, name);
  if (state.promptLabel) {
    PaintPrompt(painter, texts.message, state);
  } else {
    TextStyle message;
    message.color = state.isComplaint ? kComplaint : look::kQuietText;
    DrawText(painter, texts.message, state.message, message);
  }
}

}  // namespace

void PaintBars(cairo_t* painter, const Layout& layout, const std::vector<Button>& buttons,
               const BarState& state) {
  cairo_push_group(painter);  // no flicker
  if (layout.desk.top < layout.desk.bottom) {
    PaintDesk(painter, layout);
  }
  Fill(painter, layout.toolbar, look::kBar);
  Fill(painter, layout.status, look::kBar);
  const RECT& bar = layout.toolbar;
  Fill(painter, {bar.left, bar.bottom - 1, bar.right, bar.bottom}, look::kEdge);
  Fill(painter, {bar.left, layout.status.top, bar.right, layout.status.top + 1}, look::kEdge);
  PaintStatus(painter, layout, state);
  for (const Button& button : buttons) {
    if (button.action.command != Command::kNickname) {
      PaintButton(painter, button, state);
    }
  }
  cairo_pop_group_to_source(painter);
  cairo_paint(painter);
}

}  // namespace whiteboard
