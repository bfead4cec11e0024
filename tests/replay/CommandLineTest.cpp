// What a person sees of parchlet-replay: pictures, messages, exit statuses. The tool itself ends
// with another status than 0 when the participants disagree.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ReplayRun.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// On a page of 480 x 270, every fourth pixel: red across at y 50, green across at y 100, and blue
// down at x 300, above both.
constexpr const char* kThreeLines =
    R"({"kind":"line","color":"#FFFF0000","width":24,"points":[[400,200],[1600,200]]})"
    "\n"
    R"({"kind":"path","color":"#FF00FF00","width":24,"points":[[400,400],[700,400],[701,400],[1600,400]]})"
    "\n"
    R"({"kind":"line","color":"#FF0000FF","width":24,"points":[[1200,100],[1200,600]]})"
    "\n";

TEST(CommandLineTest, EveryBoardBecomesANumberedPictureOfTheAskedSize) {
  const ReplayFolder folder;
  folder.Write("lines.jsonl", kThreeLines);
  folder.Write("empty.jsonl", "");
  const RunResult run =
      folder.Run("--size 480x135 --pace 1e6 --out page.v2.png lines.jsonl empty.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  EXPECT_THAT(folder.List(),
              ElementsAre("empty.jsonl", "lines.jsonl", "page.v2-1.png", "page.v2-2.png"));
  const Picture picture = folder.ReadPicture("page.v2-1.png");
  ASSERT_EQ(picture.format, PictureFormat::kPng);
  ASSERT_EQ(picture.width, 480);
  ASSERT_EQ(picture.height, 135);
  EXPECT_EQ(PixelAt(picture, 98, 25), kWhite);
  EXPECT_EQ(PixelAt(picture, 102, 25), kRed);
  EXPECT_EQ(PixelAt(picture, 200, 50), kGreen);
  EXPECT_EQ(PixelAt(picture, 300, 50), kBlue);
  // The pen follows the smaller factor, an eighth: 3 pixels.
  EXPECT_EQ(PixelAt(picture, 200, 26), kRed);
  EXPECT_EQ(PixelAt(picture, 200, 27), kWhite);
  EXPECT_EQ(PixelAt(folder.ReadPicture("page.v2-2.png"), 200, 50), kWhite);
  EXPECT_THAT(run.output, ContainsRegex("marks: +3\npoints: +8\nframes pushed: +[1-9]"));
  EXPECT_THAT(run.output, ContainsRegex("CPU per frame: +[0-9.]+ ms\n$"));
  // Plain where there is no terminal.
  EXPECT_THAT(run.messages,
              AllOf(StartsWith("lines.jsonl: 0 %\n"), EndsWith("empty.jsonl: 100 %\n"),
                    Not(HasSubstr("\r")), Not(HasSubstr("\x1b"))));
}

TEST(CommandLineTest, TheProjectsOwnBoardReplays) {
  const ReplayFolder folder;
  const RunResult run = folder.Run("--nickname --size 480x270 " BOARDS_FOLDER "/welcome.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  EXPECT_EQ(folder.ReadPicture("replay.png").width, 480);
}

struct Story {
  const char* title;
  const char* board;
  std::uint32_t onRed;       // at (150, 50)
  std::uint32_t onGreen;     // at (150, 100)
  std::uint32_t onBlue;      // at (300, 130)
  std::uint32_t onCrossing;  // of red and blue, at (300, 50)
};

TEST(CommandLineTest, EveryGestureShowsOnThePagesOfAllOverAnyNetwork) {
  const Story stories[] = {
      {"a point erases the topmost mark alone", R"({"erase":[[1200,200]]})", kRed, kGreen, kWhite,
       kRed},
      {"an eraser takes what any part of its way crosses",
       R"({"erase":[[600,100],[600,300],[700,300],[700,500]]})", kWhite, kWhite, kBlue, kBlue},
      {"a mark that moved keeps its depth, and has no frame around it",
       R"({"select":[[1700,450],[300,350]]})"
       "\n"
       R"({"move":[[500,400],[900,900],[500,200]]})",
       kGreen, kWhite, kBlue, kBlue},
      {"clearing takes what is there and leaves what comes",
       R"({"clear":"mine"})"
       "\n"
       R"({"clear":"all"})"
       "\n"
       R"({"kind":"line","color":"#FF0000FF","width":24,"points":[[400,200],[1600,200]]})",
       kBlue, kWhite, kWhite, kBlue},
  };
  const ReplayFolder folder;
  for (const Story& story : stories) {
    folder.Write("board.jsonl", std::string(kThreeLines) + story.board);
    for (const char* network : {"", "--lossy 7"}) {
      const RunResult run = folder.Run(std::string("--size 480x270 board.jsonl ") + network);
      ASSERT_EQ(run.status, 0) << story.title << ": " << run.messages;
      const Picture picture = folder.ReadPicture("replay.png");
      EXPECT_EQ(PixelAt(picture, 150, 50), story.onRed) << story.title << network;
      EXPECT_EQ(PixelAt(picture, 150, 100), story.onGreen) << story.title << network;
      EXPECT_EQ(PixelAt(picture, 300, 130), story.onBlue) << story.title << network;
      EXPECT_EQ(PixelAt(picture, 300, 50), story.onCrossing) << story.title << network;
      // Blue, and no frame, at the ends of what moved.
      EXPECT_EQ(PixelAt(picture, 95, 45), kWhite) << story.title << network;
    }
  }
}

TEST(CommandLineTest, AMoveThatGrabsNothingIsOneMessageWithItsLine) {
  const ReplayFolder folder;
  folder.Write("board.jsonl", std::string(kThreeLines) +
                                  "{\"select\":[[300,150],[1700,250]]}\n"
                                  "{\"move\":[[600,400],[700,300]]}");
  const RunResult run = folder.Run("--size 480x270 board.jsonl");
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.messages,
              HasSubstr("parchlet-replay: board.jsonl:5: the move does not start on a selected"));
}

