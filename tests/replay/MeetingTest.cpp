#include "replay/Meeting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "replay/Failure.h"

namespace replay {
namespace {

constexpr PageSize kPage = {200, 100};

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
  Meeting meeting(kPage, {"Ada"}, seed);
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
  EXPECT_THROW(
      try { RequireEqual(drawn, seen, "a.jsonl"); } catch (const Disagreement& disagreement) {
        EXPECT_STREQ(disagreement.what(),
                     "a.jsonl: the participants' pages differ in 1 pixels, first at 2, 1");
        throw;
      },
      Disagreement);
  EXPECT_THROW(RequireEqual(drawn, {2, 3, drawn.pixels}, "a.jsonl"), Disagreement);
}

}  // namespace
}  // namespace replay
