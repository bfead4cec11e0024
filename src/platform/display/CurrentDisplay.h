#pragma once

#include <parchlet/Display.h>

// Returns the display that was set, or the desktop in memory. Any thread.
Display& CurrentDisplay();
