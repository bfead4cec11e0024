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

TEST(PeriodicTimerTest, ItsOneTaskIsCalledFromAnIntervalAfterTheStartToTheStop) {
  PeriodicTimer timer;
  std::atomic<int> entered{0};
  std::atomic<int> left{0};
  timer.Stop();  // without a worker, at once
  const Clock::time_point start = Clock::now();
  timer.Start(10, [&] {
    Count(entered);
    std::this_thread::sleep_for(milliseconds(20));
    ++left;
  });
  timer.Start(0, [] { ADD_FAILURE() << "a second start is ignored until the stop"; });
  entered.wait(0);
  EXPECT_GE(Clock::now() - start, milliseconds(10));
  timer.Stop();
  const int calls = entered;
  EXPECT_EQ(calls, left) << "the stop waits for a call under way";
  std::atomic<int> next{0};
  timer.Start(-1, [&] { Count(next); });
  next.wait(0);
  next.wait(1);
  timer.Stop();
  EXPECT_EQ(calls, entered);
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
