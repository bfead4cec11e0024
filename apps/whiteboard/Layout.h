// Layout.h - where things are in the whiteboard's window: page, bars and their buttons.
#pragma once

#include <string>
#include <vector>

#include <parchlet/Platform.h>

#include "whiteboard/Tools.h"

namespace whiteboard {

inline constexpr int kToolbarHeight = 56;
inline constexpr int kStatusHeight = 36;
// The smallest window: all buttons fit into the bars, and the page is large enough to draw on.
inline constexpr int kSmallestWidth = 1080;
inline constexpr int kSmallestHeight = 320;

// In pixels of the window's client area.
struct Layout {
  RECT toolbar;
  RECT desk;  // between the bars; the page is centred in it
  RECT page;  // never empty
  RECT status;
};

// Computes the layout of a window of that size. `aspect` is the page's width divided by its height;
// the page is as large as fits.
Layout MakeLayout(int width, int height, double aspect);

inline bool Contains(const RECT& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

struct Button {
  RECT area;
  Action action;
  std::string hint;  // shown while the pointer is on it
};

// Returns the buttons of both bars; an overlay has one more.
std::vector<Button> MakeButtons(const Layout& layout, bool overlay);

// Where the texts of the status bar go, between its buttons.
struct StatusTexts {
  RECT document;
  RECT page;
  RECT message;
  RECT nickname;
};
StatusTexts PlaceStatusTexts(const Layout& layout);

// Returns the button at that point, or null.
const Button* FindButton(const std::vector<Button>& buttons, int x, int y);

}  // namespace whiteboard
