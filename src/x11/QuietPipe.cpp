#include "x11/QuietPipe.h"

#include <ctime>

namespace {

sigset_t PipeSignal() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  return set;
}

bool IsPending() {
  sigset_t pending;
  return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

QuietPipe::QuietPipe() : before(), wasPending(IsPending()) {
  const sigset_t pipe = PipeSignal();
  pthread_sigmask(SIG_BLOCK, &pipe, &before);
}

QuietPipe::~QuietPipe() {
  if (!wasPending && IsPending()) {
    const sigset_t pipe = PipeSignal();
    const timespec now = {0, 0};
    sigtimedwait(&pipe, nullptr, &now);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}
