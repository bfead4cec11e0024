// Pacer.h - holds points back to a given pace.
#pragma once

#include <chrono>
#include <cstdint>

namespace replay {

// One thread's own.
class Pacer {
 public:
  // `pointsPerSecond` 0: holds nothing back.
  explicit Pacer(double pointsPerSecond);

  // Counts time and points from now on.
  void Restart();

  // Sleeps until the next point is due. Points that are late are not held back until the pace is
  // kept again.
  void AwaitNext();

 private:
  double pointsPerSecond;
  std::chrono::steady_clock::time_point start;
  std::uint64_t points = 0;
};

}  // namespace replay
