#include "replay/Meeting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "replay/Failure.h"
#include "replay/Fragments.h"

namespace replay {
namespace {

Annotation MakePath(int pointCount) {
  Annotation path;
  path.Init({0xFF102030, 9, 0}, AnnotationTypeDrawing, AnnotationSubTypePath, "u", "desk", "Ada");
  path.SetAnnotationId("id-1");
  for (int number = 0; number < pointCount; ++number) {
    path.AddPoint({number, -number, number / 8.0, number / -4.0});
  }
  return path;
}

TEST(FragmentsTest, AMarkIsSharedOutInOrderAndEveryShareNamesTheWholeMark) {
  EXPECT_EQ(Split(MakePath(256), 1).size(), 1U);
  const std::vector<Fragment> sent = Split(MakePath(300), 1);
  Annotation arrived(*sent.at(0));
  arrived.InsertPoints(1, sent.at(1)->GetPoints().at(0));
  // What came in fragments is sent on in the same ones.
  const std::vector<Fragment> fragments = Split(arrived, 17);
  ASSERT_EQ(fragments.size(), 2U);
  int next = 0;
  for (std::size_t index = 0; index < fragments.size(); ++index) {
    const Annotation& fragment = *fragments[index];
    EXPECT_EQ(fragment.subModelIndex, static_cast<int>(index));
    EXPECT_EQ(fragment.GetAnnotationId(), "id-1");
    EXPECT_EQ(fragment.userId + "/" + fragment.userSubId + "/" + fragment.nickname, "u/desk/Ada");
    EXPECT_EQ(fragment.order, 17);
    EXPECT_EQ(fragment.pen.color, 0xFF102030U);
    const Annotation::SubModels points = fragment.GetPoints();
    for (const AnnotationPoint& point : points.at(0)) {
      EXPECT_EQ(point.x, next);
      EXPECT_EQ(point.yRatio, next / -4.0);
      ++next;
    }
    EXPECT_EQ(next, index == 0 ? 256 : 300);
  }
}

// A path that sweeps the page in ever so many points, more than two fragments of them.
void DrawSweep(Meeting& meeting, const std::string& name, std::uint32_t color, int y) {
  Participant& author = meeting.Author(name);
  author.TakePen(MarkKind::kPath, color, 3);
  author.Press({0, y});
  for (int step = 1; step < 600; ++step) {
    author.Move({step / 3, y + step % 7});
  }
  meeting.RelayDrawing(author);
}

MemoryFrame HoldMeeting(std::optional<std::uint64_t> seed) {
  Meeting meeting({200, 100}, {"Ada"}, seed);
  meeting.OpenPage("page");
  for (int mark = 0; mark < 12; ++mark) {
    const auto green = static_cast<std::uint32_t>(mark) << 11;
    DrawSweep(meeting, mark % 3 == 0 ? "Ada" : "", 0x80FF0000 | green, 5 * mark);
  }
  meeting.Select({0, 0}, {200, 40});
  EXPECT_TRUE(meeting.Drag({{100, 22}, {100, 60}, {103, 52}}));
  DrawSweep(meeting, "", 0x800000FF, 50);
  meeting.Erase({{0, 95}, {200, 75}});
  return meeting.ClosePage("seed " + std::to_string(seed.value_or(0)));
}

// Closing the page compares what the participants see.
TEST(MeetingTest, FragmentsThatComeLateTwiceAndInAnyOrderMakeTheSamePage) {
  const MemoryFrame calm = HoldMeeting(std::nullopt);
  for (const std::uint64_t seed : {1, 2, 3, 4, 5, 6}) {
    EXPECT_NO_THROW(EXPECT_TRUE(HoldMeeting(seed).pixels == calm.pixels)) << "seed " << seed;
  }
}

TEST(MeetingTest, ADifferenceOfOnePixelIsFoundAndNamed) {
  const MemoryFrame drawn = {3, 2, {1, 2, 3, 4, 5, 6}};
  MemoryFrame seen = drawn;
  EXPECT_NO_THROW(RequireEqual(drawn, seen, "a.jsonl"));
  seen.pixels[5] = 7;
  EXPECT_THAT([&] { RequireEqual(drawn, seen, "a.jsonl"); },
              testing::ThrowsMessage<Disagreement>(
                  "a.jsonl: the participants' pages differ in 1 pixels, first at 2, 1"));
  EXPECT_THROW(RequireEqual(drawn, {2, 3, drawn.pixels}, "a.jsonl"), Disagreement);
}

}  // namespace
}  // namespace replay
