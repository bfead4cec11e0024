#include "support/FailingAllocation.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local int left = 0;  // until the one that fails; 0: none will
thread_local bool failed = false;
std::atomic<std::int64_t> live{0};

// Null for the allocation that is to fail.
void* Allocate(std::size_t size, std::size_t alignment) noexcept {
  if (left > 0 && --left == 0) {
    failed = true;
    return nullptr;
  }
  const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
  void* memory = alignment <= alignof(std::max_align_t)
                     ? std::malloc(size == 0 ? 1 : size)
                     : std::aligned_alloc(alignment, rounded == 0 ? alignment : rounded);
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment) {
  void* memory = Allocate(size, alignment);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void Free(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
  std::free(memory);
}

constexpr std::size_t kPlain = 1;

}  // namespace

FailingAllocation::FailingAllocation(int nth) {
  failed = false;
  left = nth;
}

FailingAllocation::~FailingAllocation() {
  left = 0;
}

bool FailingAllocation::HasFailed() const {
  return failed;
}

std::int64_t LiveAllocations() {
  return live;
}

void* operator new(std::size_t size) {
  return AllocateOrThrow(size, kPlain);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size, kPlain);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size, kPlain);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size, kPlain);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return AllocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return AllocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment,
                   const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment,
                     const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
  Free(memory);
}
void operator delete[](void* memory) noexcept {
  Free(memory);
}
// What an object's memory goes to when its constructor throws.
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  Free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
  Free(memory);
}
void operator delete[](void* memory, std::align_val_t /*alignment*/) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  Free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/,
                       std::align_val_t /*alignment*/) noexcept {
  Free(memory);
}
