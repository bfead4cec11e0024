#include "Pacer.h"

#include <algorithm>
#include <thread>

namespace replay {

Pacer::Pacer(double pointsPerSecond)
    : pointsPerSecond(pointsPerSecond), start(std::chrono::steady_clock::now()) {}

void Pacer::Restart() {
  start = std::chrono::steady_clock::now();
  points = 0;
}

void Pacer::AwaitNext() {
  if (pointsPerSecond <= 0) {
    return;
  }
  // A century holds back as well as for ever does and still is a time.
  constexpr double kLongestSeconds = 3e9;
  const double due = std::min(static_cast<double>(points) / pointsPerSecond, kLongestSeconds);
  ++points;
  std::this_thread::sleep_until(start +
                                std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                    std::chrono::duration<double>(due)));
}

}  // namespace replay
