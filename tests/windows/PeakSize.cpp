#include "support/PeakSize.h"

#include <windows.h>

#include <psapi.h>

long PeakSize() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return static_cast<long>(counters.PeakPagefileUsage >> 20);
}
