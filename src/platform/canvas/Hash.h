// Hashes, built step by step.
#pragma once

#include <bit>
#include <cstdint>

namespace canvas {

constexpr std::uint64_t Mix(std::uint64_t hash, std::uint64_t value) {
  return std::rotl(hash ^ value, 29) * 0x9E3779B97F4A7C15U;
}

// Spreads every bit over all others, as the last step of a hash.
constexpr std::uint64_t Finish(std::uint64_t hash) {
  hash = (hash ^ hash >> 31) * 0xBF58476D1CE4E5B9U;
  return hash ^ hash >> 29;
}

// Two coordinates as one value.
constexpr std::uint64_t Pair(std::int32_t a, std::int32_t b) {
  return static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) << 32 |
         static_cast<std::uint32_t>(b);
}

}  // namespace canvas
