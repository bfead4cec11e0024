// Included before everything else in the copy of the tree that is broken on purpose: MUTANT(n) is
// true in a process that was started with MUTANT=n. With MUTANT_TRACE=FILE, a process writes the
// numbers that it came across into that file when it ends.
#pragma once

#ifdef __cplusplus
#include <atomic>
#include <cstdio>
#include <cstdlib>

class MutantSwitches {
 public:
  MutantSwitches() {
    const char* number = std::getenv("MUTANT");
    active = number != nullptr ? std::atoi(number) : -1;
    isTracing = std::getenv("MUTANT_TRACE") != nullptr;
  }
  ~MutantSwitches() {
    const char* name = std::getenv("MUTANT_TRACE");
    std::FILE* file = name != nullptr ? std::fopen(name, "w") : nullptr;
    if (file == nullptr) {
      return;
    }
    for (int number = 0; number < kMost; ++number) {
      if (reached[number].load(std::memory_order_relaxed)) {
        std::fprintf(file, "%d\n", number);
      }
    }
    std::fclose(file);
  }

  bool IsOn(int number) {
    // The painter's inner loops come here: no write that other threads would have to hear of.
    if (isTracing && !reached[number].load(std::memory_order_relaxed)) {
      reached[number].store(true, std::memory_order_relaxed);
    }
    return number == active;
  }

 private:
  static constexpr int kMost = 4096;
  int active = -1;
  bool isTracing = false;
  std::atomic<bool> reached[kMost] = {};
};
inline MutantSwitches mutantSwitches;

#define MUTANT(number) mutantSwitches.IsOn(number)
#endif
