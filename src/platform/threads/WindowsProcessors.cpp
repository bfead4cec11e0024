#include <windows.h>

#include <bit>
#include <thread>

#include "platform/threads/Processors.h"

int UsableProcessors() {
  DWORD_PTR usable = 0;
  DWORD_PTR system = 0;
  // Nothing for a process with threads in several groups of processors.
  if (GetProcessAffinityMask(GetCurrentProcess(), &usable, &system) != 0 && usable != 0) {
    return std::popcount(usable);
  }
  return static_cast<int>(std::thread::hardware_concurrency());
}
