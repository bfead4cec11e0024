#include <atomic>

#include "platform/clock/Clock.h"

namespace {

template <class Function>
Function SystemsOwn(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), name)));
}

std::atomic<TickSource> tickSource{nullptr};
std::atomic<LocalTimeSource> localTimeSource{nullptr};

ULONGLONG WINAPI SeenTicks() {
  static const auto system = SystemsOwn<decltype(&GetTickCount64)>("GetTickCount64");
  const TickSource source = tickSource;
  return source != nullptr ? source() : system();
}

void WINAPI SeenLocalTime(SYSTEMTIME* time) {
  static const auto system = SystemsOwn<decltype(&GetLocalTime)>("GetLocalTime");
  const LocalTimeSource source = localTimeSource;
  if (source == nullptr) {
    system(time);
  } else {
    *time = source();
  }
}

}  // namespace

void SetTickSource(TickSource source) {
  tickSource = source;
}

void SetLocalTimeSource(LocalTimeSource source) {
  localTimeSource = source;
}

// The linker takes them for the pointers of the system's import library.
extern "C" decltype(&GetTickCount64) __imp_GetTickCount64;
decltype(&GetTickCount64) __imp_GetTickCount64 = SeenTicks;
extern "C" decltype(&GetLocalTime) __imp_GetLocalTime;
decltype(&GetLocalTime) __imp_GetLocalTime = SeenLocalTime;
