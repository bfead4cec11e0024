#include "platform/clock/Clock.h"

#include <atomic>
#include <chrono>
#include <ctime>

namespace {

using std::chrono::milliseconds;

ULONGLONG SystemTicks() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<ULONGLONG>(std::chrono::duration_cast<milliseconds>(now).count());
}

SYSTEMTIME SystemLocalTime() {
  const auto now = std::chrono::floor<milliseconds>(std::chrono::system_clock::now());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(now);
  const std::time_t time = std::chrono::system_clock::to_time_t(seconds);
  std::tm local{};
  localtime_r(&time, &local);
  const auto word = [](auto value) { return static_cast<WORD>(value); };
  return {word(local.tm_year + 1900), word(local.tm_mon + 1),       word(local.tm_wday),
          word(local.tm_mday),        word(local.tm_hour),          word(local.tm_min),
          word(local.tm_sec),         word((now - seconds).count())};
}

std::atomic<TickSource> tickSource{&SystemTicks};
std::atomic<LocalTimeSource> localTimeSource{&SystemLocalTime};

}  // namespace

ULONGLONG GetTickCount64() {
  return tickSource.load(std::memory_order_relaxed)();
}

void GetLocalTime(SYSTEMTIME* time) {
  *time = localTimeSource.load(std::memory_order_relaxed)();
}

void SetTickSource(TickSource source) {
  tickSource.store(source != nullptr ? source : &SystemTicks, std::memory_order_relaxed);
}

void SetLocalTimeSource(LocalTimeSource source) {
  localTimeSource.store(source != nullptr ? source : &SystemLocalTime, std::memory_order_relaxed);
}
