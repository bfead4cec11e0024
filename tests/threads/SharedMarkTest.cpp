#include <atomic>

#include "c/Call.h"
#include "support/Mark.h"
#include "support/ReplacedClock.h"
#include "support/Tireless.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {64, 48};

TEST(SharedMarkTest, TemporaryInkMayBeCopiedWhileItExpires) {
  ULONGLONG now = 1;
  ReplacedClock clock(now);
  PaintedPage painted(kSize);
  const Tireless painter([&painted] { painted.page.UpdateLayeredContent(); });
  for (int round = 0; round < 300; ++round) {
    Annotation* mark = Mark("").Points(kSize, {{5, 5}, {40, 40}}).Release();
    painted.page.AddAnnotation(mark, false);
    std::atomic_ref<std::uint64_t>(mark->tempStartTick).store(now);  // as it is painted already
    now += 8000;
    clock.Set(now);
    for (int i = 0; i < 5; ++i) {
      const Annotation copy(*mark);
      ASSERT_THAT(copy.IsErased(), testing::AnyOf(0, 1));
    }
    mark->Erase(0);
    painted.page.CancelAnnotation(mark->GetAnnotationId());
  }
}

TEST(SharedMarkTest, AMarkMayBecomeTemporaryWhileItIsPainted) {
  ReplacedClock clock(1);
  PaintedPage painted(kSize);
  Annotation* mark = Mark("").Points(kSize, {{5, 5}, {40, 40}}).Release();
  painted.page.AddAnnotation(mark, false);
  {
    const Tireless painter([&painted] { painted.page.UpdateLayeredContent(); });
    do {  // once at least: the painter may be ahead
      ASSERT_EQ(ParchletMarkSetTempStartTick(HandleOf(mark), 1), PARCHLET_YES);
    } while (painter.Rounds() < 50);
  }
  EXPECT_EQ(mark->IsErased(), 0);
  clock.Set(8001);
  painted.page.UpdateLayeredContent();
  EXPECT_EQ(mark->IsErased(), 1);
}

}  // namespace
