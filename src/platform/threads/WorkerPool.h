// A few threads that share one piece of work at a time.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include <parchlet/Mutex.h>

// Any thread may enter. The helpers start with the first job that is worth it and end with the
// pool; a pool of one thread never starts any.
class WorkerPool {
 public:
  static constexpr int kMostThreads = 4;

  // Does an item. `worker`, below kMostThreads, is each thread's own within a Run; 0 is the one
  // that called it.
  using Work = std::function<void(int worker, int item)>;

  // `threads`: the caller's own included, at most kMostThreads; 0: one for each processor that the
  // caller may run on.
  explicit WorkerPool(int threads);
  ~WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  // The one that all of the process shares; it lives for as long as somebody holds it.
  static std::shared_ptr<WorkerPool> Shared();

  // Does every item below `items` and returns when all are done. While another Run is under way the
  // calling thread does all the work itself. When an item throws, those not yet begun are left out
  // and one of the exceptions is thrown on once all threads have come back.
  void Run(int items, const Work& work);

 private:
  bool Begin(int items, const Work& newWork) PARCHLET_EXCLUDES(mutex);
  void StartHelpers();
  void Help(int worker) PARCHLET_EXCLUDES(mutex);
  void TakeItems(int worker, const Work& job, int items) PARCHLET_EXCLUDES(mutex);
  std::exception_ptr End() PARCHLET_EXCLUDES(mutex);

  // The Run under way alone touches these two.
  int threads;
  std::vector<std::thread> helpers;

  Mutex mutex;
  std::condition_variable_any changed;
  bool isRunning PARCHLET_GUARDED_BY(mutex) = false;
  const Work* work PARCHLET_GUARDED_BY(mutex) = nullptr;
  int itemCount PARCHLET_GUARDED_BY(mutex) = 0;
  std::size_t busy PARCHLET_GUARDED_BY(mutex) = 0;  // helpers that have not come back
  std::uint64_t round PARCHLET_GUARDED_BY(mutex) = 0;
  std::exception_ptr failure PARCHLET_GUARDED_BY(mutex);
  bool ending PARCHLET_GUARDED_BY(mutex) = false;
  std::atomic<int> nextItem{0};
};
