#pragma once

#include <atomic>

#include "platform/clock/Clock.h"

// Puts a clock that only the test moves in the place of the engine's, for as long as it lives. One
// at a time.
class ReplacedClock {
 public:
  explicit ReplacedClock(ULONGLONG now) {
    Set(now);
    SetTickSource([] { return ticks.load(); });
  }
  ~ReplacedClock() { SetTickSource(nullptr); }
  ReplacedClock(const ReplacedClock&) = delete;
  ReplacedClock& operator=(const ReplacedClock&) = delete;

  void Set(ULONGLONG now) { ticks = now; }

 private:
  static inline std::atomic<ULONGLONG> ticks{0};
};
