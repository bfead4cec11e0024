// Person.h - somebody at a desktop with a whiteboard.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"
#include "whiteboard/Brush.h"
#include "whiteboard/Layout.h"
#include "x11/XTest.h"

// Windows are that large.
inline constexpr int kWindowWidth = 1080;
inline constexpr int kWindowHeight = 620;

// A test by somebody who looks at the screen, moves the pointer and presses keys.
class Person : public XTest {
 protected:
  Person() : XTest("-screen 0 2160x620x24") {}

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
    return Press(way.front(), button) && Go(way, "mouseup " + button);
  }
  bool Press(POINT at, const std::string& button = "1") { return Go({at}, "mousedown " + button); }
  // Presses a key, by the name that xdotool knows, with the pointer at that place.
  bool PressKey(POINT at, const std::string& key) { return Go({at}, "key " + key); }
  // Moves the pointer that way; then does what those words tell xdotool.
  bool Go(const std::vector<POINT>& way, const std::string& then = {}) const {
    std::string words;
    for (const POINT& to : way) {
      words += " mousemove " + std::to_string(to.x) + " " + std::to_string(to.y);
    }
    return server.Run("xdotool" + words + " " + then) == 0;
  }

  // Quits the program and returns its exit code, which tells of a sanitizer's findings as well.
  // A key that comes while the program gives the pointer away reaches nobody: it is pressed again.
  int Quit(POINT at = {40, 40}) {
    const bool hasEnded =
        Eventually([&] { return program->HasEnded() || (PressKey(at, "ctrl+q"), false); });
    return hasEnded ? program->WaitForEnd() : -1;
  }

  bool Sees(POINT at, std::uint32_t color) const {
    return Eventually([&] { return IsNear(client->ColorAt(at.x, at.y), color); });
  }

  TemporaryFolder folder;
  std::unique_ptr<Process> program;
};
