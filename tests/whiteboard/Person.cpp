#include "whiteboard/Person.h"

#include <whiteboard/Brush.h>
#include <whiteboard/Layout.h>

Person::Person() : server({"-screen", "0", "2160x620x24"}) {
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
  std::vector<std::string> command = {"xdotool"};
  const auto go = [&command](POINT to) {
    command.insert(command.end(), {"mousemove", std::to_string(to.x), std::to_string(to.y)});
  };
  go(way.front());
  command.insert(command.end(), {"mousedown", button});
  for (const POINT& to : way) {
    go(to);
  }
  command.insert(command.end(), {"mouseup", button});
  return server.Run(command) == 0;
}

bool Person::Press(POINT at) {
  return Go(at) && server.Run({"xdotool", "mousedown", "1"}) == 0;
}

bool Person::Go(POINT to) {
  return server.Run({"xdotool", "mousemove", std::to_string(to.x), std::to_string(to.y)}) == 0;
}

bool Person::Release() {
  return server.Run({"xdotool", "mouseup", "1"}) == 0;
}

bool Person::PressKeys(POINT at, const std::vector<std::string>& keys) {
  std::vector<std::string> command = {"xdotool", "mousemove", std::to_string(at.x),
                                      std::to_string(at.y), "key"};
  command.insert(command.end(), keys.begin(), keys.end());
  return server.Run(command) == 0;
}

bool Person::Type(const std::string& text) {
  return server.Run({"xdotool", "type", "--delay", "1", text}) == 0;
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
