#include <random>

#include <gtest/gtest.h>

#include "model/Session.h"

namespace {

constexpr int kCalls = 3000;

class ModelTest : public testing::TestWithParam<unsigned> {};

TEST_P(ModelTest, WhateverAHostCallsIsAnsweredAsThePlainModelAnswers) {
  std::mt19937 random(GetParam());
  Session session([&] { return static_cast<std::uint8_t>(random()); }, false);
  for (int i = 0; i < kCalls; ++i) {
    session.MakeOneCall();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ModelTest, testing::Range(0U, 8U));

}  // namespace
