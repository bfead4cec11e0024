#include <thread>

#include "support/Tireless.h"
#include "support/Whiteboard.h"

namespace {

TEST(WindowThreadsTest, WindowsMayGoWhileTheyArePushedTo) {
  Parchlet engine;
  const Tireless painter([&engine] { ParchletTestAccess::Refresh(engine); });
  engine.NewDoc("ada", "doc");
  for (int round = 0; round < 200; ++round) {
    const std::string page = std::to_string(round);
    MemoryWindow window({0, 0, 20, 10});
    EXPECT_EQ(1, engine.NewPage("doc", page, "ada", window.Handle(), PageOf(20, 10)));
    if (round % 2 == 0) {
      EXPECT_TRUE(window.WaitForPresent(1, 60'000));
    }
    window.SetScreenRect({0, 0, 1 + round % 40, 10});
  }
}

TEST(WindowThreadsTest, EnginesDoNotMeet) {
  const auto work = [](unsigned seed) {
    MemoryWindow window({0, 0, 20, 10});
    Parchlet engine;
    engine.Init();
    engine.NewDoc("ada", "doc");
    engine.NewPage("doc", "page", "ada", window.Handle(), PageOf(20, 10));
    for (LONG i = 0; i < 200; ++i) {
      engine.StartDrawing("doc", "page", {i % 20, static_cast<LONG>(seed)});
      engine.MoveDrawing({10, 5});
      engine.EndDrawing();
      engine.GetPagePtr("doc", "missing");
    }
    EXPECT_TRUE(window.WaitForPresent(1, 60'000));
  };
  std::thread other(work, 1);
  work(2);
  other.join();
}

}  // namespace
