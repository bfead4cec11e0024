#include "Help.h"

namespace whiteboard {

const std::vector<HelpLine>& HelpLines() {
  static const std::vector<HelpLine> lines = {
      {"P  L  R  E  T  Y", "Pen, line, rectangle, ellipse, triangle, right triangle"},
      {"S", "Select: drag a mark, or, beside marks or with Shift, a frame around some"},
      {"X, right button", "Eraser"},
      {"Delete", "Delete the selection"},
      {"1 … 8", "Colour; the last one is a marker"},
      {"[  ]", "Thinner, thicker"},
      {"Ctrl+Z", "Take back my last mark"},
      {"C, Shift+C", "Clear my marks, clear everybody's"},
      {"I", "Place a picture, by its path; or drop files on the window"},
      {"B", "Background picture of the page, by its path"},
      {"Page Up, Page Down", "Previous page, next page"},
      {"N, Shift+Delete", "New page, delete the page"},
      {"Ctrl+N, Ctrl+Tab", "New document, next document"},
      {"F2", "Nickname"},
      {"Ctrl+E, Ctrl+Shift+E", "Export the page, export the document"},
      {"F9", "Over the desktop: let the pointer through, or draw again"},
      {"F1", "This help"},
      {"Escape, Ctrl+Q", "Drop the selection, quit"},
  };
  return lines;
}

std::string HelpText() {
  constexpr std::size_t kColumn = 24;
  std::string text = "Keys:\n";
  for (const HelpLine& line : HelpLines()) {
    std::size_t width = 0;
    for (const char byte : line.keys) {
      width += (static_cast<unsigned char>(byte) & 0xC0) != 0x80 ? 1 : 0;
    }
    text += "  " + line.keys + std::string(kColumn > width ? kColumn - width : 1, ' ') +
            line.meaning + "\n";
  }
  return text;
}

}  // namespace whiteboard
