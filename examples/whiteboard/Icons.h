// Icons.h - the small drawings on the buttons.
#pragma once

#include <cairo.h>

#include "Tools.h"

namespace whiteboard {

// Draws the action's sign in the middle of a square of that side, in the painter's present colour.
void DrawIcon(cairo_t* painter, const Action& action, double x, double y, double side);

}  // namespace whiteboard
