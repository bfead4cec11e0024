// A thread that does one thing again and again, beside what the test does.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

// Calls `act` for as long as it lives; joined at its end.
class Tireless {
 public:
  explicit Tireless(std::function<void()> act)
      : thread([this, act = std::move(act)](const std::stop_token& end) {
          while (!end.stop_requested()) {
            act();
            ++rounds;
            // A lock taken again at once would keep the other threads out.
            std::this_thread::sleep_for(std::chrono::microseconds(20));
          }
        }) {}

  int Rounds() const { return rounds; }

 private:
  std::atomic<int> rounds{0};
  std::jthread thread;
};
