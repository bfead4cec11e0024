// X11Display.h - an X11 screen as the display that exports capture.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Display.h>
#include <parchlet/Platform.h>

// The screen of an X11 display, for SetDisplay; call SetDisplay with another one, or null, before
// you destroy it. It has a connection of its own. Monitors have the names and areas that RandR
// reports. A capture holds what the screen shows, blended windows included.
//
// A failed call returns false or nothing, and GetError says why; memory that runs out is thrown as
// std::bad_alloc. Every function may be called from any thread; calls wait for each other.
class PARCHLET_API X11Display final : public Display {
 public:
  // Connects to `displayName`; an empty name stands for the environment's DISPLAY. GetError returns
  // an empty text if that succeeded.
  explicit X11Display(const std::string& displayName);
  ~X11Display();
  X11Display(const X11Display&) = delete;
  X11Display& operator=(const X11Display&) = delete;

  // Returns why the constructor or the last call failed, in words; empty after a success.
  std::string GetError() const;

  // Asks the X server and returns the active monitors, the primary one first. A server without
  // RandR has one, named "screen".
  std::vector<DisplayMonitor> GetMonitors() const override;

  bool Capture(const RECT& area, std::uint32_t* pixels) override;

 private:
  struct State;
  std::unique_ptr<State> state;
};
