#include "support/FailingAllocation.h"

#include <atomic>
#include <cstddef>
#include <new>

#include "support/AlignedMemory.h"

namespace {

thread_local int left = 0;  // until the one that fails; 0: none will
thread_local bool failed = false;
std::atomic<std::int64_t> live{0};

// Null for the allocation that is to fail.
void* Allocate(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) noexcept {
  if (left > 0 && --left == 0) {
    failed = true;
    return nullptr;
  }
  const std::size_t rounded = (size / alignment + 1) * alignment;
  void* memory = AlignedAllocate(alignment, rounded);
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void* OrThrow(void* memory) {
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void Free(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
  AlignedFree(memory);
}

}  // namespace

namespace failing {

void Fail(int nth) {
  failed = false;
  left = nth;
}

bool HasFailed() {
  left = 0;
  return failed;
}

std::int64_t LiveAllocations() {
  return live;
}

}  // namespace failing

// The library's functions for arrays call these. The one that returns null would call the first,
// but not a sanitizer's.
void* operator new(std::size_t size) {
  return OrThrow(Allocate(size));
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return OrThrow(Allocate(size, static_cast<std::size_t>(alignment)));
}
void operator delete(void* memory) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  Free(memory);
}
