// What a person sees of parchlet-replay: pictures, messages, exit statuses. The tool itself ends
// with another status than 0 when the participants disagree.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

#include "replay/Meeting.h"
#include "support/Frame.h"
#include "support/PictureFile.h"
#include "support/TemporaryFolder.h"

namespace {

std::uint32_t PixelAt(const parchlet::Picture& picture, int x, int y) {
  return picture.pixels.at(static_cast<std::size_t>(y) * picture.width + x);
}

struct RunResult {
  int status;
  std::string output;    // standard output
  std::string messages;  // standard error
};

// A folder that is there for one test, with the files the test puts into it. The tool runs inside
// it, so plain file names name files of it.
class ReplayFolder : public TemporaryFolder {
 public:
  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(File(name), std::ios::binary) << content;
  }
  // The names of what is in the folder, sorted.
  std::vector<std::string> List() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  // Runs the tool with these words, as a shell reads them, after a command of the shell's.
  RunResult Run(const std::string& arguments) const {
    const std::string output = streams.File("out");
    const std::string messages = streams.File("err");
    const int status = std::system(("cd '" + Path().string() + "' && '" REPLAY_BINARY "' " +
                                    arguments + " >'" + output + "' 2>'" + messages + "'")
                                       .c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadWholeFile(output),
            ReadWholeFile(messages)};
  }

 private:
  TemporaryFolder streams;  // what the tool printed
};

// On a page of 480 x 270, every fourth pixel: red across at y 50, green across at y 100, in more
// points than two fragments hold, and blue down at x 300, above both.
std::string ThreeLines() {
  const std::string style = R"(,"width":24,"points":[)";
  std::string path = "[400,400]";
  for (int x = 402; x <= 1600; x += 2) {
    path += ",[" + std::to_string(x) + ",400]";
  }
  return R"({"kind":"line","color":"#FFFF0000")" + style + "[400,200],[1600,200]]}\n" +
         R"({"kind":"path","color":"#FF00FF00")" + style + path + "]}\n" +
         R"({"kind":"line","color":"#FF0000FF")" + style + "[1200,100],[1200,600]]}\n";
}

TEST(CommandLineTest, EveryBoardBecomesANumberedPictureOfTheAskedSize) {
  const ReplayFolder folder;
  folder.Write("lines.jsonl", ThreeLines());
  folder.Write("empty.jsonl", "");
  const RunResult run =
      folder.Run("--size 480x135 --pace 1e6 --out page.v2.bmp lines.jsonl empty.jsonl");
  EXPECT_EQ(run.status, 0) << run.messages;
  EXPECT_THAT(folder.List(),
              testing::ElementsAre("empty.jsonl", "lines.jsonl", "page.v2-1.bmp", "page.v2-2.bmp"));
  const parchlet::Picture picture = ReadPicture(folder.File("page.v2-1.bmp"));
  ASSERT_EQ(picture.width, 480);
  ASSERT_EQ(picture.height, 135);
  EXPECT_EQ(PixelAt(picture, 102, 25), kRed);
  EXPECT_EQ(PixelAt(picture, 200, 50), kGreen);
  EXPECT_EQ(PixelAt(picture, 300, 50), kBlue);
  // The pen follows the smaller factor, an eighth: 3 pixels.
  EXPECT_EQ(PixelAt(picture, 200, 26), kRed);
  EXPECT_EQ(PixelAt(picture, 200, 27), kWhite);
  EXPECT_EQ(PixelAt(ReadPicture(folder.File("page.v2-2.bmp")), 200, 50), kWhite);
  EXPECT_THAT(run.output, testing::ContainsRegex("marks: +3\npoints: +605\nframes pushed: +[1-9]"));
  // Plain where there is no terminal.
  EXPECT_THAT(run.messages, testing::AllOf(testing::StartsWith("lines.jsonl: 0 %\n"),
                                           testing::EndsWith("empty.jsonl: 100 %\n")));
}

