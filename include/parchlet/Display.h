// Display.h - off Windows: the screen that exports capture.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/Platform.h>

#if !defined(_WIN32)

struct DisplayMonitor {
  std::string name;  // UTF-8, at most 31 units of UTF-16; the display name that exports are given
  RECT area;         // screen pixels
};

// The screen of the process. A desktop adapter or a host implements it; without one there is a
// desktop in memory. Called on the thread that makes the export, which meanwhile holds a page's
// lock, so it must not call the engine.
class PARCHLET_API Display {
 public:
  // The monitors; the first one is the main monitor.
  virtual std::vector<DisplayMonitor> GetMonitors() const = 0;
  // Writes what the screen shows in `area`, layered windows included: 0xAARRGGBB, row by row, top
  // row first, the area's width times its height of them. Alpha is not looked at. `area` is not
  // empty and lies within one monitor. False when it cannot be captured; the pixels do not count
  // then.
  virtual bool Capture(const RECT& area, std::uint32_t* pixels) = 0;

 protected:
  ~Display() = default;
};

// Puts a display in place of the present one; null brings the desktop in memory back. Not owned: it
// must outlive its last use. Any thread, but not while an export is under way.
PARCHLET_API void SetDisplay(Display* display);

// Lays the desktop in memory out anew. It shows the background, black outside its area, and over it
// every MemoryWindow with its last frame, the one made last on top. `background` holds the pixels
// of `backgroundArea` as Capture writes them and is copied; null for none. At first the desktop is
// one black monitor "MEMORY-1" at (0, 0)-(1920, 1080). Any thread.
PARCHLET_API void SetMemoryDesktop(const std::vector<DisplayMonitor>& monitors,
                                   const std::uint32_t* background, const RECT& backgroundArea);

#endif
