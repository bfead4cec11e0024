// The layer's clocks. Engine code reads time through GetTickCount64 alone.
#pragma once

#include <parchlet/Platform.h>

using TickSource = ULONGLONG (*)();

// Replaces what GetTickCount64 gives, in tests; null brings the system's clock back. Any thread.
void SetTickSource(TickSource source);
