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

}  // namespace
