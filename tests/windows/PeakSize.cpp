#include "support/PeakSize.h"

#include <algorithm>

#include <windows.h>

#include <psapi.h>

// Wine counts memory only once it is used.
long PeakSize() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return static_cast<long>(std::max(counters.PeakPagefileUsage, counters.PeakWorkingSetSize) >> 20);
}
