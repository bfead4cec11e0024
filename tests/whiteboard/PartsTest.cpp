#include <gtest/gtest.h>

#include <utility>

#include <parchlet/MemoryWindow.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "common/Input.h"
#include "whiteboard/Content.h"
#include "whiteboard/Document.h"
#include "whiteboard/Hand.h"
#include "whiteboard/Keys.h"
#include "whiteboard/Layout.h"
#include "whiteboard/Meeting.h"
#include "whiteboard/Options.h"
#include "whiteboard/Participant.h"
#include "whiteboard/Prompt.h"

namespace whiteboard {
namespace {

TEST(LayoutTest, ButtonsNeitherOverlapNorLeaveTheSmallestWindow) {
  const std::vector<Button> buttons =
      MakeButtons(MakeLayout(kSmallestWidth, kSmallestHeight, 1.6), true);
  for (auto one = buttons.begin(); one != buttons.end(); ++one) {
    EXPECT_LE(one->area.right, kSmallestWidth) << one->hint;
    for (auto other = buttons.begin(); other != one; ++other) {
      EXPECT_TRUE(one->area.left >= other->area.right || one->area.right <= other->area.left ||
                  one->area.top >= other->area.bottom || one->area.bottom <= other->area.top)
          << one->hint << " on " << other->hint;
    }
  }
}

TEST(PromptTest, TakesTextAwayByWholeCharacters) {
  Prompt prompt;
  for (const char* text : {"a", "张", "三", "\x1b"}) {
    EXPECT_EQ(TypeInto(prompt, {0, text, false, false}), Answer::kGoesOn);
  }
  TypeInto(prompt, {XKB_KEY_BackSpace, "", false, false});
  EXPECT_EQ(prompt.answer, "a张");
}

TEST(KeysTest, ShiftCountsAndCapsLockDoesNot) {
  EXPECT_EQ(ActionOf({XKB_KEY_C, "C", false, false}).command, Command::kClearMine);
  EXPECT_EQ(ActionOf({XKB_KEY_c, "c", false, true}).command, Command::kClearAll);
}

TEST(HandTest, AGestureEndsOnItsPage) {
  const MemoryWindow windows[] = {MemoryWindow({0, 0, 160, 50}), MemoryWindow({0, 0, 160, 50})};
  std::vector<Document> documents;
  documents.push_back(BlankDocument(1));
  Meeting meeting(std::move(documents));
  Participant ada("ada", "Ada", windows[0].Handle(), false);
  Participant grace("grace", "Grace", windows[1].Handle(), false);
  Hand hand(ada, meeting);
  meeting.Join(ada, {160, 50});
  meeting.Join(grace, {160, 50});
  const auto draw = [&hand] {
    hand.Press({}, {150, 5}, false);
    hand.Move({5, 5});
    hand.Show();
    EXPECT_TRUE(hand.IsDown());
  };
  draw();
  meeting.NewPage();
  EXPECT_FALSE(hand.IsDown());
  EXPECT_TRUE(meeting.CurrentDocument().CurrentPage().marks.empty());
  meeting.TurnBy(-1);
  EXPECT_EQ(meeting.CurrentDocument().CurrentPage().marks.size(), 1U);
  draw();
  meeting.Clear("");
  hand.Release();
  for (const MemoryWindow& window : windows) {
    ASSERT_TRUE(window.WaitForPresent(window.PresentCount() + 2, 60'000));
  }
  constexpr int kInk = 5 * 160 + 8;  // beside the name
  EXPECT_EQ(windows[0].CopyFrame().pixels[kInk], windows[1].CopyFrame().pixels[kInk]);
}

TEST(ContentTest, UnderstandsPathsAsTheyAreTypedPastedAndDropped) {
  EXPECT_EQ(CleanPath("  '/a b/c.png'\r\n"), "/a b/c.png");
  EXPECT_EQ(CleanPath("file:///a%20b/%E5%9B%BE.png"), "/a b/图.png");
  EXPECT_EQ(CleanPath("file://host/a%2"), "/a%2");
  EXPECT_EQ(CleanPath(" ' "), "");
}

TEST(OptionsTest, WhatCannotBeDoneIsRefused) {
  const auto parse = [](std::vector<const char*> words) {
    words.insert(words.begin(), "parchlet-whiteboard");
    return ParseOptions(static_cast<int>(words.size()), words.data());
  };
  EXPECT_EQ(parse({"--size", "1100x700"})->height, 700);
  EXPECT_EQ(parse({"--peer", "--peer-name", "张三"})->peer, "张三");
  const std::vector<const char*> mistakes[] = {{"--what"},
                                               {"--monitor", "LEFT"},
                                               {"--export-folder", "/no/such/folder"},
                                               {"--size", "1280x860x2"},
                                               {"--size", "10x10"},
                                               {"--peer-name", "Bo"}};
  for (const std::vector<const char*>& words : mistakes) {
    EXPECT_THROW(parse(words), apps::Failure) << words.back();
  }
  for (const char* path : {"/no/such/picture", "/", "/dev/null", "/dev/zero"}) {
    EXPECT_THROW(OpenContents({path}), apps::Failure) << path;
  }
}

}  // namespace
}  // namespace whiteboard
