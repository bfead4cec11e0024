#include "whiteboard/Layout.h"

#include <algorithm>
#include <cmath>

namespace whiteboard {

namespace {

constexpr int kSide = 40;
constexpr int kColorSide = 30;
constexpr int kWidthSide = 32;
constexpr int kGap = 12;
constexpr int kEdge = 10;
constexpr int kSmallSide = 28;
constexpr int kDocumentWidth = 170;
constexpr int kPageWidth = 56;
constexpr int kNicknameWidth = 170;

// Puts buttons side by side along a bar.
class Row {
 public:
  Row(const RECT& bar, std::vector<Button>& buttons)
      : bar(bar), buttons(buttons), x(bar.left + kEdge) {}

  void Add(int width, Action action, std::string hint) {
    const int top = bar.top + (bar.bottom - bar.top - width) / 2;
    buttons.push_back({{x, top, x + width, top + width}, action, std::move(hint)});
    x += width;
  }
  void Skip(int width) { x += width; }
  void MoveTo(int newX) { x = newX; }

 private:
  RECT bar;
  std::vector<Button>& buttons;
  int x;
};

void AddTools(Row& row) {
  const auto tool = [&row](Tool which, const char* hint) {
    row.Add(kSide, {Command::kTool, static_cast<int>(which)}, hint);
  };
  tool(Tool::kSelect, "Select and move (S)");
  tool(Tool::kPath, "Pen (P)");
  tool(Tool::kLine, "Line (L)");
  tool(Tool::kRectangle, "Rectangle (R)");
  tool(Tool::kEllipse, "Ellipse (E)");
  tool(Tool::kTriangle, "Triangle (T)");
  tool(Tool::kRightTriangle, "Right triangle (Y)");
  tool(Tool::kErase, "Eraser (X, or the right button)");
}

void AddStyles(Row& row) {
  static const char* const names[] = {"Ink",  "Red",    "Orange", "Green",
                                      "Blue", "Violet", "White",  "Yellow marker"};
  for (int color = 0; color < static_cast<int>(kColors.size()); ++color) {
    row.Add(kColorSide, {Command::kColor, color},
            std::string(names[color]) + " (" + std::to_string(color + 1) + ")");
  }
  row.Skip(kGap);
  for (int width = 0; width < static_cast<int>(kWidths.size()); ++width) {
    row.Add(kWidthSide, {Command::kWidth, width},
            std::to_string(kWidths[static_cast<std::size_t>(width)]) + " pixels wide ([ and ])");
  }
}

void AddCommands(Row& row, bool overlay) {
  row.Add(kSide, {Command::kPicture}, "Place a picture (I)");
  row.Add(kSide, {Command::kBackground}, "Background picture (B)");
  row.Skip(kGap);
  row.Add(kSide, {Command::kTakeBack}, "Take back my last mark (Ctrl+Z)");
  row.Add(kSide, {Command::kClearMine}, "Clear my marks (C)");
  row.Add(kSide, {Command::kClearAll}, "Clear everybody's marks (Shift+C)");
  row.Skip(kGap);
  row.Add(kSide, {Command::kExportPage}, "Export the page as a picture (Ctrl+E)");
  if (overlay) {
    row.Add(kSide, {Command::kClickThrough}, "Let the pointer through to the desktop (F9)");
  }
  row.Add(kSide, {Command::kHelp}, "Help (F1)");
}

}  // namespace

Layout MakeLayout(int width, int height, double aspect) {
  constexpr int kMargin = 18;
  Layout layout{};
  layout.toolbar = {0, 0, width, kToolbarHeight};
  layout.status = {0, std::max(height - kStatusHeight, kToolbarHeight), width,
                   std::max(height, kToolbarHeight + kStatusHeight)};
  layout.desk = {0, kToolbarHeight, width, layout.status.top};
  const int roomX = std::max(width - 2 * kMargin, 1);
  const int roomY = std::max(layout.desk.bottom - layout.desk.top - 2 * kMargin, 1);
  const int pageWidth = std::max(std::min(roomX, static_cast<int>(std::lround(roomY * aspect))), 1);
  const int pageHeight =
      std::max(std::min(roomY, static_cast<int>(std::lround(pageWidth / aspect))), 1);
  const int left = (width - pageWidth) / 2;
  const int top = kToolbarHeight + kMargin + (roomY - pageHeight) / 2;
  layout.page = {left, top, left + pageWidth, top + pageHeight};
  return layout;
}

std::vector<Button> MakeButtons(const Layout& layout, bool overlay) {
  std::vector<Button> buttons;
  Row tools(layout.toolbar, buttons);
  AddTools(tools);
  tools.Skip(kGap);
  AddStyles(tools);
  tools.Skip(kGap);
  AddCommands(tools, overlay);

  const StatusTexts texts = PlaceStatusTexts(layout);
  Row status(layout.status, buttons);
  status.MoveTo(texts.document.right);
  status.Add(kSmallSide, {Command::kNextDocument}, "Next document (Ctrl+Tab)");
  status.Add(kSmallSide, {Command::kNewDocument}, "New document (Ctrl+N)");
  status.MoveTo(texts.page.left - kSmallSide);
  status.Add(kSmallSide, {Command::kPreviousPage}, "Previous page (Page Up)");
  status.MoveTo(texts.page.right);
  status.Add(kSmallSide, {Command::kNextPage}, "Next page (Page Down)");
  status.Add(kSmallSide, {Command::kNewPage}, "New page (N)");
  buttons.push_back({texts.nickname, {Command::kNickname}, "Change the nickname (F2)"});
  return buttons;
}

StatusTexts PlaceStatusTexts(const Layout& layout) {
  const RECT& bar = layout.status;
  StatusTexts texts{};
  texts.document = {bar.left + kEdge, bar.top, bar.left + kEdge + kDocumentWidth, bar.bottom};
  const LONG pageLeft = texts.document.right + 3 * kSmallSide + kGap;
  texts.page = {pageLeft, bar.top, pageLeft + kPageWidth, bar.bottom};
  texts.nickname = {bar.right - kEdge - kNicknameWidth, bar.top + 4, bar.right - kEdge,
                    bar.bottom - 4};
  texts.message = {texts.page.right + 2 * kSmallSide + kGap, bar.top, texts.nickname.left - kGap,
                   bar.bottom};
  return texts;
}

const Button* FindButton(const std::vector<Button>& buttons, int x, int y) {
  for (const Button& button : buttons) {
    if (Contains(button.area, x, y)) {
      return &button;
    }
  }
  return nullptr;
}

}  // namespace whiteboard
