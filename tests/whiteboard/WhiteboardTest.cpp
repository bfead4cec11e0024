// The whiteboard as a person meets it: the program itself, a real X server, a real pointer.
#include <gtest/gtest.h>

#include "support/PictureFile.h"
#include "whiteboard/DropSource.h"
#include "whiteboard/Person.h"

namespace {

constexpr std::uint32_t kInk = 0x1F2933;
constexpr std::uint32_t kRed = 0xE03131;
constexpr std::uint32_t kBlue = 0x1971C2;
constexpr std::uint32_t kPaper = 0xFFFFFF;
constexpr std::uint32_t kSky = 0x80B0F0;

// The page's place on the screen, in a window of that height from there on.
RECT PageIn(LONG left, int height) {
  const RECT page = whiteboard::MakeLayout(kWindowWidth, height, 1.6).page;
  return {left + page.left, page.top, left + page.right, page.bottom};
}

// The place on a page at those fractions.
POINT At(const RECT& page, double x, double y) {
  return {page.left + static_cast<LONG>((page.right - page.left) * x),
          page.top + static_cast<LONG>((page.bottom - page.top) * y)};
}

const RECT kPage = PageIn(0, kWindowHeight);
const RECT kPeerPage = PageIn(kWindowWidth, kWindowHeight);
const POINT kMiddle = At(kPage, 0.5, 0.5);

// The one picture that was exported; of size 0 x 0 when there is none.
parchlet::Picture Exported(const TemporaryFolder& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    if (entry.path().filename().string().starts_with("whiteboard_")) {
      return ReadPicture(entry.path());
    }
  }
  return {};
}

// A comb, hundreds of moves as fast as they come: where a point is lost, so is a tooth.
TEST(Whiteboard, DrawsEveryPointOfAQuickStrokeAndClosesWithTheWindowManager) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.server.StartWindowManager() && ada.Start());
  ASSERT_TRUE(ada.PressKey(kMiddle, "bracketleft"));
  const POINT first = At(kPage, 0.05, 0.1);
  const LONG right = first.x + 170 * 4;
  std::vector<POINT> way;
  for (LONG x = first.x; x <= right; x += 4) {
    way.insert(way.end(), {{x, first.y}, {x, kMiddle.y}, {x, first.y}});
  }
  // The server itself merges moves until the window manager has handed over the press.
  ASSERT_TRUE(ada.Press(first) && ada.Go({way[1]}) && ada.Sees({first.x, kMiddle.y - 50}, kInk));
  ASSERT_TRUE(ada.Go(way) && ada.Release());
  EXPECT_TRUE(Eventually([&] {
    const Screenshot shot = ada.desk->Look({first.x, kMiddle.y - 9, right + 1, kMiddle.y - 8});
    bool isWhole = true;
    for (LONG x = first.x; x <= right; x += 2) {
      isWhole =
          isWhole && IsNear(shot.At(x, kMiddle.y - 9), (x - first.x) % 4 == 0 ? kInk : kPaper);
    }
    return isWhole;
  })) << "teeth are lost";
  ASSERT_TRUE(ada.PressKey(kMiddle, "alt+F4"));
  EXPECT_EQ(ada.program->WaitForEnd(), 0);
}

