// Feeds the whole engine with the calls of a host that the fuzzer invents, beside the plain model.
// An answer that differs from the model's brings it down, as misuse of memory does.
#include <cstdio>
#include <cstdlib>
#include <span>

#include "model/Session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::span<const std::uint8_t> left(data, size);
  Session session(
      [&left]() -> std::uint8_t {
        if (left.empty()) {
          return 0;
        }
        const std::uint8_t byte = left.front();
        left = left.subspan(1);
        return byte;
      },
      false);
  try {
    while (!left.empty()) {
      session.MakeOneCall();
    }
  } catch (const Difference& difference) {
    std::fprintf(stderr, "%s\n", difference.what());
    std::abort();
  }
  return 0;
}
