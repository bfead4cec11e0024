// X11Display.h - an X11 screen as the display that exports capture.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Display.h>
#include <parchlet/Platform.h>

// The screen of an X11 display, on a connection of its own, to give to SetDisplay; take it away
// there before it is destroyed. Monitors have the names and areas that RandR gives them. A capture
// holds what the screen shows, blended windows included.
//
// Failure is a false or empty result and a text, but for memory that runs out. Threads: every
// function may be called from any thread; calls wait for each other.
class PARCHLET_API X11Display final : public Display {
 public:
  // Opens a connection to `displayName`, or for an empty name to that in the environment's DISPLAY.
  // GetError tells whether that succeeded.
  explicit X11Display(const std::string& displayName);
  ~X11Display();
  X11Display(const X11Display&) = delete;
  X11Display& operator=(const X11Display&) = delete;

  // Why the screen cannot be had or the last call failed, in words; empty after a success.
  std::string GetError() const;

  // The active monitors, asked from the X server, the primary one first. One named "screen" on a
  // server that knows no monitors.
  std::vector<DisplayMonitor> GetMonitors() const override;

  bool Capture(const RECT& area, std::uint32_t* pixels) override;

 private:
  struct State;
  std::unique_ptr<State> state;
};
