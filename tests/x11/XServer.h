// XServer.h - a real X server without a screen, with a compositor and a pointer on wish.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"
#include "x11/Process.h"

// An Xvfb under a free display number, which it finds itself. It dies with this object.
class XServer {
 public:
  // `options` go to the server after those that are always given.
  explicit XServer(const std::vector<std::string>& options = {});
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  // Why there is none; empty when it runs.
  const std::string& Missing() const { return missing; }
  const std::string& Display() const { return display; }
  // The same as another machine would name it; for a server that was told to listen to TCP.
  std::string RemoteDisplay() const { return "127.0.0.1" + display; }

  // Runs a compositor on it; false when none came up.
  bool StartCompositor();
  // Runs a window manager on it; false when none came up.
  bool StartWindowManager();
  // Runs a program on it to its end; its exit code, or -1 as RunToEnd.
  int Run(const std::vector<std::string>& command) const;
  // The command that runs a program on it.
  std::vector<std::string> OnDisplay(const std::vector<std::string>& command) const;
  // Moves the pointer to that place of the screen, and presses and releases its first button.
  bool Click(int x, int y);
  // Changes its monitors with such words: xrandr's options. False when that fails.
  bool ChangeMonitors(const std::vector<std::string>& words);
  // Ends it from one moment to the next.
  void Kill();

 private:
  std::unique_ptr<Process> server;
  std::unique_ptr<Process> compositor;
  std::unique_ptr<Process> windowManager;
  TemporaryFolder folder;  // for settings
  std::string missing;
  std::string display;
};

// What starts a server with a screen of that size, which shares no memory unless asked to.
std::vector<std::string> ScreenOptions(const std::string& size, bool sharesMemory = true);

// Waits for something that another process is about to do; false when it does not come.
bool Eventually(const std::function<bool()>& holds);

// Ends the test when there is no X server: skipped on a developer's machine without one, failed in
// CI, which installs one.
#define NEEDS_X_SERVER(server)            \
  if (!(server).Missing().empty()) {      \
    if (std::getenv("CI") != nullptr) {   \
      GTEST_FAIL() << (server).Missing(); \
    }                                     \
    GTEST_SKIP() << (server).Missing();   \
  }                                       \
  static_assert(true)
