#include "engine/PeriodicTimer.h"

#include <atomic>
#include <chrono>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Counts the calls of a task and waits for one, however long it takes.
class Calls {
 public:
  std::function<void()> Task() {
    return [this] {
      ++count;
      count.notify_all();
    };
  }
  void WaitForAnother() const { count.wait(count.load()); }
  int Count() const { return count; }

 private:
  std::atomic<int> count{0};
};

TEST(PeriodicTimerTest, StopWaitsForACallUnderWayAndThereIsNoOther) {
  PeriodicTimer timer;
  std::atomic<int> entered{0};
  std::atomic<int> left{0};
  timer.Stop();  // without a worker, at once
  timer.Start(0, [&] {
    ++entered;
    entered.notify_all();
    std::this_thread::sleep_for(milliseconds(20));
    ++left;
  });
  entered.wait(0);
  timer.Stop();
  const int calls = entered;
  EXPECT_EQ(calls, left);
  std::this_thread::sleep_for(milliseconds(20));
  EXPECT_EQ(calls, entered);
}

TEST(PeriodicTimerTest, ASecondStartIsIgnoredUntilTheStop) {
  Calls first;
  Calls second;
  PeriodicTimer timer;
  const Clock::time_point start = Clock::now();
  timer.Start(10, first.Task());
  timer.Start(0, second.Task());
  first.WaitForAnother();
  EXPECT_GE(Clock::now() - start, milliseconds(10)) << "no sooner than one interval";
  timer.Stop();
  EXPECT_EQ(0, second.Count());
  const int before = first.Count();
  timer.Start(-1, second.Task());
  second.WaitForAnother();
  second.WaitForAnother();
  timer.Stop();
  EXPECT_EQ(before, first.Count());
}

TEST(PeriodicTimerTest, StoppingAndDestroyingEndATimerAtOnce) {
  for (int round = 0; round < 100; ++round) {
    int calls = 0;  // the thread sanitizer sees a call that comes too late
    {
      PeriodicTimer timer;
      timer.Start(std::numeric_limits<int>::max(), [] { ADD_FAILURE() << "24 days went by"; });
      if (round % 2 == 0) {
        std::this_thread::yield();  // it may be waiting, or not
      }
      timer.Stop();
      timer.Start(0, [&calls] { ++calls; });
    }
    ++calls;
  }
}

}  // namespace
