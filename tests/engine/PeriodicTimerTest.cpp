#include "engine/PeriodicTimer.h"

#include <atomic>
#include <chrono>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Counts calls, and wakes who waits for one.
void Count(std::atomic<int>& calls) {
  ++calls;
  calls.notify_all();
}

TEST(PeriodicTimerTest, StopWaitsForACallUnderWayAndThereIsNoOther) {
  PeriodicTimer timer;
  std::atomic<int> entered{0};
  std::atomic<int> left{0};
  timer.Stop();  // without a worker, at once
  timer.Start(0, [&] {
    Count(entered);
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
  std::atomic<int> first{0};
  std::atomic<int> second{0};
  PeriodicTimer timer;
  const Clock::time_point start = Clock::now();
  timer.Start(10, [&] { Count(first); });
  timer.Start(0, [&] { Count(second); });
  first.wait(0);
  EXPECT_GE(Clock::now() - start, milliseconds(10)) << "no sooner than one interval";
  timer.Stop();
  EXPECT_EQ(0, second);
  const int before = first;
  timer.Start(-1, [&] { Count(second); });
  second.wait(0);
  second.wait(1);
  timer.Stop();
  EXPECT_EQ(before, first);
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
