#include "engine/PeriodicTimer.h"

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Clock = std::chrono::steady_clock;

// Counts the calls of a task; waits for one without a limit of time.
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

TEST(PeriodicTimerTest, TheFirstCallComesNoSoonerThanOneInterval) {
  PeriodicTimer timer;
  std::atomic<Clock::rep> firstCall{0};
  const Clock::time_point start = Clock::now();
  timer.Start(30, [&] {
    Clock::rep none = 0;
    firstCall.compare_exchange_strong(none, Clock::now().time_since_epoch().count());
    firstCall.notify_all();
  });
  firstCall.wait(0);
  EXPECT_GE(Clock::duration(firstCall.load()),
            start.time_since_epoch() + std::chrono::milliseconds(30));
}

TEST(PeriodicTimerTest, AfterStopTheTaskIsCalledNoMore) {
  PeriodicTimer timer;
  Calls calls;
  timer.Start(1, calls.Task());
  calls.WaitForAnother();
  timer.Stop();
  const int stopped = calls.Count();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(stopped, calls.Count());
}

TEST(PeriodicTimerTest, StopWaitsForACallUnderWay) {
  PeriodicTimer timer;
  std::atomic<bool> isIn{false};
  std::atomic<bool> isOut{false};
  timer.Start(0, [&] {
    isOut = false;
    isIn = true;
    isIn.notify_all();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    isOut = true;
  });
  isIn.wait(false);
  timer.Stop();
  EXPECT_TRUE(isOut);
}

TEST(PeriodicTimerTest, ASecondStartKeepsTheFirstTaskAlone) {
  Calls first;
  Calls second;
  PeriodicTimer timer;
  timer.Start(1, first.Task());
  timer.Start(0, second.Task());
  first.WaitForAnother();
  first.WaitForAnother();
  timer.Stop();
  EXPECT_EQ(0, second.Count());
  timer.Start(-1, second.Task());
  second.WaitForAnother();
  const int left = first.Count();
  second.WaitForAnother();
  timer.Stop();
  EXPECT_EQ(left, first.Count());
}

TEST(PeriodicTimerTest, StopWithoutAWorkerReturnsAtOnce) {
  PeriodicTimer timer;
  timer.Stop();
  Calls calls;
  timer.Start(0, calls.Task());
  timer.Stop();
  timer.Stop();
}

TEST(PeriodicTimerTest, DestroyingARunningTimerStopsIt) {
  for (int round = 0; round < 200; ++round) {
    int calls = 0;  // the thread sanitizer sees a call that comes too late
    std::optional<PeriodicTimer> timer(std::in_place);
    timer->Start(0, [&calls] { ++calls; });
    timer.reset();
    ++calls;
  }
}

}  // namespace
