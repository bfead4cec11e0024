// QuietPipe.h - keeps a server that goes away from killing the host.
#pragma once

#include <csignal>

// For its lifetime, writing to a closed connection gives this thread an error and no SIGPIPE, which
// would end a process that has not arranged for it. XCB writes in most of its calls.
class QuietPipe {
 public:
  QuietPipe();
  ~QuietPipe();
  QuietPipe(const QuietPipe&) = delete;
  QuietPipe& operator=(const QuietPipe&) = delete;

 private:
  sigset_t before;
  bool wasPending;
};
