#include <cstdlib>
#include <random>

#include <gtest/gtest.h>

#include "model/Session.h"
#include "support/TestAccess.h"
#include "support/Tireless.h"

namespace {

constexpr int kCalls = 1000;

// See scripts/soak.sh.
unsigned FirstSeed() {
  const char* seed = std::getenv("PARCHLET_SEED");
  return seed != nullptr ? static_cast<unsigned>(std::atoi(seed)) : 1;
}

class HostStormTest : public testing::TestWithParam<unsigned> {};

// Beside the engine's own timer.
TEST_P(HostStormTest, RefreshesAtFullSpeedChangeNoAnswerThatAHostGets) {
  std::mt19937 random(GetParam());
  Session session([&random] { return static_cast<std::uint8_t>(random()); }, true);
  session.Start();
  const Tireless pushes([&session] { ParchletTestAccess::Refresh(session.Engine()); });
  for (int i = 0; i < kCalls; ++i) {
    session.MakeOneCall();
  }
  EXPECT_GT(pushes.Rounds(), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, HostStormTest, testing::Range(FirstSeed(), FirstSeed() + 4));

}  // namespace
