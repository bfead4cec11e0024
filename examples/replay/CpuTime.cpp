#include "CpuTime.h"

#include <ctime>

namespace replay {

namespace {

double ReadClock(clockid_t clock) {
  constexpr double kNanosecond = 1e-9;
  timespec time = {};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + kNanosecond * static_cast<double>(time.tv_nsec);
}

double ReadOthers() {
  return ReadClock(CLOCK_PROCESS_CPUTIME_ID) - ReadClock(CLOCK_THREAD_CPUTIME_ID);
}

}  // namespace

OtherThreadsCpuTime::OtherThreadsCpuTime() : start(ReadOthers()) {}

double OtherThreadsCpuTime::Seconds() const {
  return ReadOthers() - start;
}

}  // namespace replay
