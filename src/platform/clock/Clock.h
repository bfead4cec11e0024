// The layer's clocks. Engine code reads time through GetTickCount64 and GetLocalTime alone.
#pragma once

#include <parchlet/Platform.h>

struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;      // 1 .. 12
  WORD wDayOfWeek;  // 0 is Sunday
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};

// Writes the date and time of day in the system's time zone. Any thread.
void GetLocalTime(SYSTEMTIME* time);

using TickSource = ULONGLONG (*)();
using LocalTimeSource = SYSTEMTIME (*)();

// Replaces the clock of GetTickCount64, in tests; null restores the system's. Any thread.
void SetTickSource(TickSource source);
// The same for GetLocalTime.
void SetLocalTimeSource(LocalTimeSource source);