class PicturesTest : public testing::Test {
 protected:
  PicturesTest() {
    folder.WritePicture("green.png", 48, 9, kGreen);
    folder.WritePicture("blue.png", 30, 20, kBlue);
    folder.MakeFolder("sub");
    folder.MakeFolder("out");
    // On a page of 480 x 270: a wide green background from y 90 to 180, a picture in the corner in
    // its own size, Ada's red line across at y 135, and Grace's blue picture from (300, 60) to
    // (420, 210), above all.
    folder.Write(
        "sub/board.jsonl",
        R"({"background":"../green.png"})"
        "\n"
        R"({"picture":"../blue.png"})"
        "\n"
        R"({"kind":"line","color":"#FFFF0000","width":24,"points":[[200,540],[1600,540]],"author":"Ada"})"
        "\n"
        R"({"picture":"../blue.png","points":[[1680,840],[1200,240]],"author":"Grace"})"
        "\n");
  }

  Picture Replay(const std::string& arguments) {
    const RunResult run = folder.Run("--size 480x270 " + arguments);
    EXPECT_EQ(run.status, 0) << arguments << ": " << run.messages;
    return folder.ReadPicture("replay.png");
  }

  ReplayFolder folder;
};

TEST_F(PicturesTest, PicturesAndBackgroundsReachEverybodyAndCanBeMoved) {
  const std::string moves = folder.Read("sub/board.jsonl") +
                            R"({"erase":[[400,540]]})"
                            "\n"
                            R"({"select":[[1100,200],[1800,900]]})"
                            "\n"
                            R"({"move":[[1400,400],[1300,400],[800,400]]})";
  folder.Write("sub/moved.jsonl", moves);
  for (const char* network : {"", "--lossy 3"}) {
    const Picture page = Replay(std::string("sub/board.jsonl ") + network);
    EXPECT_EQ(PixelAt(page, 100, 80), kWhite);
    EXPECT_EQ(PixelAt(page, 100, 100), kGreen);
    EXPECT_EQ(PixelAt(page, 200, 135), kRed);
    EXPECT_EQ(PixelAt(page, 299, 100), kGreen);
    EXPECT_EQ(PixelAt(page, 301, 61), kBlue);
    EXPECT_EQ(PixelAt(page, 418, 208), kBlue);
    EXPECT_EQ(PixelAt(page, 360, 135), kBlue);
    EXPECT_EQ(PixelAt(page, 29, 19), kBlue) << "the picture in the corner";
    EXPECT_EQ(PixelAt(page, 31, 19), kWhite);
    const Picture moved = Replay(std::string("sub/moved.jsonl ") + network);
    EXPECT_EQ(PixelAt(moved, 100, 135), kGreen) << "Ada's line is gone";
    EXPECT_EQ(PixelAt(moved, 152, 65), kBlue) << "Grace's picture is 150 pixels to the left";
    EXPECT_EQ(PixelAt(moved, 275, 205), kWhite);
  }
}

