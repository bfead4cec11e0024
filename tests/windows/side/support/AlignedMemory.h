#pragma once

#include <cstddef>

#include <malloc.h>

inline void* AlignedAllocate(std::size_t alignment, std::size_t size) {
  return _aligned_malloc(size, alignment);
}
inline void AlignedFree(void* memory) {
  _aligned_free(memory);
}
