// What the host may do to one mark while a page paints it.
#include <functional>

#include "support/Mark.h"
#include "support/ReplacedClock.h"
#include "support/Tireless.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {64, 48};
constexpr int kRounds = 300;

// Runs `act` again and again while another thread paints the page as often.
void WhilePainting(PaintedPage& painted, const std::function<void()>& act) {
  const Tireless painter([&painted] { painted.page.UpdateLayeredContent(); });
  for (int round = 0; round < kRounds; ++round) {
    act();
  }
}

TEST(SharedMarkTest, PointsMayComeWhileAPathIsPainted) {
  PaintedPage painted(kSize);
  Annotation* mark = Mark("").Points(kSize, {{5, 5}}).Release();
  painted.page.AddAnnotation(mark, false);
  int added = 1;
  WhilePainting(painted, [&] {
    const LONG offset = added % 40;
    mark->AddPoint(PointsOn(kSize, {{offset, offset}})[0]);
    ++added;
    ASSERT_EQ(static_cast<std::size_t>(added), mark->GetPoints().at(0).size());
  });
  EXPECT_THAT(painted.Paint(), Shows(20, 20, kBlack));
}

TEST(SharedMarkTest, TemporaryInkMayBeCopiedWhileItExpires) {
  ReplacedClock clock(1);
  PaintedPage painted(kSize);
  ULONGLONG now = 1;
  WhilePainting(painted, [&] {
    Annotation* mark = Mark("").Points(kSize, {{5, 5}, {40, 40}}).Release();
    mark->tempStartTick = now;
    painted.page.AddAnnotation(mark, false);
    now += 8000;
    clock.Set(now);
    for (int i = 0; i < 5; ++i) {
      const Annotation copy(*mark);
      ASSERT_THAT(copy.IsErased(), testing::AnyOf(0, 1));
    }
    mark->Erase(0);
    painted.page.CancelAnnotation(mark->GetAnnotationId());
  });
}

TEST(SharedMarkTest, APageMayBeResizedAndFilledWhileItIsPainted) {
  PaintedPage painted(kSize);
  int round = 0;
  WhilePainting(painted, [&] {
    ++round;
    painted.page.UpdatePage(PageOf(32 + round % 33, 48), true);
    painted.page.SetPageBackgroundColor(kBlue);
    painted.window.SetScreenRect({0, 0, 1 + round % 64, 1 + round % 48});
    painted.page.AddAnnotation(
        Mark(std::to_string(round)).By("bob").Points(kSize, {{1, 1}, {60, 40}}).Release(), true);
  });
  EXPECT_EQ(static_cast<std::size_t>(kRounds), PageTestAccess::PaintOrder(painted.page).size());
}

}  // namespace
