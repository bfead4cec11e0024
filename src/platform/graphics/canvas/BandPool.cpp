#include "platform/graphics/canvas/BandPool.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace canvas {
namespace {

constexpr int kMostThreads = 4;

int DefaultThreads() {
  return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostThreads);
}

}  // namespace

BandPool::BandPool(int threads) : threads(threads > 0 ? threads : DefaultThreads()) {}

BandPool::~BandPool() {
  {
    const std::lock_guard lock(mutex);
    ending = true;
  }
  changed.notify_all();
  for (std::thread& helper : helpers) {
    helper.join();
  }
}

void BandPool::Run(int items, const std::function<void(int, int)>& newWork) {
  if (threads == 1 || items < 2) {
    for (int item = 0; item < items; ++item) {
      newWork(0, item);
    }
    return;
  }
  try {
    while (static_cast<int>(helpers.size()) < threads - 1) {
      const int thread = static_cast<int>(helpers.size()) + 1;
      helpers.emplace_back([this, thread] { Help(thread); });
    }
  } catch (const std::system_error&) {
    threads = static_cast<int>(helpers.size()) + 1;  // the machine gives no more; fewer do as well
  }
  {
    const std::lock_guard lock(mutex);
    work = &newWork;
    itemCount = items;
    nextItem = 0;
    busy = static_cast<int>(helpers.size());
    ++round;
  }
  changed.notify_all();
  TakeItemsSafely(0);
  std::unique_lock lock(mutex);
  changed.wait(lock, [&] { return busy == 0; });
  if (failure != nullptr) {
    std::rethrow_exception(std::exchange(failure, nullptr));
  }
}

void BandPool::TakeItemsSafely(int thread) {
  try {
    TakeItems(thread);
  } catch (...) {
    nextItem = itemCount;
    const std::lock_guard lock(mutex);
    failure = std::current_exception();
  }
}

void BandPool::Help(int thread) {
  std::uint64_t seen = 0;
  std::unique_lock lock(mutex);
  for (;;) {
    changed.wait(lock, [&] { return ending || round != seen; });
    if (ending) {
      return;
    }
    seen = round;
    lock.unlock();
    TakeItemsSafely(thread);
    lock.lock();
    if (--busy == 0) {
      changed.notify_all();
    }
  }
}

void BandPool::TakeItems(int thread) {
  for (int item = nextItem++; item < itemCount; item = nextItem++) {
    (*work)(thread, item);
  }
}

}  // namespace canvas
