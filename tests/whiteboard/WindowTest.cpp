#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "whiteboard/Person.h"

namespace {

constexpr std::uint32_t kInk = 0x1F2933;

POINT OnPage(double x, double y) {
  return Person::At(Person::Page(), x, y);
}

}  // namespace

// Two combs of so many teeth, more than a thousand moves as fast as they come: where a point is
// lost, so is a tooth.
TEST(Whiteboard, EveryPointOfAQuickStrokeIsDrawnUnderAWindowManager) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Server().StartWindowManager());
  ASSERT_TRUE(ada.Start());
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"bracketleft"}));
  constexpr int kTeeth = 170;
  constexpr int kPitch = 4;
  const POINT first = OnPage(0.05, 0.1);
  const LONG last = first.x + (kTeeth - 1) * kPitch;
  const LONG height = OnPage(0, 0.4).y - OnPage(0, 0).y;
  const LONG second = OnPage(0, 0.5).y;
  std::vector<POINT> way;
  for (int tooth = 0; tooth < kTeeth; ++tooth) {
    const LONG x = first.x + tooth * kPitch;
    way.insert(way.end(), {{x, first.y}, {x, first.y + height}, {x, first.y}});
  }
  for (int tooth = 0; tooth < kTeeth; ++tooth) {
    const LONG x = last - tooth * kPitch;
    way.insert(way.end(), {{x, second}, {x, second + height}, {x, second}});
  }
  // The server itself merges moves until the window manager has handed over the press.
  ASSERT_TRUE(ada.Press(first) && ada.Go({way[1]}) && ada.Sees({first.x, first.y + 50}, kInk));
  ASSERT_TRUE(ada.Go(way) && ada.Release());
  const auto countLost = [&](LONG y) {
    const Screenshot shot = ada.Look({first.x - 2, y, last + 1, y + 1});
    int lost = 0;
    for (LONG x = first.x; x <= last; x += kPitch) {
      lost += IsNear(shot.At(x, y), kInk) && IsNear(shot.At(x - 2, y), kPaper) ? 0 : 1;
    }
    return lost;
  };
  for (const LONG y : {first.y + height - 9, second + height - 9}) {
    EXPECT_TRUE(Eventually([&] { return countLost(y) == 0; })) << countLost(y) << " teeth are lost";
  }
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(Whiteboard, TheEraserTakesAMarkAndADragMovesOne) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start());
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"2", "l"}));
  ASSERT_TRUE(ada.Drag({OnPage(0.2, 0.2), OnPage(0.6, 0.2)}));
  ASSERT_TRUE(ada.Drag({OnPage(0.2, 0.6), OnPage(0.6, 0.6)}));
  ASSERT_TRUE(ada.Sees(OnPage(0.4, 0.6), kRed));
  ASSERT_TRUE(ada.Drag({OnPage(0.5, 0.1), OnPage(0.5, 0.3)}, "3"));
  EXPECT_TRUE(ada.Sees(OnPage(0.4, 0.2), kPaper));
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"s"}));
  ASSERT_TRUE(ada.Drag({OnPage(0.4, 0.6), OnPage(0.5, 0.7), OnPage(0.6, 0.8)}));
  EXPECT_TRUE(ada.Sees(OnPage(0.6, 0.8), kRed));
  EXPECT_TRUE(ada.Sees(OnPage(0.3, 0.6), kPaper));
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"Delete"}));
  EXPECT_TRUE(ada.Sees(OnPage(0.6, 0.8), kPaper));
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(Whiteboard, AStrokeAppearsWhereItWasDrawnAndScalesWithTheWindow) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start());
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"2"}));
  ASSERT_TRUE(ada.Drag({OnPage(0.2, 0.4), OnPage(0.8, 0.4), OnPage(0.8, 0.8)}));
  EXPECT_TRUE(ada.Sees(OnPage(0.5, 0.4), kRed));
  EXPECT_TRUE(ada.Sees(OnPage(0.8, 0.6), kRed));
  EXPECT_TRUE(ada.Sees(OnPage(0.5, 0.6), kPaper));
  ASSERT_EQ(
      ada.Server().Run({"xdotool", "search", "--name", "whiteboard", "windowsize", "1080", "480"}),
      0);
  const RECT small = Person::PageIn({0, 0, 1080, 480});
  EXPECT_TRUE(ada.Sees(Person::At(small, 0.21, 0.4), kRed));
  EXPECT_TRUE(ada.Sees(Person::At(small, 0.17, 0.4), kPaper));
  EXPECT_TRUE(ada.Sees(Person::At(small, 0.83, 0.4), kPaper));
  ASSERT_TRUE(ada.PressKeys(OnPage(0.5, 0.5), {"r", "1"}));
  ASSERT_TRUE(ada.Drag({Person::At(small, 0.3, 0.6), Person::At(small, 0.5, 0.9)}));
  EXPECT_TRUE(ada.Sees(Person::At(small, 0.3, 0.8), kInk));
  EXPECT_TRUE(ada.Sees(Person::At(small, 0.4, 0.8), kPaper));
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(Whiteboard, WhatOneDrawsTheOtherSeesAndBothAgree) {
  Person pair;
  NEEDS_X_SERVER(pair);
  ASSERT_TRUE(pair.Start({"--peer", "--peer-name", "Bo"}, {kWindowWidth + 4, 4}));
  const RECT mine = Person::Page();
  const RECT theirs = Person::PeerPage();
  ASSERT_TRUE(pair.PressKeys(Person::At(mine, 0.5, 0.5), {"2"}));
  ASSERT_TRUE(pair.Drag({Person::At(mine, 0.2, 0.4), Person::At(mine, 0.6, 0.4)}));
  EXPECT_TRUE(pair.Sees(Person::At(theirs, 0.5, 0.4), kRed));
  ASSERT_TRUE(pair.PressKeys(Person::At(theirs, 0.5, 0.5), {"e", "5"}));
  ASSERT_TRUE(pair.Drag({Person::At(theirs, 0.3, 0.2), Person::At(theirs, 0.8, 0.9)}));
  EXPECT_TRUE(pair.Sees(Person::At(mine, 0.8, 0.55), 0x1971C2));
  const auto agree = [&] { return pair.Look(mine).pixels == pair.Look(theirs).pixels; };
  EXPECT_TRUE(Eventually(agree));
  // The peer erases what is not the peer's.
  ASSERT_TRUE(pair.Drag({Person::At(theirs, 0.25, 0.3), Person::At(theirs, 0.25, 0.5)}, "3"));
  EXPECT_TRUE(pair.Sees(Person::At(mine, 0.5, 0.4), kPaper));
  EXPECT_TRUE(Eventually(agree));
  // Clearing one's own marks leaves the other's.
  ASSERT_TRUE(pair.Drag({Person::At(mine, 0.1, 0.1), Person::At(mine, 0.1, 0.9)}));
  EXPECT_TRUE(pair.Sees(Person::At(theirs, 0.1, 0.5), kRed));
  ASSERT_TRUE(pair.PressKeys(Person::At(mine, 0.5, 0.5), {"c"}));
  EXPECT_TRUE(pair.Sees(Person::At(theirs, 0.1, 0.5), kPaper));
  EXPECT_TRUE(pair.Sees(Person::At(theirs, 0.8, 0.55), 0x1971C2));
  ASSERT_TRUE(pair.PressKeys(Person::At(mine, 0.5, 0.5), {"shift+c"}));
  EXPECT_TRUE(pair.Sees(Person::At(theirs, 0.8, 0.55), kPaper));
  EXPECT_TRUE(Eventually(agree));
  EXPECT_EQ(pair.Quit(), 0);
}

