// A few threads that share the painting of one frame.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace canvas {

// Owned by one Frame and entered by one thread at a time. The helpers start with the first job that
// is worth it and end with the pool; a pool of one thread never starts any.
class BandPool {
 public:
  // `threads`: the caller's own included; 0: one a processor, at most four.
  explicit BandPool(int threads);
  ~BandPool();
  BandPool(const BandPool&) = delete;
  BandPool& operator=(const BandPool&) = delete;

  int Threads() const { return threads; }

  // Runs work(thread, item) for every item below `items` and returns when all are done. `thread` is
  // below Threads(); items of one thread run one after the other. When an item throws, those not
  // yet begun are left out and one of the exceptions is thrown on once all threads have come back.
  void Run(int items, const std::function<void(int thread, int item)>& work);

 private:
  void Help(int thread);
  void TakeItems(int thread);
  void TakeItemsSafely(int thread);

  int threads;
  std::vector<std::thread> helpers;
  std::mutex mutex;  // guards what follows
  std::condition_variable changed;
  const std::function<void(int, int)>* work = nullptr;
  int itemCount = 0;
  int busy = 0;
  std::exception_ptr failure;
  std::uint64_t round = 0;
  bool ending = false;
  std::atomic<int> nextItem{0};
};

}  // namespace canvas
