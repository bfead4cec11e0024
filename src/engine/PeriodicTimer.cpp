#include "engine/PeriodicTimer.h"

#include <chrono>
#include <thread>
#include <utility>

PeriodicTimer::~PeriodicTimer() {
  Stop();
}

void PeriodicTimer::Start(int intervalMs, std::function<void()> task) {
  if (!idle.exchange(false)) {
    return;
  }
  try {
    std::thread([this, intervalMs, task = std::move(task)] { Run(intervalMs, task); }).detach();
  } catch (...) {
    idle = true;
    throw;
  }
}

void PeriodicTimer::Stop() {
  if (idle || stopRequested.exchange(true)) {
    return;
  }
  std::unique_lock lock(mutex);
  stoppedSignal.wait(lock, [this] { return idle.load(); });
  stopRequested = false;
}

void PeriodicTimer::Run(int intervalMs, const std::function<void()>& task) {
  while (!stopRequested) {
    if (intervalMs > 0) {
      // Not the system's time of day: setting that back would freeze the page.
      std::this_thread::sleep_until(std::chrono::steady_clock::now() +
                                    std::chrono::milliseconds(intervalMs));
    }
    task();
  }
  const std::lock_guard lock(mutex);
  idle = true;
  stoppedSignal.notify_one();
}
