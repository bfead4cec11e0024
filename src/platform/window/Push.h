// Showing a surface in a window.
#pragma once

#include "platform/System.h"

// Shows the pixels selected into `surface`, from its origin, in a layered window of the host's, at
// the window's place and size, which stay as they are; what lies past the surface is transparent.
// Returns false for a window that is gone, and when the window did not take the frame.
bool PushToWindow(HWND window, HDC surface);
