#include "support/ReplacedClock.h"

#include <atomic>

#include "platform/clock/Clock.h"

namespace {

std::atomic<ULONGLONG> ticks{0};

}  // namespace

ReplacedClock::ReplacedClock(ULONGLONG now) {
  Set(now);
  SetTickSource([] { return ticks.load(); });
}

ReplacedClock::~ReplacedClock() {
  SetTickSource(nullptr);
}

void ReplacedClock::Set(ULONGLONG now) {
  ticks = now;
}
