#pragma once

#include <parchlet/Platform.h>

// Puts a clock that only the test moves in the place of the engine's, for as long as it lives. One
// at a time.
class ReplacedClock {
 public:
  explicit ReplacedClock(ULONGLONG now);
  ~ReplacedClock();
  ReplacedClock(const ReplacedClock&) = delete;
  ReplacedClock& operator=(const ReplacedClock&) = delete;

  void Set(ULONGLONG now);
};
