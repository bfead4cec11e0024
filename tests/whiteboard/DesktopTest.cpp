#include <gtest/gtest.h>

#include "whiteboard/Person.h"

namespace {

constexpr std::uint32_t kDesk = 0x3060C0;
constexpr std::uint32_t kVeiledDesk = 0x2E5CB8;  // below a transparent page
constexpr POINT kBar = {530, 28};                // the tools, in the middle of the screen

}  // namespace

TEST(WhiteboardOverDesktop, InkLiesOverOtherWindowsAndClicksPassThroughOnWish) {
  Person ada;
  NEEDS_X_SERVER(ada);
  const xcb_window_t below = ada.Desk().ShowWindow({200, 200, 1800, 600}, kDesk);
  ASSERT_TRUE(ada.Start({"--overlay"}, kBar));
  ASSERT_TRUE(ada.Sees({1000, 400}, kVeiledDesk));
  ASSERT_TRUE(ada.Drag({{400, 400}, {900, 400}}));
  EXPECT_TRUE(ada.Sees({700, 400}, kRed));
  EXPECT_TRUE(ada.Sees({700, 450}, kVeiledDesk));
  ASSERT_TRUE(ada.PressKeys({700, 500}, {"F9"}));
  // The key is under way; a click too early draws a dot at most.
  ASSERT_TRUE(
      Eventually([&] { return ada.Server().Click(700, 500) && ada.Desk().HasPress(below); }));
  EXPECT_TRUE(ada.Sees({700, 400}, kRed));
  ASSERT_TRUE(ada.PressKeys(kBar, {"F9"}));
  EXPECT_TRUE(Eventually([&] {
    return ada.Drag({{400, 550}, {900, 550}}) &&
           ada.Desk().Look({700, 550, 701, 551}).At(700, 550) == kRed;
  }));
  EXPECT_EQ(ada.Quit(), 0);
}

TEST(WhiteboardOverDesktop, WithoutACompositorItRefusesInsteadOfHidingTheDesktop) {
  XServer server(ScreenOptions("640x480"));
  NEEDS_X_SERVER(server);
  EXPECT_EQ(server.Run({WHITEBOARD_BINARY, "--overlay"}), 2);
}
