#include <atomic>
#include <chrono>
#include <thread>

#include "support/Whiteboard.h"
#include "threads/StormyHost.h"

namespace {

constexpr int kCalls = 4000;
constexpr int kPatienceMs = 60'000;  // decides nothing: a frame comes, or the engine hangs

// Paints frame after frame as a refresh timer of a tiny interval would.
class TirelessRefresh {
 public:
  explicit TirelessRefresh(Parchlet& engine)
      : thread([this, &engine] {
          while (!stopped) {
            frames += ParchletTestAccess::Refresh(engine);
            ++ticks;
            ticks.notify_all();
            // A lock taken again at once would keep the host out.
            std::this_thread::sleep_for(std::chrono::microseconds(20));
          }
        }) {}
  ~TirelessRefresh() {
    stopped = true;
    thread.join();
  }
  TirelessRefresh(const TirelessRefresh&) = delete;
  TirelessRefresh& operator=(const TirelessRefresh&) = delete;

  void WaitForATick() const { ticks.wait(ticks); }
  int Frames() const { return frames; }

 private:
  std::atomic<bool> stopped{false};
  std::atomic<int> ticks{0};
  std::atomic<int> frames{0};
  std::thread thread;
};

class HostStormTest : public testing::TestWithParam<unsigned> {};

TEST_P(HostStormTest, NothingAHostCallsUpsetsTheRefresh) {
  MemoryWindow window({0, 0, 64, 48});
  StormyHost host(GetParam());
  {
    const TirelessRefresh refresh(host.Engine());
    host.MakeCalls(kCalls, [&] { refresh.WaitForATick(); });
    EXPECT_GT(refresh.Frames(), 0);
  }
  host.EndOn(window);
  EXPECT_NE(0, ParchletTestAccess::Refresh(host.Engine()));
  EXPECT_THAT(Frame(window.CopyFrame()), Shows(15, 15, kRed));
}

TEST_P(HostStormTest, NorTheEnginesOwnTimer) {
  MemoryWindow window({0, 0, 64, 48});
  StormyHost host(GetParam() + 1000);
  host.Engine().Init();
  host.MakeCalls(kCalls, [] {});
  host.EndOn(window);
  EXPECT_TRUE(window.WaitForPresent(window.PresentCount() + 2, kPatienceMs));
  EXPECT_THAT(Frame(window.CopyFrame()), Shows(15, 15, kRed));
}

INSTANTIATE_TEST_SUITE_P(Seeds, HostStormTest, testing::Range(0U, 4U));

}  // namespace