TEST(Whiteboard, WhatOneDoesTheOtherSeesWhileAndAfterItIsDone) {
  Person pair;
  NEEDS_X_SERVER(pair);
  ASSERT_TRUE(pair.Start("--peer --name 张三", {kWindowWidth + 4, 4}));
  ASSERT_TRUE(pair.PressKey(kMiddle, "2") && pair.PressKey(kMiddle, "l"));
  const POINT start = At(kPage, 0.3, 0.3);
  const POINT ink = At(kPeerPage, 0.5, 0.3);
  ASSERT_TRUE(pair.Press(start));
  // The tip's box lies where the stroke starts, for two seconds.
  constexpr std::uint32_t kTipOverPaper = 0x438BCD;
  const POINT tip = {At(kPeerPage, 0.3, 0.3).x + 2, At(kPeerPage, 0.3, 0.3).y + 18};
  bool hasSeenTip = false;
  bool hasSeenInk = false;
  EXPECT_TRUE(Eventually([&] {
    const bool isMoving = pair.Go({At(kPage, 0.7, 0.31), At(kPage, 0.7, 0.3)});
    hasSeenTip = hasSeenTip || IsNear(pair.desk->ColorAt(tip.x, tip.y), kTipOverPaper);
    hasSeenInk = hasSeenInk || IsNear(pair.desk->ColorAt(ink.x, ink.y), kRed);
    return isMoving && hasSeenTip && hasSeenInk;
  })) << "tip "
      << hasSeenTip << ", ink " << hasSeenInk;
  // A shape that shrinks to nothing leaves nothing behind.
  ASSERT_TRUE(pair.Go({start}) && pair.Release());
  EXPECT_TRUE(pair.Sees(ink, kPaper));

  // The other draws an ellipse; what one moves has moved for the other.
  ASSERT_TRUE(pair.PressKey(At(kPeerPage, 0.5, 0.5), "e") &&
              pair.PressKey(At(kPeerPage, 0.5, 0.5), "5"));
  ASSERT_TRUE(pair.Drag({At(kPeerPage, 0.3, 0.2), At(kPeerPage, 0.8, 0.9)}));
  EXPECT_TRUE(pair.Sees(At(kPage, 0.8, 0.55), kBlue));
  ASSERT_TRUE(pair.PressKey(kMiddle, "s"));
  ASSERT_TRUE(pair.Drag({At(kPage, 0.8, 0.55), At(kPage, 0.85, 0.55), At(kPage, 0.9, 0.55)}));
  EXPECT_TRUE(pair.Sees(At(kPeerPage, 0.9, 0.55), kBlue));

  // Clearing one's own marks leaves the other's.
  ASSERT_TRUE(pair.PressKey(kMiddle, "p"));
  ASSERT_TRUE(pair.Drag({At(kPage, 0.1, 0.1), At(kPage, 0.1, 0.9)}));
  EXPECT_TRUE(pair.Sees(At(kPeerPage, 0.1, 0.5), kRed));
  ASSERT_TRUE(pair.PressKey(kMiddle, "c"));
  EXPECT_TRUE(pair.Sees(At(kPeerPage, 0.1, 0.5), kPaper));
  EXPECT_TRUE(pair.Sees(At(kPeerPage, 0.9, 0.55), kBlue));
  EXPECT_TRUE(Eventually(
      [&] { return pair.desk->Look(kPage).pixels == pair.desk->Look(kPeerPage).pixels; }));
  EXPECT_EQ(pair.Quit(), 0);
}

