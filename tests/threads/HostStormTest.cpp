#include <random>

#include <gtest/gtest.h>

#include "model/Session.h"
#include "support/TestAccess.h"
#include "support/Tireless.h"

namespace {

constexpr int kCalls = 1000;

class HostStormTest : public testing::TestWithParam<unsigned> {};

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

INSTANTIATE_TEST_SUITE_P(Seeds, HostStormTest, testing::Range(100U, 104U));

}  // namespace
