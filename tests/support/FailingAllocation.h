// Memory that runs out at a chosen moment. For programs that link FailingAllocation.cpp, which
// replaces the allocation functions of the whole program.
#pragma once

#include <cstdint>

// Makes the `nth` allocation by `new` of this thread fail, counted from 1 and from now on; no
// other. One at a time a thread.
class FailingAllocation {
 public:
  explicit FailingAllocation(int nth);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  bool HasFailed() const;
};

// What `new` gave and `delete` has not taken back, on all threads.
std::int64_t LiveAllocations();
