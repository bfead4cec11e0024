// QuietPipe.h - keeps a server that goes away from killing the host.
#pragma once

#include <csignal>

// While it lives, a write of this thread to a closed connection fails without a SIGPIPE, which
// would end a process that does not handle it. Most calls of XCB write.
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
