#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

constexpr int kPatienceMs = 60'000;  // nothing is decided by it: a frame comes or the test hangs

TEST(LifecycleTest, AnEnginePaintsFromInitToDestroy) {
  MemoryWindow window({0, 0, 20, 10});
  for (int life = 0; life < 2; ++life) {
    Parchlet engine;
    for (int run = 0; run < 2; ++run) {
      const std::uint64_t before = window.PresentCount();
      EXPECT_EQ(1, engine.Init());
      EXPECT_EQ(0, engine.Init());
      engine.NewDoc("ada", "doc");
      engine.NewPage("doc", "page", "ada", window.Handle(), PageOf(20, 10));
      EXPECT_TRUE(window.WaitForPresent(before + 2, kPatienceMs));
      if (run == 0) {
        engine.Destroy();
      }
    }
  }
  EXPECT_FALSE(window.WaitForPresent(window.PresentCount() + 1, 100)) << "gone while it painted";
}

TEST(SettingsTest, ABackgroundGoesToTheCurrentPageAndToNewOnes) {
  MemoryWindow window({0, 0, 10, 10});
  Parchlet engine;
  const auto shown = [&] {
    ParchletTestAccess::Refresh(engine);
    return Frame(window.CopyFrame());
  };
  EXPECT_EQ(0, engine.SetPageBackgroundColor(kGreen)) << "there is no page yet";
  engine.NewDoc("ada", "doc");
  AnnotationPageInfo info = PageOf(10, 10, kBlue);
  engine.NewPage("doc", "1", "ada", window.Handle(), info);
  EXPECT_THAT(shown(), IsAll(kGreen));
  EXPECT_EQ(1, engine.SetPageBackgroundColor(kRed));
  engine.NewPage("doc", "2", "ada", window.Handle(), info);
  engine.SetPageBackgroundColor(0x80FFFFFF);
  EXPECT_THAT(shown(), IsAll(0x80808080)) << "premultiplied";
  EXPECT_EQ(0, engine.SetCurrentPage("doc", "none"));
  engine.GotoPage("doc", 1);
  EXPECT_THAT(shown(), IsAll(kRed)) << "a page that is not current keeps its colour";

  info.transparent = true;
  engine.NewPage("doc", "3", "ada", window.Handle(), info);
  EXPECT_EQ(1, engine.SetPageBackgroundColor(kBlue));
  EXPECT_THAT(shown(), IsAll(0x0A000000)) << "a transparent page has a colour of its own";
}

}  // namespace
