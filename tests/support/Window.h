// The window that tests paint into: in memory, or on Windows one of the system's own.
#pragma once

#if defined(_WIN32)
#include "windows/NativeWindow.h"
#else
#include <parchlet/LayeredWindow.h>
#include <parchlet/MemoryWindow.h>
#endif
