// Memory that runs out at any place of a frame.
#include <new>
#include <utility>
#include <vector>

#include <parchlet/Utils.h>

#include "support/FailingAllocation.h"
#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {60, 40};

bool IsTouched(const Annotation& mark, POINT from, POINT to) {
  for (const auto& [number, list] : mark.GetPoints()) {
    for (std::size_t i = 1; i < list.size(); ++i) {
      if (Utils::IsLineIntersect(from, to, {list[i - 1].x, list[i - 1].y},
                                 {list[i].x, list[i].y})) {
        return true;
      }
    }
  }
  return false;
}

// An eraser near its old or its new place finds the mark exactly where its stored pixels say.
void ExpectFoundAsStored(AnnotationPage& page, const Annotation& mark) {
  for (const auto& [from, to] : {std::pair{POINT{1, 8}, POINT{8, 1}}, {{32, 17}, {28, 23}}}) {
    EXPECT_EQ(IsTouched(mark, from, to) ? 1U : 0U, page.EraseAnnotations("", "", from, to).size());
  }
}

// Paints a mark whose stored pixels drawing will move, with a dot that drawing will make a segment,
// the nth allocation failing; false when there are fewer.
bool PaintWithFault(int nth, int& unpushed) {
  SCOPED_TRACE(nth);
  PaintedPage painted(kSize);
  std::vector<AnnotationPoint> points(40, AnnotationPoint{0, 0, 0.25, 0.25});
  points.back() = {9, 9, 0.75, 0.75};
  Annotation* mark = Mark("m").By("bob").Release();
  mark->InsertPoints(0, points);
  mark->InsertPoints(1, {{3, 3, 0.5, 0.5}});
  painted.page.AddAnnotation(mark, true);
  ExpectFoundAsStored(painted.page, *mark);
  std::uint64_t pushed = 0;
  const bool hasFailed = FailsAt(nth, [&] {
    try {
      pushed = painted.page.UpdateLayeredContent() != 0 ? 1 : 0;
    } catch (const std::bad_alloc&) {  // of the push itself, which the engine gives up
    }
  });
  EXPECT_EQ(pushed, painted.window.PresentCount());
  unpushed += pushed == 0 ? 1 : 0;
  ExpectFoundAsStored(painted.page, *mark);
  EXPECT_NE(0, painted.page.UpdateLayeredContent());
  ExpectFoundAsStored(painted.page, *mark);
  return hasFailed;
}

TEST(FrameFaultTest, AFrameThatRunsOutOfMemoryLeavesMarksToBeFoundWhereTheyAre) {
  int unpushed = 0;
  EXPECT_LT(20, ForEveryAllocation([&](int nth) { return PaintWithFault(nth, unpushed); }));
  EXPECT_LT(unpushed, 4) << "the window gets the surface as it is";
}

}  // namespace
