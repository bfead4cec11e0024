// Boards that erase, select, move and clear: what the pictures show of it, over a good network and
// over bad ones. The tool itself ends with another status than 0 when the participants disagree.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "ReplayRun.h"

namespace {

using testing::HasSubstr;

// On a page of 480 x 270, every fourth pixel: red across at y 50, green across at y 100, and blue
// down at x 300, above both.
constexpr const char* kThreeLines =
    R"({"kind":"line","color":"#FFFF0000","width":24,"points":[[400,200],[1600,200]]})"
    "\n"
    R"({"kind":"line","color":"#FF00FF00","width":24,"points":[[400,400],[1600,400]]})"
    "\n"
    R"({"kind":"line","color":"#FF0000FF","width":24,"points":[[1200,100],[1200,600]]})"
    "\n";

struct Story {
  const char* title;
  std::string board;
  std::uint32_t onRed;       // at (150, 50)
  std::uint32_t onGreen;     // at (150, 100)
  std::uint32_t onBlue;      // at (300, 130)
  std::uint32_t onCrossing;  // of red and blue, at (300, 50)
};

const Story kStories[] = {
    {"nothing but marks", "", kRed, kGreen, kBlue, kBlue},
    {"the point query takes the topmost mark alone", R"({"erase":[[1200,200]]})", kRed, kGreen,
     kWhite, kRed},
    {"a miss takes nothing", R"({"erase":[[1000,700]]})", kRed, kGreen, kBlue, kBlue},
    {"an eraser takes what any part of its way crosses",
     R"({"erase":[[600,100],[600,300],[700,300],[700,500]]})", kWhite, kWhite, kBlue, kBlue},
    {"a rubber band and a move take marks with them, whichever way the band goes",
     R"({"select":[[1700,450],[300,150]]})"
     "\n"
     R"({"move":[[500,200],[500,900],[500,600]]})",
     kWhite, kWhite, kBlue, kBlue},
    {"a move back restores the picture",
     R"({"select":[[300,150],[1700,250]]})"
     "\n"
     R"({"move":[[500,200],[500,600]]})"
     "\n"
     R"({"move":[[500,600],[500,200]]})",
     kRed, kGreen, kBlue, kBlue},
    {"a mark that moved keeps its depth",
     R"({"select":[[300,350],[1700,450]]})"
     "\n"
     R"({"move":[[500,400],[500,200]]})",
     kGreen, kWhite, kBlue, kBlue},
    {"clearing takes what is there and leaves what comes",
     R"({"clear":"mine"})"
     "\n"
     R"({"kind":"line","color":"#FF0000FF","width":24,"points":[[400,200],[1600,200]]})",
     kBlue, kWhite, kWhite, kBlue},
    {"clearing everything twice is no mistake",
     R"({"clear":"all"})"
     "\n"
     R"({"clear":"all"})",
     kWhite, kWhite, kWhite, kWhite},
};

TEST(GestureTest, EveryGestureShowsOnThePagesOfBoth) {
  const ReplayFolder folder;
  for (const Story& story : kStories) {
    folder.Write("board.jsonl", kThreeLines + story.board);
    for (const char* network : {"", "--lossy 7"}) {
      const RunResult run = folder.Run(std::string("--size 480x270 board.jsonl ") + network);
      ASSERT_EQ(run.status, 0) << story.title << ": " << run.messages;
      const Picture picture = folder.ReadPicture("replay.png");
      EXPECT_EQ(PixelAt(picture, 150, 50), story.onRed) << story.title << network;
      EXPECT_EQ(PixelAt(picture, 150, 100), story.onGreen) << story.title << network;
      EXPECT_EQ(PixelAt(picture, 300, 130), story.onBlue) << story.title << network;
      EXPECT_EQ(PixelAt(picture, 300, 50), story.onCrossing) << story.title << network;
    }
  }
}

TEST(GestureTest, ThePictureShowsMovedMarksWhereTheyAreAndNoFramesAroundThem) {
  const ReplayFolder folder;
  folder.Write("moved.jsonl", std::string(R"({"kind":"line","color":"#FFFF0000","width":8,)") +
                                  R"("points":[[400,200],[800,200]]})" + "\n" +
                                  R"({"select":[[300,100],[900,300]]})" + "\n" +
                                  R"({"move":[[600,200],[700,500],[1000,600]]})" + "\n");
  folder.Write("drawn.jsonl", std::string(R"({"kind":"line","color":"#FFFF0000","width":8,)") +
                                  R"("points":[[800,600],[1200,600]]})" + "\n");
  const RunResult run =
      folder.Run("--size 480x270 --lossy 3 --out page.png moved.jsonl drawn.jsonl");
  ASSERT_EQ(run.status, 0) << run.messages;
  EXPECT_EQ(folder.ReadPicture("page-1.png").pixels, folder.ReadPicture("page-2.png").pixels);
}

TEST(GestureTest, AMoveThatGrabsNothingIsOneMessageWithItsLine) {
  const ReplayFolder folder;
  const char* const boards[] = {
      R"({"move":[[600,200],[700,300]]})",
      "{\"select\":[[300,150],[1700,250]]}\n{\"move\":[[600,800],[700,300]]}",
      "{\"select\":[[300,150],[1700,250]]}\n{\"move\":[[600,400],[700,300]]}",
      "{\"select\":[[300,150],[1700,250]]}\n{\"clear\":\"all\"}\n{\"move\":[[600,200],[7,3]]}",
  };
  for (const std::string board : boards) {
    folder.Write("board.jsonl", kThreeLines + board);
    const auto lines = 4 + std::count(board.begin(), board.end(), '\n');
    const RunResult run = folder.Run("--size 480x270 board.jsonl");
    EXPECT_EQ(run.status, 2) << board;
    EXPECT_THAT(run.messages, HasSubstr("parchlet-replay: board.jsonl:" + std::to_string(lines) +
                                        ": the move does not start on a selected mark\n"));
  }
}

}  // namespace
