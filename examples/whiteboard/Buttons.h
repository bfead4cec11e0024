// Buttons.h - the buttons of the two bars, and what they stand for.
#pragma once

#include <string>
#include <vector>

#include "Layout.h"
#include "Tools.h"

namespace whiteboard {

struct Button {
  RECT area;
  Action action;
  std::string hint;  // shown while the pointer is on it
};

// The buttons of both bars; an overlay has one more.
std::vector<Button> MakeButtons(const Layout& layout, bool overlay);

// Where the status bar's texts go, between its buttons.
struct StatusTexts {
  RECT document;
  RECT page;
  RECT message;
  RECT nickname;
};
StatusTexts PlaceStatusTexts(const Layout& layout);

// The button there, or null.
const Button* FindButton(const std::vector<Button>& buttons, int x, int y);

}  // namespace whiteboard
