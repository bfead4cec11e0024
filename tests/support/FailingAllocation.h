// Memory that runs out at a chosen moment. For programs that link FailingAllocation.cpp, which
// replaces the allocation functions of the whole program.
#pragma once

#include <cstdint>

#include <gtest/gtest.h>

namespace failing {

// The `nth` allocation by `new` of this thread from now on is to fail, counted from 1, and no
// other; none for 0.
void Fail(int nth);
// Whether it has. None fails after that.
bool HasFailed();
// What `new` gave and `delete` has not taken back, on all threads.
std::int64_t LiveAllocations();

}  // namespace failing

// Calls `act`, whose nth allocation fails. Returns whether it has so many.
template <class Act>
bool FailsAt(int nth, const Act& act) {
  failing::Fail(nth);
  EXPECT_NO_THROW(act());
  return failing::HasFailed();
}

// Has every allocation fail in turn: calls `act` with 1, 2 and so on, until it says that there are
// not so many. Returns how many there are. Nothing may leak but what the call with 0 leaves.
template <class Act>
int ForEveryAllocation(const Act& act) {
  act(0);
  const std::int64_t live = failing::LiveAllocations();
  int nth = 1;
  while (act(nth) && !testing::Test::HasFailure()) {
    ++nth;
  }
  EXPECT_EQ(live, failing::LiveAllocations()) << "leaked";
  return nth - 1;
}
