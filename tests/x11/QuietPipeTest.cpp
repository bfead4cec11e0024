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
  {
    const QuietPipe quiet;
    EXPECT_EQ(write(pipe[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
  }
  EXPECT_FALSE(IsBlocked());
  close(pipe[1]);
}

TEST(QuietPipe, LeavesAHostThatBlocksTheSignalAsItWas) {
  sigset_t pipeSignal;
  sigemptyset(&pipeSignal);
  sigaddset(&pipeSignal, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipeSignal, nullptr);
  raise(SIGPIPE);
  { const QuietPipe quiet; }
  EXPECT_TRUE(IsBlocked());
  const timespec now = {0, 0};
  EXPECT_EQ(sigtimedwait(&pipeSignal, nullptr, &now), SIGPIPE) << "the host's own is still to come";
  pthread_sigmask(SIG_UNBLOCK, &pipeSignal, nullptr);
}
