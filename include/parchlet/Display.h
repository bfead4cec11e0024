// Display.h - off Windows: the screen that exports capture.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/Platform.h>

#if !defined(_WIN32)

struct DisplayMonitor {
  std::string name;  // UTF-8, at most 31 units of UTF-16; exports take it as their display's name
  RECT area;         // screen pixels
};

// The screen of the process. A desktop adapter or a host implements it; without one there is a
// desktop in memory.
//
// Both functions are called on the thread that calls SavePage or SaveDocument, while the engine
// holds the lock of the page that is exported: that page is not painted meanwhile. They must not
// call the engine. What they throw is contained: GetMonitors then counts as a display without
// monitors, Capture as a capture that failed.
class PARCHLET_API Display {
 public:
  // Returns the monitors; the first one is the main monitor. One export may ask several times.
  virtual std::vector<DisplayMonitor> GetMonitors() const = 0;
  // Writes what the screen shows in `area`, layered windows included: one 0xAARRGGBB for each pixel
  // of the area, row by row, top row first. Alpha is ignored. `area` is not empty and lies within
  // one monitor. Returns false if it cannot be captured; `pixels` may then hold anything.
  virtual bool Capture(const RECT& area, std::uint32_t* pixels) = 0;

 protected:
  ~Display() = default;
};

// Replaces the display of the process; null brings the desktop in memory back. `display` is not
// owned and must outlive its last use. Any thread, but not during an export.
PARCHLET_API void SetDisplay(Display* display);

// Sets the monitors and the background of the desktop in memory. It shows the background, black
// outside `backgroundArea`, and over it the last frame of every MemoryWindow, the newest window on
// top. `background` holds the pixels of `backgroundArea` as Capture writes them and is copied; null
// for none. At first the desktop is one black monitor "MEMORY-1" at (0, 0)-(1920, 1080). Any
// thread.
PARCHLET_API void SetMemoryDesktop(const std::vector<DisplayMonitor>& monitors,
                                   const std::uint32_t* background, const RECT& backgroundArea);

#endif
