// What the thread sanitizer is told before it starts.

#if defined(__SANITIZE_THREAD__)

// The graphics library comes without the sanitizer's instrumentation, so its lock-free lists of
// freed objects, shared by all threads that draw, look like races.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() {
  return "called_from_lib:libcairo.so\n";
}

#endif
