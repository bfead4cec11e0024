#include "platform/threads/Processors.h"

#include <sched.h>

#include <thread>

int UsableProcessors() {
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof usable, &usable) == 0) {
    return CPU_COUNT(&usable);
  }
  return static_cast<int>(
      std::thread::hardware_concurrency());  // the machine has more than a set has room for
}
