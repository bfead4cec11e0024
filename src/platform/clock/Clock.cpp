#include "platform/clock/Clock.h"

#include <atomic>
#include <chrono>

namespace {

ULONGLONG SystemTicks() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<ULONGLONG>(std::chrono::duration_cast<milliseconds>(now).count());
}

std::atomic<TickSource> tickSource{&SystemTicks};

}  // namespace

ULONGLONG GetTickCount64() {
  return tickSource.load(std::memory_order_relaxed)();
}

void SetTickSource(TickSource source) {
  tickSource.store(source != nullptr ? source : &SystemTicks, std::memory_order_relaxed);
}
