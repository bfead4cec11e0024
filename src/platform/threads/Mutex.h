// Mutex.h - a std::mutex that tells clang's thread-safety analysis which members it guards.
//
// The annotations cost nothing at run time and vanish with other compilers.
#pragma once

#include <mutex>

#if defined(__clang__)
#define PARCHLET_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define PARCHLET_THREAD_ATTRIBUTE(x)
#endif

// The member may be touched only while the named lock is held.
#define PARCHLET_GUARDED_BY(lock) PARCHLET_THREAD_ATTRIBUTE(guarded_by(lock))
// The function may be called only while the caller holds the named lock.
#define PARCHLET_REQUIRES(...) PARCHLET_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
// The function takes the named lock itself, so the caller must not hold it.
#define PARCHLET_EXCLUDES(...) PARCHLET_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
// The function is not analysed: its comment says why it is safe.
#define PARCHLET_UNCHECKED PARCHLET_THREAD_ATTRIBUTE(no_thread_safety_analysis)
// The named locks, where both are held, are taken before this one.
#define PARCHLET_ACQUIRED_AFTER(...) PARCHLET_THREAD_ATTRIBUTE(acquired_after(__VA_ARGS__))

class PARCHLET_THREAD_ATTRIBUTE(capability("mutex")) Mutex : public std::mutex {
 public:
  void lock() PARCHLET_THREAD_ATTRIBUTE(acquire_capability()) { std::mutex::lock(); }
  void unlock() PARCHLET_THREAD_ATTRIBUTE(release_capability()) { std::mutex::unlock(); }
};

// Holds a Mutex for its own lifetime.
class PARCHLET_THREAD_ATTRIBUTE(scoped_lockable) MutexLock {
 public:
  explicit MutexLock(Mutex& held) PARCHLET_THREAD_ATTRIBUTE(acquire_capability(held))
      : mutex(held) {
    held.lock();
  }
  ~MutexLock() PARCHLET_THREAD_ATTRIBUTE(release_capability()) { mutex.unlock(); }

  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

 private:
  Mutex& mutex;
};