TEST(Whiteboard, TheOtherSeesAStrokeWhileItIsDrawnAndWhoDrawsIt) {
  Person pair;
  NEEDS_X_SERVER(pair);
  ASSERT_TRUE(pair.Start({"--peer", "--name", "张三"}, {kWindowWidth + 4, 4}));
  const RECT mine = Person::Page();
  const RECT theirs = Person::PeerPage();
  ASSERT_TRUE(pair.PressKeys(Person::At(mine, 0.5, 0.5), {"2", "l"}));
  const POINT start = Person::At(mine, 0.3, 0.3);
  ASSERT_TRUE(pair.Press(start));
  // The tip's box lies where the stroke starts, for two seconds.
  constexpr std::uint32_t kTipOverPaper = 0x438BCD;
  const POINT tip = {Person::At(theirs, 0.3, 0.3).x + 2, Person::At(theirs, 0.3, 0.3).y + 18};
  const POINT ink = Person::At(theirs, 0.5, 0.3);
  bool hasSeenTip = false;
  bool hasSeenInk = false;
  EXPECT_TRUE(Eventually([&] {
    const bool isMoving = pair.Go({Person::At(mine, 0.7, 0.31), Person::At(mine, 0.7, 0.3)});
    const Screenshot shot = pair.Look(theirs);
    hasSeenTip = hasSeenTip || IsNear(shot.At(tip.x, tip.y), kTipOverPaper);
    hasSeenInk = hasSeenInk || IsNear(shot.At(ink.x, ink.y), kRed);
    return isMoving && hasSeenTip && hasSeenInk;
  })) << "tip "
      << hasSeenTip << ", ink " << hasSeenInk;
  // A shape that shrinks to nothing leaves nothing behind.
  ASSERT_TRUE(pair.Go({start}) && pair.Release());
  EXPECT_TRUE(pair.Sees(ink, kPaper));
  EXPECT_EQ(pair.Quit(), 0);
}

TEST(Whiteboard, AServerThatGoesAwayMidStrokeEndsItInWords) {
  Person ada;
  NEEDS_X_SERVER(ada);
  ASSERT_TRUE(ada.Start());
  ASSERT_TRUE(ada.Press(OnPage(0.2, 0.2)) && ada.Go({OnPage(0.6, 0.6)}));
  ada.Server().Kill();
  EXPECT_EQ(ada.Program().WaitForEnd(), 2);
}
