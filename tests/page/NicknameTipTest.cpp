// When authors' names are shown, where their boxes lie, and how names are cut.
#include <gtest/gtest.h>

#include "page/NicknameTip.h"
#include "support/Mark.h"
#include "support/ReplacedClock.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {400, 100};
constexpr std::uint32_t kBox = 0xFFFFE000;

// Boxes alone can be seen: no family answers to the name, so no text is painted.
class NicknameTipTest : public testing::Test {
 protected:
  NicknameTipTest() {
    EXPECT_EQ(1, board.engine.SetNicknameTip(kBlack, 18, "No Such Family", kBox));
  }

  void Add(const std::string& id, const std::string& author, POINT at,
           const std::string& nickname = "Grace") {
    auto mark = Mark(id).By(author).Points(kSize, {at, {at.x + 1, at.y}}).Pen(kWhite, 1).Make();
    mark->nickname = nickname;
    ASSERT_EQ(1, board.engine.AddAnnotationFromRemote("doc", "page", mark.release()));
  }

  ReplacedClock clock{1'000'000};
  Whiteboard board{kSize.width, kSize.height};
};

TEST_F(NicknameTipTest, ATipShowsForTwoSecondsEvenOfAMarkThatIsErased) {
  Add("first", "grace", {10, 10});
  EXPECT_THAT(board.Paint().InkBox(), (RECT{10, 10, 82, 37}));  // 4 units of 18, 1.5 times 18
  board.engine.EraseAnnotation("doc", "page", "grace", "first");
  clock.Set(1'001'999);
  EXPECT_THAT(board.Paint(), Shows(12, 12, kBox));
  clock.Set(1'002'000);
  EXPECT_THAT(board.Paint(), IsAll(kWhite));
  Add("corner", "bob", {399, 99});
  EXPECT_EQ((RECT{400 - 72, 100 - 27, 400, 100}), board.Paint().InkBox()) << "pushed back inside";
}

TEST_F(NicknameTipTest, SizesAndNamesOfAnyKindStayOnThePage) {
  ASSERT_EQ(1, board.engine.SetNicknameTip(kBlack, 0xFFFFFFFF, "", kBox));
  Add("huge", "grace", {200, 50}, "\xE5\xBE\xAE\xE8");
  EXPECT_THAT(board.Paint(), IsAll(kBox));
}

TEST(ShortenNickname, CutsBeforeTheCharacterThatReachesTheWidth) {
  const struct {
    std::string text;
    std::string shortened;
    int narrow;
    int wide;
  } cases[] = {
      {"", "", 0, 0},
      {"123456789", "123456789", 9, 0},
      {"1234567890", "123456789...", 9, 0},
      {"\xE5\xBE\xAE\xE8\xBD\xAF\xE9\x9B\x85\xE9\xBB\x91\xE5\xAD\x97\xE5\xAD\x97",
       "\xE5\xBE\xAE\xE8\xBD\xAF\xE9\x9B\x85\xE9\xBB\x91...", 0, 4},
      {"12345678\xE5\xBE\xAE", "12345678...", 8, 0},
      {"123456789\xE5\xBE\xAE", "123456789...", 9, 0},
      {"1\xE5\xBE", "1\xE5\xBE", 1, 1},  // cut in the middle of a character
  };
  for (const auto& expected : cases) {
    int narrow = -1;
    int wide = -1;
    EXPECT_EQ(expected.shortened, ShortenNickname(expected.text, 10, narrow, wide));
    EXPECT_EQ(expected.narrow, narrow) << expected.text;
    EXPECT_EQ(expected.wide, wide) << expected.text;
    EXPECT_EQ("", ShortenNickname(expected.text, 0, narrow, wide));
    EXPECT_EQ(0, narrow + wide);
  }
}

}  // namespace
