// The whiteboard as a person meets it: the program itself, a real X server, a real pointer.
#include <gtest/gtest.h>

#include "support/PictureFile.h"
#include "whiteboard/DropSource.h"
#include "whiteboard/Person.h"

namespace {

using Whiteboard = Person;

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
TEST_F(Whiteboard, DrawsEveryPointOfAQuickStrokeAndClosesWithTheWindowManager) {
  ASSERT_TRUE(server.StartWindowManager() && Start());
  ASSERT_TRUE(PressKey(kMiddle, "bracketleft"));
  const POINT first = At(kPage, 0.05, 0.1);
  const LONG right = first.x + 170 * 4;
  std::vector<POINT> way;
  for (LONG x = first.x; x <= right; x += 4) {
    way.insert(way.end(), {{x, first.y}, {x, kMiddle.y}, {x, first.y}});
  }
  // The server itself merges moves until the window manager has handed over the press.
  ASSERT_TRUE(Press(first) && Go({way[1]}) && Sees({first.x, kMiddle.y - 50}, kInk));
  ASSERT_TRUE(Go(way) && Go({}, "mouseup 1"));
  EXPECT_TRUE(Eventually([&] {
    const Screenshot shot = client->Look({first.x, kMiddle.y - 9, right + 1, kMiddle.y - 8});
    bool isWhole = true;
    for (LONG x = first.x; x <= right; x += 2) {
      isWhole =
          isWhole && IsNear(shot.At(x, kMiddle.y - 9), (x - first.x) % 4 == 0 ? kInk : kPaper);
    }
    return isWhole;
  })) << "teeth are lost";
  ASSERT_TRUE(PressKey(kMiddle, "alt+F4"));
  EXPECT_EQ(program->WaitForEnd(), 0);
}

TEST_F(Whiteboard, WhatOneDoesTheOtherSeesWhileAndAfterItIsDone) {
  ASSERT_TRUE(Start("--peer --name 张三", {kWindowWidth + 4, 4}));
  ASSERT_TRUE(PressKey(kMiddle, "2") && PressKey(kMiddle, "l"));
  const POINT start = At(kPage, 0.3, 0.3);
  const POINT ink = At(kPeerPage, 0.5, 0.3);
  ASSERT_TRUE(Press(start));
  // The tip's box lies where the stroke starts, for two seconds.
  constexpr std::uint32_t kTipOverPaper = 0x438BCD;
  const POINT tip = {At(kPeerPage, 0.3, 0.3).x + 2, At(kPeerPage, 0.3, 0.3).y + 18};
  bool hasSeenTip = false;
  bool hasSeenInk = false;
  EXPECT_TRUE(Eventually([&] {
    const bool isMoving = Go({At(kPage, 0.7, 0.31), At(kPage, 0.7, 0.3)});
    hasSeenTip = hasSeenTip || IsNear(client->ColorAt(tip.x, tip.y), kTipOverPaper);
    hasSeenInk = hasSeenInk || IsNear(client->ColorAt(ink.x, ink.y), kRed);
    return isMoving && hasSeenTip && hasSeenInk;
  })) << "tip "
      << hasSeenTip << ", ink " << hasSeenInk;
  // A shape that shrinks to nothing leaves nothing behind.
  ASSERT_TRUE(Go({start}) && Go({}, "mouseup 1"));
  EXPECT_TRUE(Sees(ink, kPaper));

  // The other draws an ellipse; what one moves has moved for the other.
  ASSERT_TRUE(PressKey(At(kPeerPage, 0.5, 0.5), "e") && PressKey(At(kPeerPage, 0.5, 0.5), "5"));
  ASSERT_TRUE(Drag({At(kPeerPage, 0.3, 0.2), At(kPeerPage, 0.8, 0.9)}));
  EXPECT_TRUE(Sees(At(kPage, 0.8, 0.55), kBlue));
  ASSERT_TRUE(PressKey(kMiddle, "s"));
  ASSERT_TRUE(Drag({At(kPage, 0.8, 0.55), At(kPage, 0.85, 0.55), At(kPage, 0.9, 0.55)}));
  EXPECT_TRUE(Sees(At(kPeerPage, 0.9, 0.55), kBlue));

  // Clearing one's own marks leaves the other's.
  ASSERT_TRUE(PressKey(kMiddle, "p"));
  ASSERT_TRUE(Drag({At(kPage, 0.1, 0.1), At(kPage, 0.1, 0.9)}));
  EXPECT_TRUE(Sees(At(kPeerPage, 0.1, 0.5), kRed));
  ASSERT_TRUE(PressKey(kMiddle, "c"));
  EXPECT_TRUE(Sees(At(kPeerPage, 0.1, 0.5), kPaper));
  EXPECT_TRUE(Sees(At(kPeerPage, 0.9, 0.55), kBlue));
  EXPECT_TRUE(
      Eventually([&] { return client->Look(kPage).pixels == client->Look(kPeerPage).pixels; }));
  EXPECT_EQ(Quit(), 0);
}

TEST_F(Whiteboard, MarksScaleWithTheWindowAndStayWithTheirPages) {
  ASSERT_TRUE(Start());
  ASSERT_TRUE(PressKey(kMiddle, "2"));
  ASSERT_TRUE(Drag({At(kPage, 0.2, 0.4), At(kPage, 0.8, 0.4), At(kPage, 0.8, 0.8)}));
  EXPECT_TRUE(Sees(At(kPage, 0.8, 0.6), kRed));
  ASSERT_EQ(server.Run("xdotool search --name whiteboard windowsize 1080 480"), 0);
  const POINT onMark = At(PageIn(0, 480), 0.21, 0.4);
  EXPECT_TRUE(Sees(onMark, kRed));
  for (const auto& [leave, comeBack] :
       {std::pair("n", "Page_Up"), std::pair("ctrl+n", "ctrl+Tab")}) {
    ASSERT_TRUE(PressKey(onMark, leave));
    EXPECT_TRUE(Sees(onMark, kPaper));
    ASSERT_TRUE(PressKey(onMark, comeBack));
    EXPECT_TRUE(Sees(onMark, kRed));
  }
  // A mark that came back with its document is erased at the button's drag.
  ASSERT_TRUE(Drag({onMark, {onMark.x, onMark.y + 40}}, "3"));
  EXPECT_TRUE(Sees(onMark, kPaper));
  EXPECT_EQ(Quit(), 0);
}

TEST_F(Whiteboard, PicturesLieBelowAndOnThePageAndTheExportIsWhatTheScreenShows) {
  const std::string path = folder.File("a 天空.png");
  WritePicture(path, 320, 200, 0xFF000000 | kSky);
  ASSERT_TRUE(Start("'" + path + "'"));
  // A transparent page is a touch darker than what lies below.
  ASSERT_TRUE(Sees(kMiddle, 0x7BA9E7));
  ASSERT_TRUE(PressKey(kMiddle, "2"));
  ASSERT_TRUE(Drag({At(kPage, 0.3, 0.5), At(kPage, 0.7, 0.5)}));
  ASSERT_TRUE(Sees(kMiddle, kRed));

  const POINT corner = At(kPage, 0.1, 0.1);
  DropSource files(server.Display());
  ASSERT_TRUE(Go({corner}));
  EXPECT_FALSE(files.Drop("")) << "nothing is taken that is not there";
  EXPECT_TRUE(
      files.Drop("# of a file manager\r\nfile://" + folder.Path().string() + "/a%20天空.png\r\n"));
  EXPECT_TRUE(Sees(corner, kSky));
  ASSERT_TRUE(Drag({corner, At(kPage, 0.4, 0.3), At(kPage, 0.5, 0.5)}));
  EXPECT_TRUE(Sees(corner, 0x7BA9E7)) << "a picture can be dragged";
  EXPECT_TRUE(Sees(kMiddle, kSky));

  ASSERT_TRUE(PressKey(At(kPage, 0.5, 0.95), "ctrl+e"));
  ASSERT_TRUE(Eventually([&] { return Exported(folder).width > 0; }));
  const parchlet::Picture picture = Exported(folder);
  const Screenshot shot = client->Look(kPage);
  ASSERT_EQ(picture.pixels.size(), shot.pixels.size());
  for (std::size_t i = 0; i < shot.pixels.size(); ++i) {
    ASSERT_TRUE(IsNear(shot.pixels[i], picture.pixels[i] & 0xFFFFFF)) << "pixel " << i;
  }
  EXPECT_EQ(Quit(), 0);
}

TEST_F(Whiteboard, OverTheDesktopInkLiesOverOtherWindowsAndClicksPassThroughOnWish) {
  constexpr std::uint32_t kVeiledDesk = 0x2E5CB8;  // below a transparent page
  constexpr POINT kBar = {530, 28};                // the tools, in the middle of the screen
  EXPECT_EQ(server.Run(WHITEBOARD_BINARY " --overlay"), 2) << "without a compositor";
  const xcb_window_t below = client->ShowWindow({200, 200, 1800, 600}, 0x3060C0);
  ASSERT_TRUE(Start("--overlay", kBar));
  ASSERT_TRUE(Sees({1000, 400}, kVeiledDesk)) << "the page is there to draw on";
  ASSERT_TRUE(Drag({{400, 400}, {900, 400}}));
  EXPECT_TRUE(Sees({700, 400}, kRed));
  EXPECT_TRUE(Sees({700, 450}, kVeiledDesk));
  ASSERT_TRUE(PressKey({700, 500}, "F9"));
  // The key is under way; a click too early draws a dot at most.
  ASSERT_TRUE(Eventually([&] { return server.Click(700, 500) && client->NextPress() == below; }));
  EXPECT_EQ(Quit(kBar), 0);
}

TEST_F(Whiteboard, AServerThatGoesAwayMidStrokeEndsItInWords) {
  ASSERT_TRUE(Start());
  ASSERT_TRUE(Press(At(kPage, 0.2, 0.2)) && Go({At(kPage, 0.6, 0.6)}));
  server.Kill();
  EXPECT_EQ(program->WaitForEnd(), 2);
}

}  // namespace
