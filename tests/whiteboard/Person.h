// Person.h - somebody at a desktop with a whiteboard.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"
#include "whiteboard/Brush.h"
#include "whiteboard/Layout.h"
#include "x11/XServer.h"

// Windows are that large.
inline constexpr int kWindowWidth = 1080;
inline constexpr int kWindowHeight = 620;

// Owns a desktop, its compositor and the whiteboard on it; looks at the screen, and moves the
// pointer and presses keys as a person does.
class Person {
 public:
  Person() {
    if (!server.IsMissing()) {
      desk = std::make_unique<XClient>(server.Display());
    }
  }

  bool IsMissing() const { return server.IsMissing(); }

  // Starts the whiteboard and waits until it can be drawn on: until a bar shows at that place.
  // False when it does not come up.
  bool Start(const std::string& options = {}, POINT bar = {4, 4}) {
    if (!server.StartCompositor()) {
      return false;
    }
    program = server.Start(WHITEBOARD_BINARY " --size " + std::to_string(kWindowWidth) + "x" +
                           std::to_string(kWindowHeight) + " --export-folder " +
                           folder.Path().string() + " " + options);
    return Sees(bar, whiteboard::look::kBar);
  }

  // Drags the pointer, that button held, along places of the screen.
  bool Drag(const std::vector<POINT>& way, const std::string& button = "1") {
    return Do(MovesTo({way.front()}) + "mousedown " + button) &&
           Do(MovesTo(way) + "mouseup " + button);
  }
  bool Press(POINT at) { return Do(MovesTo({at}) + "mousedown 1"); }
  bool Go(const std::vector<POINT>& way) { return Do(MovesTo(way)); }
  bool Release() { return Do("mouseup 1"); }
  // Presses a key, by the name that xdotool knows, with the pointer at that place.
  bool PressKey(POINT at, const std::string& key) { return Do(MovesTo({at}) + "key " + key); }

  // Quits the program and returns its exit code, which tells of what a sanitizer found in it as
  // well.
  // A key that comes while the program gives the pointer away reaches nobody: it is pressed again.
  int Quit(POINT at = {40, 40}) {
    const bool hasEnded =
        Eventually([&] { return program->HasEnded() || (PressKey(at, "ctrl+q"), false); });
    return hasEnded ? program->WaitForEnd() : -1;
  }

  bool Sees(POINT at, std::uint32_t color) const {
    return Eventually([&] { return IsNear(desk->ColorAt(at.x, at.y), color); });
  }

  TemporaryFolder folder;
  XServer server{"-screen 0 2160x620x24"};
  std::unique_ptr<XClient> desk;  // none without a server
  std::unique_ptr<Process> program;

 private:
  // Words for xdotool.
  static std::string MovesTo(const std::vector<POINT>& way) {
    std::string words;
    for (const POINT& to : way) {
      words += "mousemove " + std::to_string(to.x) + " " + std::to_string(to.y) + " ";
    }
    return words;
  }
  bool Do(const std::string& words) const { return server.Run("xdotool " + words) == 0; }
};
