#pragma once

#include <parchlet/Display.h>

// The display that was set, or the desktop in memory. Any thread.
Display& CurrentDisplay();
