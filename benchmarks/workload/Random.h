// Random.h - random numbers that are the same with every standard library.
#pragma once

#include <cstdint>

// The splitmix64 generator, and uniform numbers made from it by arithmetic alone.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state(seed) {}

  std::uint64_t Next() {
    state += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
  }

  // From `low` up to, not including, `high`.
  double Uniform(double low, double high) {
    constexpr double kScale = 1.0 / 9007199254740992.0;  // 2 to the power of -53
    return low + (high - low) * (static_cast<double>(Next() >> 11U) * kScale);
  }

  // From 0 up to, not including, `count`.
  std::uint32_t Below(std::uint32_t count) {
    return static_cast<std::uint32_t>(((Next() >> 32U) * count) >> 32U);
  }

 private:
  std::uint64_t state;
};
