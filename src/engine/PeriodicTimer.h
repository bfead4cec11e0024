#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

// Calls a task periodically on a thread of its own, which Stop joins. The owner's thread calls
// Start, Stop and the destructor; the task must not.
class PeriodicTimer {
 public:
  PeriodicTimer() = default;
  // Calls Stop.
  ~PeriodicTimer();
  PeriodicTimer(const PeriodicTimer&) = delete;
  PeriodicTimer& operator=(const PeriodicTimer&) = delete;

  // Starts a worker that repeats: wait `intervalMs` milliseconds (0 or less: not at all), then call
  // `task`. The period is the interval plus the time that the task takes. Does nothing if a worker
  // runs. Throws std::system_error if the system refuses a thread; the timer is then idle. A task
  // that throws ends the process.
  void Start(int intervalMs, std::function<void()> task);
  // Wakes the worker if it waits, lets a call of the task end, and joins the worker. Returns at
  // once if there is no worker or another Stop is under way.
  void Stop();

 private:
  void Run(int intervalMs, const std::function<void()>& task);
  // Waits. Returns false as soon as Stop is called, else true.
  bool WaitFor(int intervalMs);

  std::thread worker;  // written by Start, under `mutex`; used by the Stop that joins it
  std::mutex mutex;    // guards the two flags
  std::condition_variable stopSignal;
  bool isRunning = false;  // from Start until the worker is joined
  bool stopRequested = false;
};
