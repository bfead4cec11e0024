// What Highway's headers leave to its library, for systems where only the headers are at hand.
#include <hwy/targets.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace hwy {

namespace {

std::atomic<std::int64_t> forTest{0};

std::int64_t FindTargets() {
  std::int64_t targets = HWY_SSSE3 | HWY_SCALAR;
  if (__builtin_cpu_supports("sse4.2") && __builtin_cpu_supports("aes") &&
      __builtin_cpu_supports("pclmul")) {
    targets |= HWY_SSE4;
  }
  if ((targets & HWY_SSE4) != 0 && __builtin_cpu_supports("avx2") &&
      __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi") &&
      __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("f16c")) {
    targets |= HWY_AVX2;
  }
  if ((targets & HWY_AVX2) != 0 && __builtin_cpu_supports("avx512f") &&
      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq") &&
      __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512cd")) {
    targets |= HWY_AVX3;
  }
  return targets;
}

}  // namespace

int64_t SupportedTargets() {
  const std::int64_t chosen = forTest;
  return chosen != 0 ? chosen : FindTargets();
}

void SetSupportedTargetsForTest(int64_t targets) {
  forTest = targets;
  GetChosenTarget().DeInit();
}

ChosenTarget& GetChosenTarget() {
  static ChosenTarget chosen;
  return chosen;
}

void Abort(const char* /*file*/, int /*line*/, const char* /*format*/, ...) {
  std::abort();
}

}  // namespace hwy