TEST_F(PicturesTest, NamesAppearBesideAuthorsMarksWhenAskedFor) {
  const Picture plain = Replay("sub/board.jsonl");
  const Picture named = Replay("--nickname --lossy 2 sub/board.jsonl");
  // The boxes hang down and right from where Ada's line and Grace's picture begin, 7 pixels a unit.
  EXPECT_NE(PixelAt(named, 51, 144), PixelAt(plain, 51, 144));
  EXPECT_NE(PixelAt(named, 301, 69), PixelAt(plain, 301, 69));
  EXPECT_EQ(PixelAt(named, 49, 144), PixelAt(plain, 49, 144));
  EXPECT_EQ(PixelAt(named, 301, 71), PixelAt(plain, 301, 71));
}

TEST_F(PicturesTest, TheEngineExportsPagesInTheAskedFormatOrTheDocumentUnderTheTime) {
  folder.Write("out/page-1.bmp", "an older file");
  const Picture page = Replay("--export out sub/board.jsonl --format bmp");
  EXPECT_THAT(folder.List("out"), ElementsAre("page-1.bmp"));
  EXPECT_EQ(folder.ReadPicture("out/page-1.bmp").pixels, page.pixels);
  folder.MakeFolder("all");
  Replay("--export all/ sub/board.jsonl");
  const std::vector<std::string> names = folder.List("all");
  ASSERT_THAT(names, ElementsAre(testing::MatchesRegex("[0-9]{8}_[0-9]{6}\\.[0-9]{3}\\.png")));
  EXPECT_EQ(folder.ReadPicture("all/" + names[0]).pixels, page.pixels);
}

TEST_F(PicturesTest, AnExportThatTheDiskRefusesEndsWithItsName) {
  // Files of at most 16 blocks of 512 bytes: enough for the picture, not for the export. The tool
  // has to live to see its writes refused.
  const RunResult run = folder.Run("--size 480x270 --export out --format bmp sub/board.jsonl",
                                   "ulimit -f 16 && trap \'\' XFSZ");
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.messages, EndsWith("out/page-1.bmp: the page cannot be written\n"));
  EXPECT_THAT(folder.List("out"), IsEmpty());
}

struct Mistake {
  const char* arguments;
  const char* message;
};

TEST_F(PicturesTest, AMistakeIsOneMessageAndStatusTwoAndNothingIsWritten) {
  folder.Write("good.jsonl", kThreeLines);
  folder.Write("bad.jsonl", std::string(kThreeLines) + "{\"kind\":\"path\"}\n");
  folder.Write("old.png", "an older picture");
  folder.Write("broken.jsonl", R"({"background":"bad.jsonl"})");
  const std::vector<std::string> before = folder.List();
  const Mistake mistakes[] = {
      {"--out old.png bad.jsonl", "bad.jsonl:4: \"color\" is missing\n"},
      {"--out new.png good.jsonl none.jsonl", "none.jsonl: cannot be opened: No such file"},
      {"--out none/new.png good.jsonl", "none/new.png: there is no folder none\n"},
      {"--out sub good.jsonl", "sub: is there already and not a file\n"},
      {"--out '' good.jsonl", "not the name of a file\n"},
      {"--out ./good.jsonl good.jsonl", "./good.jsonl: is one of the boards or their pictures\n"},
      {"--out blue.png sub/board.jsonl", "blue.png: is one of the boards or their pictures\n"},
      {"--out /proc/new.png good.jsonl", "/proc/new.png: cannot be written: "},
      {"--out old.png", "boards is required"},
      {"--out new.png broken.jsonl", "broken.jsonl:1: bad.jsonl: is no PNG, JPEG, BMP or GIF"},
      {"--out new.png --export old.png good.jsonl", "old.png: there is no folder old.png\n"},
      {"--out new.png --export '' good.jsonl", "--export must be the name of a folder\n"},
      {"--out new.png --export out --format gif good.jsonl", "--format must be png, jpg or bmp"},
      {"--out new.png --format png good.jsonl", "--format needs --export"},
      {"--out old.png --size 10x10x good.jsonl", "--size must be"},
      {"--out old.png --size 30000x30000 good.jsonl", "--size must be"},
      {"--out old.png --lossy 1x good.jsonl", "--lossy must be"},
      {"--out old.png --pace nan good.jsonl", "--pace must be"},
  };
  for (const Mistake& mistake : mistakes) {
    const RunResult run = folder.Run(mistake.arguments);
    EXPECT_EQ(run.status, 2) << mistake.arguments;
    EXPECT_THAT(run.output, IsEmpty()) << mistake.arguments;
    EXPECT_THAT(run.messages, AllOf(StartsWith("parchlet-replay: "), HasSubstr(mistake.message)));
    EXPECT_EQ(folder.List(), before) << mistake.arguments;
    EXPECT_EQ(folder.Read("old.png"), "an older picture") << mistake.arguments;
  }
}

}  // namespace
