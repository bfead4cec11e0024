#include <system_error>

#include <parchlet/Parchlet.h>
#include <pthread.h>

#include "support/Whiteboard.h"

namespace {

// No thread has room for its stack for as long as this lives.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&before);
    pthread_attr_t huge = before;
    EXPECT_EQ(0, pthread_attr_setstacksize(&huge, std::size_t{1} << 47));
    EXPECT_EQ(0, pthread_setattr_default_np(&huge));
  }
  ~NoThreads() { pthread_setattr_default_np(&before); }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

 private:
  pthread_attr_t before{};
};

TEST(NoThreadTest, AnEngineWithoutAThreadStaysIdleUntilItGetsOne) {
  Whiteboard board;
  {
    const NoThreads none;
    EXPECT_THROW(board.engine.Init(), std::system_error);
  }
  board.engine.Destroy();
  EXPECT_EQ(1, board.engine.GetDocCount()) << "there was nothing to destroy";
  EXPECT_NE(0, ParchletTestAccess::Refresh(board.engine));
  EXPECT_EQ(1, board.engine.Init());
  EXPECT_TRUE(board.window.WaitForPresent(2, 60'000));
}

}  // namespace
