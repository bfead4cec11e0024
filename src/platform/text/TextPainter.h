// Draws text onto pixels, by Pango and Cairo. No other header of the layer names them, but
// GlyphOutlines.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <parchlet/Platform.h>

#include "platform/gdi/PixelView.h"

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

// Returns an area of the surface that holds every pixel that PaintText would change; empty for text
// that draws nothing. Any thread; calls wait for each other.
RECT FindTextArea(const TextStyle& style, std::wstring_view text, double x, double y,
                  const TextSurface& surface);

// Draws UTF-16 text, one unit a wchar_t, source-over; the first line's top left corner lies at
// (x, y). Nothing is wrapped. Text off the pixels is left out. Every size, length and position is
// legal input; a size that is not positive, or a position that is not finite, draws nothing. Any
// thread; calls wait for each other.
void PaintText(const PixelView& pixels, const TextStyle& style, std::wstring_view text, double x,
               double y);
