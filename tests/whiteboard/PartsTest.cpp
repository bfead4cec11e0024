#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "common/Input.h"
#include "whiteboard/Content.h"
#include "whiteboard/Document.h"
#include "whiteboard/Layout.h"
#include "whiteboard/Options.h"
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
