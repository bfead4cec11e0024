// Draws text onto pixels. It stands on Pango and Cairo, which show nowhere else in this room.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/gdi/Gdi.h"

struct TextStyle {
  std::string family;  // an installed one, UTF-8; see FindFontFamily
  bool bold = false;
  double pixelSize = 0;     // of the em square
  std::uint32_t color = 0;  // ARGB, not premultiplied

  bool operator==(const TextStyle&) const = default;
};

// The size of what text is drawn on, in pixels.
struct TextSurface {
  int width = 0;
  int height = 0;
};

// The part of the surface outside which PaintText would leave every pixel as it is; empty for text
// that draws nothing. Any thread; one at a time.
RECT FindTextArea(const TextStyle& style, std::wstring_view text, double x, double y,
                  const TextSurface& surface);

// Draws UTF-16 text, one unit a wchar_t, source-over; the first line's top left corner lies at
// (x, y). Lines end at line ends alone; what lies off the pixels is left out, and so is text that
// could only lie there. Every size, length and position is legal input; what is not a positive size
// or a finite position draws nothing. Any thread; one draws at a time.
void PaintText(const PixelView& pixels, const TextStyle& style, std::wstring_view text, double x,
               double y);
