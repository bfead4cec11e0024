#include "platform/graphics/canvas/BandPool.h"

#include <sched.h>

#include <algorithm>
#include <utility>

namespace canvas {
namespace {

constexpr int kMostThreads = 4;

// The processors that the calling thread may run on: two threads on one would push each other's
// bands out of its cache.
int UsableProcessors() {
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof usable, &usable) == 0) {
    return CPU_COUNT(&usable);
  }
  return static_cast<int>(std::thread::hardware_concurrency());  // more than a set has room for
}

int DefaultThreads() {
  return std::clamp(UsableProcessors(), 1, kMostThreads);
}

struct SharedPool {
  Mutex mutex;
  std::weak_ptr<BandPool> pool PARCHLET_GUARDED_BY(mutex);
};

}  // namespace

BandPool::BandPool(int threads) : threads(threads > 0 ? threads : DefaultThreads()) {}

BandPool::~BandPool() {
  {
    const MutexLock lock(mutex);
    ending = true;
  }
  changed.notify_all();
  for (const auto& helper : helpers) {
    helper->thread.join();
  }
}

std::shared_ptr<BandPool> BandPool::Shared() {
  // Never destroyed: a host's static engine may outlive every other static object.
  static SharedPool& shared = *new SharedPool;
  const MutexLock lock(shared.mutex);
  std::shared_ptr<BandPool> pool = shared.pool.lock();
  if (pool == nullptr) {
    pool = std::make_shared<BandPool>(0);
    shared.pool = pool;
  }
  return pool;
}

void BandPool::Run(int items, raster::Rasterizer& own, const Work& newWork) {
  if (items < 2 || !Begin(items, newWork)) {
    for (int item = 0; item < items; ++item) {
      newWork(own, item);
    }
    return;
  }
  TakeItems(own, newWork, items);
  if (const std::exception_ptr thrown = End()) {
    std::rethrow_exception(thrown);
  }
}

bool BandPool::Begin(int items, const Work& newWork) {
  {
    const MutexLock lock(mutex);
    if (isRunning) {
      return false;
    }
    isRunning = true;
  }
  StartHelpers();
  {
    const MutexLock lock(mutex);
    work = &newWork;
    itemCount = items;
    nextItem = 0;
    busy = helpers.size();
    ++round;
  }
  changed.notify_all();
  return true;
}

void BandPool::StartHelpers() {
  try {
    helpers.reserve(static_cast<std::size_t>(threads));
    while (static_cast<int>(helpers.size()) < threads - 1) {
      auto helper = std::make_unique<Helper>();
      raster::Rasterizer& rasterizer = helper->rasterizer;
      helper->thread = std::thread([this, &rasterizer] { Help(rasterizer); });
      helpers.push_back(std::move(helper));
    }
  } catch (const std::exception&) {
    threads = static_cast<int>(helpers.size()) + 1;  // the machine gives no more; fewer do as well
  }
}

void BandPool::Help(raster::Rasterizer& rasterizer) {
  std::uint64_t seen = 0;
  for (;;) {
    const Work* job = nullptr;
    int items = 0;
    {
      const MutexLock lock(mutex);
      while (!ending && round == seen) {
        changed.wait(mutex);
      }
      if (ending) {
        return;
      }
      seen = round;
      job = work;
      items = itemCount;
    }
    TakeItems(rasterizer, *job, items);
    const MutexLock lock(mutex);
    if (--busy == 0) {
      changed.notify_all();
    }
  }
}

void BandPool::TakeItems(raster::Rasterizer& rasterizer, const Work& job, int items) {
  try {
    for (int item = nextItem++; item < items; item = nextItem++) {
      job(rasterizer, item);
    }
  } catch (...) {
    nextItem = items;
    const MutexLock lock(mutex);
    failure = std::current_exception();
  }
}

std::exception_ptr BandPool::End() {
  const MutexLock lock(mutex);
  while (busy != 0) {
    changed.wait(mutex);
  }
  isRunning = false;
  return std::exchange(failure, nullptr);
}

}  // namespace canvas
