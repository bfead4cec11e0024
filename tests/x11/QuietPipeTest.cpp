#include "x11/QuietPipe.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

bool IsBlocked() {
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  return sigismember(&blocked, SIGPIPE) == 1;
}

}  // namespace

TEST(QuietPipe, WritingToNobodyIsAnErrorAndNoSignal) {
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  close(pipe[0]);
  for (int round = 0; round < 2; ++round) {
    const QuietPipe quiet;
    EXPECT_EQ(write(pipe[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
  }
  EXPECT_FALSE(IsBlocked());
  close(pipe[1]);
}

TEST(QuietPipe, LeavesAHostThatBlocksTheSignalAsItWas) {
  sigset_t pipeSignal;
  sigset_t before;
  sigemptyset(&pipeSignal);
  sigaddset(&pipeSignal, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipeSignal, &before);
  raise(SIGPIPE);
  { const QuietPipe quiet; }
  EXPECT_TRUE(IsBlocked());
  sigset_t pending;
  sigpending(&pending);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 1) << "the host's own signal is still to be delivered";
  const timespec now = {0, 0};
  sigtimedwait(&pipeSignal, nullptr, &now);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}
