#pragma once

#include <cstdlib>

inline void* AlignedAllocate(std::size_t alignment, std::size_t size) {
  return std::aligned_alloc(alignment, size);
}
inline void AlignedFree(void* memory) {
  std::free(memory);
}
