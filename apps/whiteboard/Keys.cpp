#include "whiteboard/Keys.h"

#include <xkbcommon/xkbcommon.h>

namespace whiteboard {

namespace {

Action ToolAction(Tool tool) {
  return {Command::kTool, static_cast<int>(tool)};
}

Action WithControl(const Key& key) {
  switch (xkb_keysym_to_lower(key.symbol)) {
    case XKB_KEY_z:
      return {Command::kTakeBack};
    case XKB_KEY_n:
      return {Command::kNewDocument};
    case XKB_KEY_Tab:
      return {Command::kNextDocument};
    case XKB_KEY_e:
      return {key.shift ? Command::kExportDocument : Command::kExportPage};
    case XKB_KEY_q:
    case XKB_KEY_w:
      return {Command::kQuit};
    default:
      return {};
  }
}

// The shift key counts, not the letter's case: with caps lock on the two differ.
Action Letter(const Key& key) {
  switch (xkb_keysym_to_lower(key.symbol)) {
    case XKB_KEY_p:
      return ToolAction(Tool::kPath);
    case XKB_KEY_l:
      return ToolAction(Tool::kLine);
    case XKB_KEY_r:
      return ToolAction(Tool::kRectangle);
    case XKB_KEY_e:
      return ToolAction(Tool::kEllipse);
    case XKB_KEY_t:
      return ToolAction(Tool::kTriangle);
    case XKB_KEY_y:
      return ToolAction(Tool::kRightTriangle);
    case XKB_KEY_s:
      return ToolAction(Tool::kSelect);
    case XKB_KEY_x:
      return ToolAction(Tool::kErase);
    case XKB_KEY_c:
      return {key.shift ? Command::kClearAll : Command::kClearMine};
    case XKB_KEY_i:
      return {Command::kPicture};
    case XKB_KEY_b:
      return {Command::kBackground};
    case XKB_KEY_n:
      return {Command::kNewPage};
    case XKB_KEY_bracketleft:
      return {Command::kThinner};
    case XKB_KEY_bracketright:
      return {Command::kThicker};
    default:
      return {};
  }
}

}  // namespace

Action ActionOf(const Key& key) {
  if (key.control) {
    return WithControl(key);
  }
  if (key.symbol >= XKB_KEY_1 && key.symbol < XKB_KEY_1 + kColors.size()) {
    return {Command::kColor, static_cast<int>(key.symbol - XKB_KEY_1)};
  }
  switch (key.symbol) {
    case XKB_KEY_Delete:
      return {key.shift ? Command::kDeletePage : Command::kDeleteSelection};
    case XKB_KEY_Page_Up:
      return {Command::kPreviousPage};
    case XKB_KEY_Page_Down:
      return {Command::kNextPage};
    case XKB_KEY_F1:
      return {Command::kHelp};
    case XKB_KEY_F2:
      return {Command::kNickname};
    case XKB_KEY_F9:
      return {Command::kClickThrough};
    case XKB_KEY_Escape:
      return {Command::kCancel};
    default:
      return Letter(key);
  }
}

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
