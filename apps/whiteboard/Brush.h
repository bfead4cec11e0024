// Brush.h - colours and basic strokes for bars and panels.
#pragma once

#include <cairo.h>
#include <cstdint>
#include <string>

#include <parchlet/Platform.h>

namespace whiteboard {

// The window's own colours, 0xRRGGBB.
namespace look {
inline constexpr std::uint32_t kBar = 0xF8F9FB;
inline constexpr std::uint32_t kEdge = 0xD5DAE0;
inline constexpr std::uint32_t kDesk = 0xE4E8ED;
inline constexpr std::uint32_t kText = 0x2B323A;
inline constexpr std::uint32_t kQuietText = 0x69737F;
inline constexpr std::uint32_t kHover = 0xE9EDF2;
inline constexpr std::uint32_t kChosen = 0xD6E6FB;
inline constexpr std::uint32_t kAccent = 0x1864AB;
}  // namespace look

void SetColor(cairo_t* painter, std::uint32_t color, double alpha = 1);
void Fill(cairo_t* painter, const RECT& area, std::uint32_t color);
// Adds the outline to the painter's path.
void RoundedBox(cairo_t* painter, const RECT& area, double radius);

enum class Align { kLeft, kCenter, kRight };
struct TextStyle {
  std::uint32_t color = look::kText;
  int size = 13;  // pixels
  bool bold = false;
  Align align = Align::kLeft;
};
// Draws one line of text, vertically centred, with an ellipsis if it does not fit. Returns its
// width in pixels.
int DrawText(cairo_t* painter, const RECT& area, const std::string& text, const TextStyle& style);

}  // namespace whiteboard
