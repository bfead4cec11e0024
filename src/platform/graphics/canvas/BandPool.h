// A few threads that share the painting of a large frame.
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

#include "platform/graphics/raster/Rasterizer.h"

namespace canvas {

// Any thread may enter. The helpers start with the first job that is worth it and end with the
// pool; a pool of one thread never starts any.
class BandPool {
 public:
  using Work = std::function<void(raster::Rasterizer& rasterizer, int item)>;

  // `threads`: the caller's own included; 0: one for each processor that the caller may run on, at
  // most four.
  explicit BandPool(int threads);
  ~BandPool();
  BandPool(const BandPool&) = delete;
  BandPool& operator=(const BandPool&) = delete;

  // The one that all surfaces of the process share; it lives for as long as somebody holds it.
  static std::shared_ptr<BandPool> Shared();

  // Runs work(rasterizer, item) for every item below `items` and returns when all are done. The
  // calling thread uses `own`. While another Run is under way it does all the work itself. When an
  // item throws, those not yet begun are left out and one of the exceptions is thrown on once all
  // threads have come back.
  void Run(int items, raster::Rasterizer& own, const Work& work);

 private:
  struct Helper {
    raster::Rasterizer rasterizer;
    std::thread thread;
  };

  bool Begin(int items, const Work& newWork) PARCHLET_EXCLUDES(mutex);
  void StartHelpers();
  void Help(raster::Rasterizer& rasterizer) PARCHLET_EXCLUDES(mutex);
  void TakeItems(raster::Rasterizer& rasterizer, const Work& job, int items)
      PARCHLET_EXCLUDES(mutex);
  std::exception_ptr End() PARCHLET_EXCLUDES(mutex);

  // The Run under way alone touches these two.
  int threads;
  std::vector<std::unique_ptr<Helper>> helpers;

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

}  // namespace canvas
