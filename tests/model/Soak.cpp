// Keeps generated hosts calling for MINUTES beside the engine's own refresh timer and another
// thread of pushes, and compares every answer. Usage: parchlet-soak MINUTES [SEED]
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "model/Session.h"
#include "support/TestAccess.h"
#include "support/Tireless.h"

namespace {

constexpr int kCallsASession = 20'000;

struct Totals {
  std::uint64_t sessions = 0;
  std::uint64_t calls = 0;
  std::uint64_t frames = 0;
};

using Clock = std::chrono::steady_clock;

void RunSession(unsigned seed, Clock::time_point end, Totals& totals) {
  std::mt19937 random(seed);
  Session session([&random] { return static_cast<std::uint8_t>(random()); }, true);
  session.Start();
  std::atomic<std::uint64_t> frames{0};
  const Tireless pushes([&] {
    frames += ParchletTestAccess::Refresh(session.Engine()) != 0 ? 1 : 0;
  });
  for (int i = 0; i < kCallsASession && Clock::now() < end; ++i) {
    session.MakeOneCall();
  }
  ++totals.sessions;
  totals.calls += session.CallCount();
  totals.frames += frames;
}

}  // namespace

int main(int argc, char** argv) {
  const double minutes = argc > 1 ? std::atof(argv[1]) : 0;
  if (minutes <= 0) {
    std::fputs("usage: parchlet-soak MINUTES [SEED]\n", stderr);
    return 2;
  }
  auto seed = static_cast<unsigned>(argc > 2 ? std::atoi(argv[2]) : 1);
  const auto start = Clock::now();
  const auto end = start + std::chrono::duration_cast<Clock::duration>(
                               std::chrono::duration<double>(minutes * 60));
  Totals totals;
  for (; Clock::now() < end; ++seed) {
    try {
      RunSession(seed, end, totals);
    } catch (const Difference& difference) {
      std::printf("seed %u: %s\n", seed, difference.what());
      return 1;
    }
  }
  std::printf("%llu sessions, %llu calls, %llu pushes of the second thread: nothing differed\n",
              static_cast<unsigned long long>(totals.sessions),
              static_cast<unsigned long long>(totals.calls),
              static_cast<unsigned long long>(totals.frames));
  return 0;
}