TEST(Whiteboard, MarksScaleWithTheWindowAndStayWithTheirPages) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start());
  ASSERT_TRUE(ada.PressKey(kMiddle, "2"));
  ASSERT_TRUE(ada.Drag({At(kPage, 0.2, 0.4), At(kPage, 0.8, 0.4), At(kPage, 0.8, 0.8)}));
  EXPECT_TRUE(ada.Sees(At(kPage, 0.8, 0.6), kRed));
  ASSERT_EQ(ada.server.Run("xdotool search --name whiteboard windowsize 1080 480"), 0);
  const POINT onMark = At(PageIn(0, 480), 0.21, 0.4);
  EXPECT_TRUE(ada.Sees(onMark, kRed));
  for (const auto& [leave, comeBack] :
       {std::pair("n", "Page_Up"), std::pair("ctrl+n", "ctrl+Tab")}) {
    ASSERT_TRUE(ada.PressKey(onMark, leave));
    EXPECT_TRUE(ada.Sees(onMark, kPaper));
    ASSERT_TRUE(ada.PressKey(onMark, comeBack));
    EXPECT_TRUE(ada.Sees(onMark, kRed));
  }
  // A mark that came back with its document is erased at the button's drag.
  ASSERT_TRUE(ada.Drag({onMark, {onMark.x, onMark.y + 40}}, "3"));
  EXPECT_TRUE(ada.Sees(onMark, kPaper));
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(Whiteboard, PicturesLieBelowAndOnThePageAndTheExportIsWhatTheScreenShows) {
  Person ada;
  NEEDS_X_SERVER(ada);
  const std::string path = ada.folder.File("a 天空.png");
  WritePicture(path, 320, 200, 0xFF000000 | kSky);
  ASSERT_TRUE(ada.Start("'" + path + "'"));
  // A transparent page is a touch darker than what lies below.
  ASSERT_TRUE(ada.Sees(kMiddle, 0x7BA9E7));
  ASSERT_TRUE(ada.PressKey(kMiddle, "2"));
  ASSERT_TRUE(ada.Drag({At(kPage, 0.3, 0.5), At(kPage, 0.7, 0.5)}));
  ASSERT_TRUE(ada.Sees(kMiddle, kRed));

  const POINT corner = At(kPage, 0.1, 0.1);
  DropSource files(ada.server.Display());
  ASSERT_TRUE(ada.Go({corner}));
  EXPECT_FALSE(files.Drop("")) << "nothing is taken that is not there";
  EXPECT_TRUE(files.Drop("# of a file manager\r\nfile://" + ada.folder.Path().string() +
                         "/a%20天空.png\r\n"));
  EXPECT_TRUE(ada.Sees(corner, kSky));
  ASSERT_TRUE(ada.Drag({corner, At(kPage, 0.4, 0.3), At(kPage, 0.5, 0.5)}));
  EXPECT_TRUE(ada.Sees(corner, 0x7BA9E7)) << "a picture can be dragged";
  EXPECT_TRUE(ada.Sees(kMiddle, kSky));

  ASSERT_TRUE(ada.PressKey(At(kPage, 0.5, 0.95), "ctrl+e"));
  ASSERT_TRUE(Eventually([&] { return Exported(ada.folder).width > 0; }));
  const parchlet::Picture picture = Exported(ada.folder);
  const Screenshot shot = ada.desk->Look(kPage);
  ASSERT_EQ(picture.pixels.size(), shot.pixels.size());
  for (std::size_t i = 0; i < shot.pixels.size(); ++i) {
    ASSERT_TRUE(IsNear(shot.pixels[i], picture.pixels[i] & 0xFFFFFF)) << "pixel " << i;
  }
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(Whiteboard, OverTheDesktopInkLiesOverOtherWindowsAndClicksPassThroughOnWish) {
  constexpr std::uint32_t kVeiledDesk = 0x2E5CB8;  // below a transparent page
  constexpr POINT kBar = {530, 28};                // the tools, in the middle of the screen
  Person ada;
  NEEDS_X_SERVER(ada);
  EXPECT_EQ(ada.server.Run(WHITEBOARD_BINARY " --overlay"), 2) << "without a compositor";
  const xcb_window_t below = ada.desk->ShowWindow({200, 200, 1800, 600}, 0x3060C0);
  ASSERT_TRUE(ada.Start("--overlay", kBar));
  ASSERT_TRUE(ada.Sees({1000, 400}, kVeiledDesk)) << "the page is there to draw on";
  ASSERT_TRUE(ada.Drag({{400, 400}, {900, 400}}));
  EXPECT_TRUE(ada.Sees({700, 400}, kRed));
  EXPECT_TRUE(ada.Sees({700, 450}, kVeiledDesk));
  ASSERT_TRUE(ada.PressKey({700, 500}, "F9"));
  // The key is under way; a click too early draws a dot at most.
  ASSERT_TRUE(
      Eventually([&] { return ada.server.Click(700, 500) && ada.desk->NextPress() == below; }));
  EXPECT_EQ(ada.Quit(kBar), 0);
}

TEST(Whiteboard, AServerThatGoesAwayMidStrokeEndsItInWords) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start());
  ASSERT_TRUE(ada.Press(At(kPage, 0.2, 0.2)) && ada.Go({At(kPage, 0.6, 0.6)}));
  ada.server.Kill();
  EXPECT_EQ(ada.program->WaitForEnd(), 2);
}

}  // namespace
