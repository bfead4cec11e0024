// The clocks that tests replace: the system's, as the engine sees them.
#pragma once

#include <parchlet/Platform.h>

using TickSource = ULONGLONG (*)();
using LocalTimeSource = SYSTEMTIME (*)();

// Null restores the system's. Any thread.
void SetTickSource(TickSource source);
void SetLocalTimeSource(LocalTimeSource source);
