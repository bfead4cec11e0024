#include "platform/threads/WorkerPool.h"

#include <algorithm>
#include <utility>

#include "platform/threads/Processors.h"

namespace {

struct SharedPool {
  Mutex mutex;
  std::weak_ptr<WorkerPool> pool PARCHLET_GUARDED_BY(mutex);
};

}  // namespace

// More threads than processors would push each other's data out of the caches.
WorkerPool::WorkerPool(int threads)
    : threads(std::clamp(threads > 0 ? threads : UsableProcessors(), 1, kMostThreads)) {}

WorkerPool::~WorkerPool() {
  {
    const MutexLock lock(mutex);
    ending = true;
  }
  changed.notify_all();
  for (std::thread& helper : helpers) {
    helper.join();
  }
}

std::shared_ptr<WorkerPool> WorkerPool::Shared() {
  // Never destroyed: a host's static engine may outlive every other static object.
  static SharedPool& shared = *new SharedPool;
  const MutexLock lock(shared.mutex);
  std::shared_ptr<WorkerPool> pool = shared.pool.lock();
  if (pool == nullptr) {
    pool = std::make_shared<WorkerPool>(0);
    shared.pool = pool;
  }
  return pool;
}

void WorkerPool::Run(int items, const Work& newWork) {
  if (items < 2 || !Begin(items, newWork)) {
    for (int item = 0; item < items; ++item) {
      newWork(0, item);
    }
    return;
  }
  TakeItems(0, newWork, items);
  if (const std::exception_ptr thrown = End()) {
    std::rethrow_exception(thrown);
  }
}

bool WorkerPool::Begin(int items, const Work& newWork) {
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

void WorkerPool::StartHelpers() {
  try {
    helpers.reserve(static_cast<std::size_t>(threads));
    while (static_cast<int>(helpers.size()) < threads - 1) {
      helpers.emplace_back([this, worker = static_cast<int>(helpers.size()) + 1] { Help(worker); });
    }
  } catch (const std::exception&) {
    threads = static_cast<int>(helpers.size()) + 1;  // no more to be had; fewer do as well
  }
}

void WorkerPool::Help(int worker) {
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
    TakeItems(worker, *job, items);
    const MutexLock lock(mutex);
    if (--busy == 0) {
      changed.notify_all();
    }
  }
}

void WorkerPool::TakeItems(int worker, const Work& job, int items) {
  try {
    for (int item = nextItem++; item < items; item = nextItem++) {
      job(worker, item);
    }
  } catch (...) {
    nextItem = items;
    const MutexLock lock(mutex);
    failure = std::current_exception();
  }
}

std::exception_ptr WorkerPool::End() {
  const MutexLock lock(mutex);
  while (busy != 0) {
    changed.wait(mutex);
  }
  isRunning = false;
  return std::exchange(failure, nullptr);
}
