#include "whiteboard/Brush.h"

#include <pango/pangocairo.h>
#include <cmath>

namespace whiteboard {

void SetColor(cairo_t* painter, std::uint32_t color, double alpha) {
  constexpr double kFull = 255;
  cairo_set_source_rgba(painter, (color >> 16 & 0xFF) / kFull, (color >> 8 & 0xFF) / kFull,
                        (color & 0xFF) / kFull, alpha);
}

void Fill(cairo_t* painter, const RECT& area, std::uint32_t color) {
  SetColor(painter, color);
  cairo_rectangle(painter, area.left, area.top, area.right - area.left, area.bottom - area.top);
  cairo_fill(painter);
}

void RoundedBox(cairo_t* painter, const RECT& area, double radius) {
  cairo_new_path(painter);
  cairo_arc(painter, area.right - radius, area.top + radius, radius, -M_PI / 2, 0);
  cairo_arc(painter, area.right - radius, area.bottom - radius, radius, 0, M_PI / 2);
  cairo_arc(painter, area.left + radius, area.bottom - radius, radius, M_PI / 2, M_PI);
  cairo_arc(painter, area.left + radius, area.top + radius, radius, M_PI, 1.5 * M_PI);
  cairo_close_path(painter);
}

int DrawText(cairo_t* painter, const RECT& area, const std::string& text, const TextStyle& style) {
  PangoLayout* layout = pango_cairo_create_layout(painter);
  PangoFontDescription* font = pango_font_description_from_string("Sans");
  pango_font_description_set_absolute_size(font, style.size * PANGO_SCALE);
  pango_font_description_set_weight(font, style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_layout_set_font_description(layout, font);
  pango_layout_set_single_paragraph_mode(layout, 1);
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  pango_layout_set_width(layout, (area.right - area.left) * PANGO_SCALE);
  pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_MIDDLE);
  pango_layout_set_alignment(layout, style.align == Align::kCenter  ? PANGO_ALIGN_CENTER
                                     : style.align == Align::kRight ? PANGO_ALIGN_RIGHT
                                                                    : PANGO_ALIGN_LEFT);
  int width = 0;
  int height = 0;
  pango_layout_get_pixel_size(layout, &width, &height);
  SetColor(painter, style.color);
  const int top = area.top + (area.bottom - area.top - height) / 2;
  cairo_move_to(painter, area.left, top);
  pango_cairo_show_layout(painter, layout);
  pango_font_description_free(font);
  g_object_unref(layout);
  return width;
}

}  // namespace whiteboard
