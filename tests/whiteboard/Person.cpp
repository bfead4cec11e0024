#include "whiteboard/Person.h"

#include <whiteboard/Brush.h>
#include <whiteboard/Layout.h>

namespace {

// Words for xdotool.
std::vector<std::string> MovesTo(const std::vector<POINT>& way) {
  std::vector<std::string> words;
  for (const POINT& to : way) {
    words.insert(words.end(), {"mousemove", std::to_string(to.x), std::to_string(to.y)});
  }
  return words;
}

}  // namespace

Person::Person() : server(ScreenOptions("2160x620")) {
  if (server.Missing().empty()) {
    desk = std::make_unique<XClient>(server.Display());
  }
}

bool Person::Start(const std::vector<std::string>& options, POINT bar) {
  if (!server.StartCompositor()) {
    return false;
  }
  std::vector<std::string> command = {
      WHITEBOARD_BINARY, "--size",
      std::to_string(kWindowWidth) + "x" + std::to_string(kWindowHeight), "--export-folder",
      folder.Path().string()};
  command.insert(command.end(), options.begin(), options.end());
  program = std::make_unique<Process>(server.OnDisplay(command));
  return Sees(bar, whiteboard::look::kBar);
}

bool Person::Drag(const std::vector<POINT>& way, const std::string& button) {
  std::vector<std::string> command = MovesTo({way.front()});
  command.insert(command.end(), {"mousedown", button});
  const std::vector<std::string> moves = MovesTo(way);
  command.insert(command.end(), moves.begin(), moves.end());
  command.insert(command.end(), {"mouseup", button});
  return Point(command);
}

bool Person::Press(POINT at) {
  return Go({at}) && Point({"mousedown", "1"});
}

bool Person::Go(const std::vector<POINT>& way) {
  return Point(MovesTo(way));
}

bool Person::Point(std::vector<std::string> words) {
  words.insert(words.begin(), "xdotool");
  return server.Run(words) == 0;
}

bool Person::Release() {
  return Point({"mouseup", "1"});
}

bool Person::PressKeys(POINT at, const std::vector<std::string>& keys) {
  std::vector<std::string> command = MovesTo({at});
  command.emplace_back("key");
  command.insert(command.end(), keys.begin(), keys.end());
  return Point(command);
}

bool Person::Type(const std::string& text) {
  return Point({"type", "--delay", "1", text});
}

int Person::Quit() {
  return PressKeys(At(Page(), 0.5, 0.5), {"ctrl+q"}) ? program->WaitForEnd() : -1;
}

RECT Person::PageIn(const RECT& window, double aspect) {
  const RECT page =
      whiteboard::MakeLayout(window.right - window.left, window.bottom - window.top, aspect).page;
  return {window.left + page.left, window.top + page.top, window.left + page.right,
          window.top + page.bottom};
}

RECT Person::Page() {
  return PageIn({0, 0, kWindowWidth, kWindowHeight});
}

RECT Person::PeerPage() {
  return PageIn({kWindowWidth, 0, 2 * kWindowWidth, kWindowHeight});
}

POINT Person::At(const RECT& page, double x, double y) {
  return {page.left + static_cast<LONG>((page.right - page.left) * x),
          page.top + static_cast<LONG>((page.bottom - page.top) * y)};
}

bool Person::Sees(POINT at, std::uint32_t color) const {
  return desk->WaitForColor(at.x, at.y, color);
}