TEST(CommandLineTest, EveryGestureShowsOnThePagesOfAllOverABadNetwork) {
  struct Seen {
    int x, y;
    std::uint32_t color;
  };
  const struct {
    const char* title;
    std::string board;
    std::vector<Seen> seen;
  } stories[] = {
      {"an eraser takes what any part of its way crosses",
       ThreeLines() + R"({"erase":[[600,100],[600,300],[700,300],[700,500]]})",
       {{150, 50, kWhite}, {150, 100, kWhite}, {300, 130, kBlue}, {300, 50, kBlue}}},
      {"a mark that moved keeps its depth, and has no frame around it",
       ThreeLines() + R"({"select":[[1700,450],[300,350]]}
{"move":[[500,400],[900,900],[500,200]]})",
       {{150, 50, kGreen}, {150, 100, kWhite}, {300, 50, kBlue}, {95, 45, kWhite}}},
      {"clearing takes what is there and leaves what comes",
       ThreeLines() + R"({"clear":"mine"}
{"kind":"line","color":"#FF0000FF","width":24,"points":[[400,200],[1600,200]]})",
       {{150, 50, kBlue}, {150, 100, kWhite}, {300, 130, kWhite}}},
      // A wide green background from y 90 to 180, Ada's red line across at y 135, and Grace's blue
      // picture, which moves from x 300 to x 150.
      {"pictures and backgrounds reach everybody",
       R"({"background":"../green.png"}
{"kind":"line","color":"#FFFF0000","width":24,"points":[[200,540],[1600,540]],"author":"Ada"}
{"picture":"../blue.png","points":[[1680,840],[1200,240]],"author":"Grace"}
{"select":[[1100,200],[1800,900]]}
{"move":[[1400,400],[1300,400],[800,400]]})",
       {{100, 80, kWhite},
        {60, 100, kGreen},
        {120, 135, kRed},
        {152, 65, kBlue},
        {350, 205, kWhite}}},
  };
  const ReplayFolder folder;
  WritePicture(folder.File("green.png"), 48, 9, kGreen);
  WritePicture(folder.File("blue.png"), 30, 20, kBlue);
  std::filesystem::create_directory(folder.File("sub"));
  std::filesystem::create_directory(folder.File("out"));
  for (const auto& [title, board, seen] : stories) {
    folder.Write("sub/board.jsonl", board);
    const RunResult run =
        folder.Run("--size 480x270 --lossy 7 --export out --format bmp sub/board.jsonl");
    ASSERT_EQ(run.status, 0) << title << ": " << run.messages;
    const parchlet::Picture page = ReadPicture(folder.File("replay.png"));
    for (const auto& [x, y, color] : seen) {
      EXPECT_EQ(PixelAt(page, x, y), color) << title << ", at " << x << ", " << y;
    }
    EXPECT_EQ(ReadPicture(folder.File("out/page-1.bmp")).pixels, page.pixels) << title;
  }
}

TEST(CommandLineTest, AMistakeIsOneMessageAndStatusTwoAndNothingIsWritten) {
  const ReplayFolder folder;
  folder.Write("good.jsonl", ThreeLines());
  folder.Write("bad.jsonl", ThreeLines() + "{\"kind\":\"path\"}\n");
  folder.Write("slip.jsonl", ThreeLines() + "{\"move\":[[600,400],[700,300]]}");
  folder.Write("old.png", "an older picture");
  const std::vector<std::string> before = folder.List();
  const std::pair<const char*, const char*> mistakes[] = {
      {"--out old.png bad.jsonl", "bad.jsonl:4: \"color\" is missing\n"},
      {"--out old.png slip.jsonl", "slip.jsonl:4: the move does not start on a selected mark\n"},
      {"good.jsonl none.jsonl", "none.jsonl: cannot be opened: No such file"},
      {"--out none/new.png good.jsonl", "none/new.png: there is no folder none\n"},
      {"--out ./good.jsonl good.jsonl", "./good.jsonl: is one of the boards or their pictures\n"},
      {"--out /proc/new.png good.jsonl", "/proc/new.png: cannot be written: "},
      {"--out old.png", "boards is required"},
      {"--export out --format gif good.jsonl", "--format must be png, jpg or bmp"},
      {"--format png good.jsonl", "--format needs --export"},
      {"--size 30000x30000 good.jsonl", "--size must be"},
      {"--lossy 1x good.jsonl", "--lossy must be"},
      {"--pace nan good.jsonl", "--pace must be"},
  };
  for (const auto& [arguments, message] : mistakes) {
    const RunResult run = folder.Run(arguments);
    EXPECT_EQ(run.status, 2) << arguments;
    EXPECT_THAT(run.output, testing::IsEmpty()) << arguments;
    EXPECT_THAT(run.messages, testing::HasSubstr(std::string("parchlet-replay: ") + message));
    EXPECT_EQ(folder.List(), before) << arguments;
    EXPECT_EQ(ReadWholeFile(folder.File("old.png")), "an older picture") << arguments;
  }
}

// No fault of today's engine makes the tool tell this.
TEST(MeetingTest, ADifferenceOfOnePixelIsFoundAndNamed) {
  EXPECT_NO_THROW(replay::RequireEqual({2, 1, {1, 2}}, {2, 1, {1, 2}}, "a.jsonl"));
  EXPECT_THAT(
      [] {
        replay::RequireEqual({2, 1, {1, 2}}, {2, 1, {1, 3}}, "a.jsonl");
      },
      testing::ThrowsMessage<replay::Disagreement>(
          "a.jsonl: the participants' pages differ in 1 pixels, first at 1, 0"));
}

}  // namespace
