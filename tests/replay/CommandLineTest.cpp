// What a person sees of parchlet-replay: pictures, messages, exit statuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ReplayRun.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// Red along y 540 from x 480 to 1440, in five points.
constexpr const char* kRedPath =
    R"({"kind":"path","color":"#FFFF0000","width":20,"points":[[480,540],[700,540],[701,540],[960,540],[1440,540]]})"
    "\n";
constexpr const char* kBlueBox =
    R"({"kind":"rectangle","color":"#FF0000FF","width":20,"points":[[192,108],[1728,972]]})"
    "\n";

TEST(CommandLineTest, ABoardBecomesAPictureOfTheAskedSize) {
  const ReplayFolder folder;
  folder.Write("board.jsonl", std::string(kRedPath) + kBlueBox);
  const RunResult run = folder.Run("--size 960x270 --out page.png board.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  const Picture picture = folder.ReadPicture("page.png");
  ASSERT_EQ(picture.format, PictureFormat::kPng);
  ASSERT_EQ(picture.width, 960);
  ASSERT_EQ(picture.height, 270);
  EXPECT_EQ(PixelAt(picture, 480, 135), kRed);
  EXPECT_EQ(PixelAt(picture, 238, 135), kWhite) << "the path starts at 240";
  EXPECT_EQ(PixelAt(picture, 242, 135), kRed);
  EXPECT_EQ(PixelAt(picture, 96, 200), kBlue);
  EXPECT_EQ(PixelAt(picture, 864, 200), kBlue);
  EXPECT_EQ(PixelAt(picture, 400, 243), kBlue);
  // The pen follows the smaller factor, a quarter: 5 pixels, two on either side of the middle.
  EXPECT_EQ(PixelAt(picture, 480, 137), kRed);
  EXPECT_EQ(PixelAt(picture, 480, 139), kWhite);
}

TEST(CommandLineTest, TheTallyCountsWhatWasDrawn) {
  const ReplayFolder folder;
  folder.Write("board.jsonl", std::string(kRedPath) + kBlueBox);
  const RunResult run =
      folder.Run("--size 64x36 --pace 1e6 --out page.png board.jsonl board.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  EXPECT_THAT(run.output, testing::ContainsRegex("marks: +4\npoints: +14\nframes pushed: +[1-9]"));
  EXPECT_THAT(run.output, testing::ContainsRegex("CPU per frame: +[0-9.]+ ms\n$"));
}

TEST(CommandLineTest, SeveralBoardsBecomeNumberedPictures) {
  const ReplayFolder folder;
  folder.Write("red.jsonl", kRedPath);
  folder.Write("blue.jsonl", kBlueBox);
  const RunResult run = folder.Run("--size 192x108 --out page.v2.png red.jsonl blue.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  EXPECT_THAT(folder.List(),
              ElementsAre("blue.jsonl", "page.v2-1.png", "page.v2-2.png", "red.jsonl"));
  const Picture red = folder.ReadPicture("page.v2-1.png");
  EXPECT_EQ(PixelAt(red, 96, 54), kRed);
  EXPECT_EQ(PixelAt(red, 96, 97), kWhite);
  const Picture blue = folder.ReadPicture("page.v2-2.png");
  EXPECT_EQ(PixelAt(blue, 96, 54), kWhite);
  EXPECT_EQ(PixelAt(blue, 96, 97), kBlue);
}

TEST(CommandLineTest, TheProjectsOwnBoardReplays) {
  const ReplayFolder folder;
  const RunResult run = folder.Run("--nickname --size 480x270 " BOARDS_FOLDER "/welcome.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  EXPECT_EQ(folder.ReadPicture("replay.png").width, 480);
}

TEST(CommandLineTest, ProgressIsPlainWhereThereIsNoTerminal) {
  const ReplayFolder folder;
  folder.Write("board.jsonl", kRedPath);
  const RunResult run = folder.Run("--size 64x36 board.jsonl");
  EXPECT_THAT(run.messages,
              AllOf(StartsWith("board.jsonl: 0 %\n"), EndsWith("board.jsonl: 100 %\n"),
                    Not(HasSubstr("\r")), Not(HasSubstr("\x1b"))));
}

struct Mistake {
  const char* arguments;
  const char* message;
};

TEST(CommandLineTest, AMistakeIsOneMessageAndStatusTwoAndNothingIsWritten) {
  const ReplayFolder folder;
  folder.Write("good.jsonl", kRedPath);
  folder.Write("bad.jsonl", std::string(kRedPath) + "{\"kind\":\"path\"}\n");
  folder.Write("old.png", "an older picture");
  folder.MakeFolder("folder");
  folder.WritePicture("board.png", 4, 4, kRed);
  folder.Write("pictured.jsonl", R"({"picture":"board.png"})");
  folder.Write("broken.jsonl", R"({"background":"bad.jsonl"})");
  const std::vector<std::string> before = folder.List();
  const Mistake mistakes[] = {
      {"--out old.png bad.jsonl", "bad.jsonl:2: \"color\" is missing\n"},
      {"--out new.png good.jsonl bad.jsonl", "bad.jsonl:2: \"color\" is missing\n"},
      {"--out new.png good.jsonl none.jsonl", "none.jsonl: cannot be opened: No such file"},
      {"--out none/new.png good.jsonl", "none/new.png: there is no folder none\n"},
      {"--out good.jsonl/new.png good.jsonl", "there is no folder good.jsonl\n"},
      {"--out folder good.jsonl", "folder: is there already and not a file\n"},
      {"--out folder/ good.jsonl", "not the name of a file\n"},
      {"--out '' good.jsonl", "not the name of a file\n"},
      {"--out ./good.jsonl good.jsonl", "./good.jsonl: is one of the boards or their pictures\n"},
      {"--out /proc/new.png good.jsonl", "/proc/new.png: cannot be written: "},
      {"--out old.png", "boards is required"},
      {"--out board.png pictured.jsonl", "board.png: is one of the boards or their pictures\n"},
      {"--out new.png broken.jsonl", "broken.jsonl:1: bad.jsonl: is no PNG, JPEG, BMP or GIF"},
      {"--out new.png --export none good.jsonl", "none: there is no folder none\n"},
      {"--out new.png --export old.png good.jsonl", "old.png: there is no folder old.png\n"},
      {"--out new.png --export /proc good.jsonl", "/proc: cannot be written: "},
      {"--out new.png --export '' good.jsonl", "--export must be the name of a folder\n"},
      {"--out new.png --export folder --format gif good.jsonl", "--format must be png, jpg or bmp"},
      {"--out new.png --format png good.jsonl", "--format needs --export"},
      {"--out old.png --fast good.jsonl", "--fast"},
      {"--out old.png --size 0x10 good.jsonl", "--size must be"},
      {"--out old.png --size 10x10x good.jsonl", "--size must be"},
      {"--out old.png --size 99999999999x10 good.jsonl", "--size must be"},
      {"--out old.png --size 30000x30000 good.jsonl", "--size must be"},
      {"--out old.png --lossy -1 good.jsonl", "--lossy"},
      {"--out old.png --lossy 1x good.jsonl", "--lossy must be"},
      {"--out old.png --lossy 18446744073709551616 good.jsonl", "--lossy must be"},
      {"--out old.png --pace 0 good.jsonl", "--pace must be"},
      {"--out old.png --pace nan good.jsonl", "--pace must be"},
      {"--out old.png --pace quick good.jsonl", "--pace"},
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

TEST(CommandLineTest, HelpAndVersionDrawNothing) {
  const ReplayFolder folder;
  const RunResult help = folder.Run("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.output,
              AllOf(HasSubstr("--size"), HasSubstr("--out"), HasSubstr("--pace"),
                    HasSubstr("--nickname"), HasSubstr("--export"), HasSubstr("--format")));
  const RunResult version = folder.Run("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.output,
              testing::ContainsRegex("^parchlet-replay [0-9]+\\.[0-9]+\\.[0-9]+\n$"));
  EXPECT_THAT(folder.List(), IsEmpty());
}

}  // namespace
