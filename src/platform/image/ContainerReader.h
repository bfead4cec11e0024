// Reads numbers from a picture file in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Takes bytes from the front of a file. What lies past its end reads as 0 and is remembered.
class ContainerReader {
 public:
  explicit ContainerReader(std::span<const std::byte> bytes) : rest(bytes) {}

  // Whether more was taken than there was.
  bool IsPastEnd() const { return isPastEnd; }
  std::span<const std::byte> Rest() const { return rest; }

  std::span<const std::byte> Take(std::size_t count) {
    if (count > rest.size()) {
      isPastEnd = true;
      rest = {};
      return {};
    }
    const auto taken = rest.first(count);
    rest = rest.subspan(count);
    return taken;
  }

  std::uint32_t TakeByte() {
    const auto taken = Take(1);
    return taken.empty() ? 0 : std::to_integer<std::uint32_t>(taken[0]);
  }
  // The high byte first.
  std::uint32_t TakeBigEndian(int size) {
    std::uint32_t value = 0;
    for (int i = 0; i < size; ++i) {
      value = value << 8 | TakeByte();
    }
    return value;
  }
  // The low byte first.
  std::uint32_t TakeLittleEndian(int size) {
    std::uint32_t value = 0;
    for (int i = 0; i < size; ++i) {
      value |= TakeByte() << 8 * i;
    }
    return value;
  }

 private:
  std::span<const std::byte> rest;
  bool isPastEnd = false;
};
