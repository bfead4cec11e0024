#include "engine/PeriodicTimer.h"

#include <chrono>
#include <utility>

PeriodicTimer::~PeriodicTimer() {
  Stop();
}

void PeriodicTimer::Start(int intervalMs, std::function<void()> task) {
  const std::lock_guard lock(mutex);
  if (!isRunning) {
    worker = std::thread([this, intervalMs, task = std::move(task)] { Run(intervalMs, task); });
    isRunning = true;
  }
}

void PeriodicTimer::Stop() {
  {
    const std::lock_guard lock(mutex);
    if (!isRunning || stopRequested) {
      return;
    }
    stopRequested = true;
  }
  stopSignal.notify_one();
  worker.join();
  const std::lock_guard lock(mutex);
  isRunning = false;
  stopRequested = false;
}

void PeriodicTimer::Run(int intervalMs, const std::function<void()>& task) {
  while (WaitFor(intervalMs)) {
    task();
  }
}

bool PeriodicTimer::WaitFor(int intervalMs) {
  // A steady clock: if the time of day is set back, refreshing goes on.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(intervalMs);
  std::unique_lock lock(mutex);
  return !stopSignal.wait_until(lock, deadline, [this] { return stopRequested; });
}
