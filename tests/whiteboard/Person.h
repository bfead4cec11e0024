// Person.h - somebody at a desktop with a whiteboard.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <parchlet/Platform.h>

#include "support/TemporaryFolder.h"
#include "x11/Process.h"
#include "x11/XClient.h"
#include "x11/XServer.h"

// Windows are that large.
inline constexpr int kWindowWidth = 1080;
inline constexpr int kWindowHeight = 620;

inline constexpr std::uint32_t kRed = 0xE03131;
inline constexpr std::uint32_t kPaper = 0xFFFFFF;

// Owns a desktop, its compositor and the whiteboard on it; looks at the screen, and moves the
// pointer and presses keys as a person does.
class Person {
 public:
  Person();

  // Why there is no desktop; empty when there is one.
  const std::string& Missing() const { return server.Missing(); }
  // Starts the whiteboard and waits until it can be drawn on: until a bar shows at that place.
  // False when it does not come up.
  bool Start(const std::vector<std::string>& options = {}, POINT bar = {4, 4});

  // Drags the pointer, the first button held, along places of the screen.
  bool Drag(const std::vector<POINT>& way, const std::string& button = "1");
  bool Press(POINT at);
  bool Go(const std::vector<POINT>& way);
  bool Release();
  // Presses keys, by the names that xdotool knows, with the pointer at that place.
  bool PressKeys(POINT at, const std::vector<std::string>& keys);
  bool Type(const std::string& text);

  // Quits the program and gives its exit code, which tells of what a sanitizer found in it as well.
  int Quit();

  // The page's place on the screen in a window of that size and place.
  static RECT PageIn(const RECT& window, double aspect = 1.6);
  // The pages of the first window and of the peer's.
  static RECT Page();
  static RECT PeerPage();
  // The place on a page at those fractions.
  static POINT At(const RECT& page, double x, double y);

  bool Sees(POINT at, std::uint32_t color) const;
  Screenshot Look(const RECT& area) const { return desk->Look(area); }

  XServer& Server() { return server; }
  XClient& Desk() { return *desk; }
  Process& Program() { return *program; }
  const TemporaryFolder& Folder() const { return folder; }

 private:
  // Has xdotool do what these words say.
  bool Point(std::vector<std::string> words);

  TemporaryFolder folder;
  XServer server;
  std::unique_ptr<XClient> desk;  // none without a server
  std::unique_ptr<Process> program;
};
