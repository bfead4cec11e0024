// A few threads that share one job at a time.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "platform/threads/Mutex.h"

// Any thread may call Run. The helper threads start with the first job of more than one item and
// are joined by the destructor; a pool of one thread has none.
class WorkerPool {
 public:
  static constexpr int kMostThreads = 4;

  // Does one item. `worker`, below kMostThreads, names the thread within a Run; 0 is the caller.
  using Work = std::function<void(int worker, int item)>;

  // `threads` counts the caller's own, and is at most kMostThreads; 0 means one for each processor
  // that the caller may run on.
  explicit WorkerPool(int threads);
  ~WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  // Returns the pool that the process shares. It lives as long as someone holds it.
  static std::shared_ptr<WorkerPool> Shared();

  // Does the items 0 .. items-1 and returns when all are done. While another Run is in progress the
  // calling thread does all the work itself. If an item throws, those not yet begun are left out,
  // and Run throws one of the exceptions once every thread is done.
  void Run(int items, const Work& work);

 private:
  bool Begin(int items, const Work& newWork) PARCHLET_EXCLUDES(mutex);
  void StartHelpers();
  void Help(int worker) PARCHLET_EXCLUDES(mutex);
  void TakeItems(int worker, const Work& job, int items) PARCHLET_EXCLUDES(mutex);
  std::exception_ptr End() PARCHLET_EXCLUDES(mutex);

  // Only the Run in progress touches these two.
  int threads;
  std::vector<std::thread> helpers;

  Mutex mutex;
  std::condition_variable_any changed;
  bool isRunning PARCHLET_GUARDED_BY(mutex) = false;
  const Work* work PARCHLET_GUARDED_BY(mutex) = nullptr;
  int itemCount PARCHLET_GUARDED_BY(mutex) = 0;
  std::size_t busy PARCHLET_GUARDED_BY(mutex) = 0;  // helpers that are not done
  std::uint64_t round PARCHLET_GUARDED_BY(mutex) = 0;
  std::exception_ptr failure PARCHLET_GUARDED_BY(mutex);
  bool ending PARCHLET_GUARDED_BY(mutex) = false;
  std::atomic<int> nextItem{0};
};
