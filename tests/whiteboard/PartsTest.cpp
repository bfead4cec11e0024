#include <gtest/gtest.h>

#include <whiteboard/Buttons.h>
#include <whiteboard/Content.h>
#include <whiteboard/Document.h>
#include <whiteboard/Failure.h>
#include <whiteboard/Layout.h>
#include <whiteboard/Options.h>
#include <whiteboard/Prompt.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <fstream>

#include "support/TemporaryFolder.h"

namespace {

std::optional<whiteboard::Options> Parse(std::vector<const char*> words) {
  words.insert(words.begin(), "parchlet-whiteboard");
  return whiteboard::ParseOptions(static_cast<int>(words.size()), words.data());
}

}  // namespace

TEST(WhiteboardLayout, ThePageKeepsItsProportionsBetweenTheBars) {
  for (const double aspect : {0.3, 1.0, 1.6, 5.0}) {
    for (const int height : {92, 150, 320, 860, 2000}) {
      const whiteboard::Layout layout = whiteboard::MakeLayout(1280, height, aspect);
      const RECT& page = layout.page;
      ASSERT_LT(page.left, page.right);
      ASSERT_LT(page.top, page.bottom);
      if (height < 320) {
        continue;  // no room for a page to speak of
      }
      EXPECT_GE(page.top, layout.toolbar.bottom);
      EXPECT_LE(page.bottom, layout.status.top);
      EXPECT_NEAR((page.right - page.left) / aspect, page.bottom - page.top, 1 + 1 / aspect);
    }
  }
}

TEST(WhiteboardLayout, ButtonsNeitherOverlapNorLeaveTheSmallestWindow) {
  const whiteboard::Layout layout =
      whiteboard::MakeLayout(whiteboard::kSmallestWidth, whiteboard::kSmallestHeight, 1.6);
  const std::vector<whiteboard::Button> buttons = whiteboard::MakeButtons(layout, true);
  for (auto one = buttons.begin(); one != buttons.end(); ++one) {
    EXPECT_LE(one->area.right, whiteboard::kSmallestWidth) << one->hint;
    for (auto other = buttons.begin(); other != one; ++other) {
      EXPECT_TRUE(one->area.left >= other->area.right || one->area.right <= other->area.left ||
                  one->area.top >= other->area.bottom || one->area.bottom <= other->area.top)
          << one->hint << " on " << other->hint;
    }
  }
}

TEST(WhiteboardPrompt, TakesTextAwayByWholeCharacters) {
  whiteboard::Prompt prompt;
  for (const char* text : {"a", "张", "三", "\x1b"}) {
    EXPECT_EQ(whiteboard::TypeInto(prompt, {0, text, false, false}), whiteboard::Answer::kGoesOn);
  }
  EXPECT_EQ(prompt.answer, "a张三");
  whiteboard::TypeInto(prompt, {XKB_KEY_BackSpace, "", false, false});
  EXPECT_EQ(prompt.answer, "a张");
  EXPECT_EQ(whiteboard::TypeInto(prompt, {XKB_KEY_Return, "\r", false, false}),
            whiteboard::Answer::kGiven);
}

TEST(WhiteboardContent, UnderstandsPathsAsTheyAreTypedPastedAndDropped) {
  EXPECT_EQ(whiteboard::CleanPath("  '/a b/c.png'\r\n"), "/a b/c.png");
  EXPECT_EQ(whiteboard::CleanPath("file:///a%20b/%E5%9B%BE.png"), "/a b/图.png");
  EXPECT_EQ(whiteboard::CleanPath("file://host/a%2"), "/a%2");
  EXPECT_EQ(whiteboard::CleanPath("file:"), "file:");
  EXPECT_EQ(whiteboard::CleanPath(" ' "), "");
}

TEST(WhiteboardContent, FilesThatAreNoPicturesAreRefusedByName) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("text.png")) << "no picture";
  for (const std::string& path : {folder.File("text.png"), folder.File("nothing.png"),
                                  folder.Path().string() + "/.", std::string("/dev/zero")}) {
    EXPECT_THROW(whiteboard::LoadContent(path), whiteboard::Failure) << path;
  }
  EXPECT_THROW(whiteboard::OpenContents({folder.Path().string()}), whiteboard::Failure);
}

TEST(WhiteboardOptions, AnOrderThatIsNotWholeIsRefused) {
  EXPECT_EQ(Parse({"--size", "1100x700"})->height, 700);
  EXPECT_FALSE(Parse({})->peer.has_value());
  EXPECT_EQ(Parse({"--peer", "--peer-name", "张三"})->peer, "张三");
  EXPECT_THROW(Parse({"--what"}), whiteboard::Failure);
  EXPECT_THROW(Parse({"--monitor", "LEFT"}), whiteboard::Failure);
  EXPECT_THROW(Parse({"--peer-name", "Bo"}), whiteboard::Failure);
  EXPECT_THROW(Parse({"--export-folder", "/no/such/folder"}), whiteboard::Failure);
  for (const char* size : {"10x10", "1280", "1280x", "x860", "1280x860x2", "99999x860"}) {
    EXPECT_THROW(Parse({"--size", size}), whiteboard::Failure) << size;
  }
}
