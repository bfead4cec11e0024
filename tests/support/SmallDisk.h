// A disk that is nearly full.
#pragma once

#include <csignal>

#include <sys/resource.h>

// No file of this process grows past so many bytes for as long as it lives. One at a time.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : previousHandler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &previous);
    const rlimit small = {bytes, previous.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  rlimit previous{};
  void (*previousHandler)(int);
};
