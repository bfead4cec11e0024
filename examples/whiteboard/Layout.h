// Layout.h - where things are in the whiteboard's window.
#pragma once

#include <parchlet/Platform.h>

namespace whiteboard {

inline constexpr int kToolbarHeight = 56;
inline constexpr int kStatusHeight = 36;
// Of a window: its bars hold all their buttons, and the page is large enough to draw on.
inline constexpr int kSmallestWidth = 1080;
inline constexpr int kSmallestHeight = 320;

// Pixels of the window's inside.
struct Layout {
  RECT toolbar;
  RECT desk;  // between the bars; the page lies in its middle
  RECT page;  // never empty
  RECT status;
};

// `aspect` is the page's width divided by its height; the page is as large as fits.
Layout MakeLayout(int width, int height, double aspect);

inline bool Contains(const RECT& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace whiteboard
