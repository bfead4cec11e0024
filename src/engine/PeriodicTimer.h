#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

// Calls a task again and again on a thread of its own. Start, Stop and the destructor belong to the
// owner's thread and must not be called from within the task; the timer outlives its worker, which
// is never joined but handed over: the worker sets `idle` under `mutex` and signals.
class PeriodicTimer {
 public:
  PeriodicTimer() = default;
  // Stops first.
  ~PeriodicTimer();
  PeriodicTimer(const PeriodicTimer&) = delete;
  PeriodicTimer& operator=(const PeriodicTimer&) = delete;

  // Starts a worker that sleeps `intervalMs` milliseconds (none below 1) and calls `task`, over and
  // over; the period is the interval plus what the task takes. Nothing when a worker runs. Throws
  // std::system_error when the system refuses a thread, and stays idle then. A task that throws
  // ends the process.
  void Start(int intervalMs, std::function<void()> task);
  // Returns when the worker has ended its last call and will make no other: within one interval and
  // one call. At once when there is no worker or another Stop is under way.
  void Stop();

 private:
  void Run(int intervalMs, const std::function<void()>& task);

  std::atomic<bool> idle{true};
  std::atomic<bool> stopRequested{false};
  std::mutex mutex;  // the hand-over of `idle`
  std::condition_variable stoppedSignal;
};
