#include "replay/Board.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <variant>

#include "replay/Failure.h"

namespace replay {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Board Read(const std::string& text) {
  std::istringstream stream(text);
  return ReadBoard(stream, "a.jsonl");
}

// The message of the failure that the reading ends in; empty when it succeeds.
template <class Reading>
std::string MessageOf(const Reading& reading) {
  try {
    reading();
  } catch (const Failure& failure) {
    return failure.what();
  }
  return {};
}

std::string MessageOf(const std::string& text) {
  return MessageOf([&] { Read(text); });
}

std::string MarkWith(const std::string& points) {
  return R"({"kind":"path","color":"#FF000000","width":2,"points":)" + points + "}";
}

constexpr const char* kGoodLine =
    R"({"kind":"line","color":"#80fFa501","width":30,"points":[[0,0],[1919.5,-7]]})";

TEST(BoardTest, EveryStepOfAFileIsReadWithItsLine) {
  const Board board =
      Read(std::string(kGoodLine) + "\r\n \t\n" +
           R"({"points":[[1920,1080]],"width":1.0,"color":"#00000001","kind":"path"})" + "\n" +
           R"({"erase":[[1,2]]})" + "\n\n" + R"({"select":[[0,1080],[-5.5,3000]]})" + "\n" +
           R"({"move":[[1,2],[3,4],[5,6]]})" + "\n" + R"({"clear":"mine"})");
  ASSERT_EQ(board.steps.size(), 6U);
  const Mark& line = std::get<Mark>(board.steps[0].action);
  EXPECT_EQ(line.kind, MarkKind::kLine);
  EXPECT_EQ(line.color, 0x80FFA501U);
  EXPECT_EQ(line.width, 30);
  EXPECT_EQ(line.points.at(1).x, 1919.5);
  EXPECT_EQ(std::get<Mark>(board.steps[1].action).color, 1U);
  EXPECT_EQ(std::get<Erasure>(board.steps[2].action).points.size(), 1U);
  EXPECT_EQ(std::get<Selection>(board.steps[3].action).points.back().x, -5.5);
  EXPECT_EQ(board.steps[3].line, 6U);
  EXPECT_EQ(std::get<Drag>(board.steps[4].action).points.back().y, 6.0);
  EXPECT_EQ(std::get<Clearing>(board.steps[5].action), Clearing::kMine);
  EXPECT_EQ(board.PointCount(), 9U);
  EXPECT_TRUE(Read("").steps.empty());
}

TEST(BoardTest, AuthorsAreNamedOnceInTheOrderTheyComeAndThereAreNotTooMany) {
  const auto authors = [](int count) {
    std::string text = MarkWith("[[1,1]]") + "\n";
    for (int author = 2 * count; author > 0; --author) {
      text += MarkWith("[[1,1]],\"author\":\"" + std::to_string(author % count) + "\"") + "\n";
    }
    return AuthorsOf({Read(text), Read(text)});
  };
  EXPECT_THAT(authors(3), testing::ElementsAre("0", "2", "1"));
  EXPECT_THAT(authors(kMaxAuthors), testing::SizeIs(kMaxAuthors));
  EXPECT_THROW(authors(kMaxAuthors + 1), Failure);
}

struct BadLine {
  std::string line;
  const char* reason;
};

TEST(BoardTest, AnythingThatIsNotAStepIsRefusedWithItsReason) {
  const std::string deep(100'000, '[');
  const BadLine badLines[] = {
      {"{\"kind\":\"\xFF\"}", "not valid JSON"},
      {std::string("{\"kind\"\0:1}", 11), "not valid JSON"},
      {deep, "not valid JSON"},
      {deep + std::string(deep.size(), ']'), "a line is one JSON object"},
      {R"({"undo":1})", "\"kind\" is missing"},
      {MarkWith("[[1,1]],\"fill\":1"), "no others"},
      {R"({"kind":10,"color":"#FF000000","width":2,"points":[[1,1]]})", "\"kind\" must be"},
      {R"({"kind":"path","color":"#-F000000","width":2,"points":[[1,1]]})", "\"color\" must be"},
      {R"({"kind":"path","color":"#FF00000","width":2,"points":[[1,1]]})", "\"color\" must be"},
      {R"({"kind":"path","color":4278190080,"width":2,"points":[[1,1]]})", "\"color\" must be"},
      {R"({"kind":"path","color":"#FF000000","width":31,"points":[[1,1]]})", "\"width\" must be"},
      {R"({"kind":"path","color":"#FF000000","width":1.5,"points":[[1,1]]})", "\"width\" must be"},
      {R"({"kind":"path","color":"#FF000000","width":-2e300,"points":[[1,1]]})", "\"width\" must"},
      {MarkWith("{}"), "\"points\" must be a list"},
      {MarkWith("[]"), "at least one point"},
      {MarkWith("[[1,1],[2]]"), "point 2 must be"},
      {MarkWith("[[1,1],[2,null]]"), "point 2 must be"},
      {MarkWith("[[1,1e999]]"), "a number is out of every range"},
      {MarkWith("[[1,1],[1,-1e308]]"), "point 2 is more than 1000000 pixels away"},
      {MarkWith("[[1920.5,1]]"), "the first point must lie on the page"},
      {R"({"kind":"line","color":"#FF000000","width":2,"points":[[1,1]]})", "two points, not 1"},
      {R"({"erase":[]})", "\"erase\" needs 1 point or more"},
      {R"({"erase":[[-1,1],[2,3]]})", "the first point must lie on the page"},
      {R"({"erase":[[1,1]],"width":3})", "\"erase\" stands alone"},
      {R"({"select":[[1,1],[2,2],[3,3]]})", "\"select\" has two points, not 3"},
      {R"({"move":[[1,1]]})", "\"move\" needs 2 points or more"},
      {R"({"clear":"theirs"})", "\"clear\" must be mine or all"},
      {R"({"pause":61})", "\"pause\" must be a number of seconds above 0"},
      {MarkWith("[[1,1]],\"author\":\"A\\u0000\""), "\"author\" must be a name"},
      {MarkWith("[[1,1]],\"author\":\"" + std::string(65, 'A') + "\""), "\"author\" must be"},
      {R"({"picture":""})", "\"picture\" must be the name of a picture file"},
      {R"({"picture":"a.png","points":[[1,1]]})", "a picture has two points, not 1"},
      {R"({"picture":"a.png","size":3})", "and no others"},
      {R"({"background":"no-such.png"})", "no-such.png: cannot be opened: No such file"},
      {R"({"picture":"/dev/null"})", "/dev/null: is no PNG, JPEG, BMP or GIF picture"},
      {R"({"picture":"/dev/zero"})", "/dev/zero: is larger than 67108864 bytes"},
      {R"({"picture":"/"})", "/: cannot be read: Is a directory"},
  };
  for (const BadLine& bad : badLines) {
    EXPECT_THAT(MessageOf(std::string(kGoodLine) + "\n\n" + bad.line + "\n" + kGoodLine),
                testing::AllOf(StartsWith("a.jsonl:3: "), HasSubstr(bad.reason)))
        << bad.line.substr(0, 100);
  }
}

TEST(BoardTest, TheLongestLineIsReadAndALongerOneIsNot) {
  const std::string mark = MarkWith("[[1,1]]");
  const std::string longest = mark + std::string(kMaxLineBytes - mark.size(), ' ');
  EXPECT_EQ(Read(longest).steps.size(), 1U);
  EXPECT_THAT(MessageOf(mark + "\n" + longest + " "),
              testing::AllOf(StartsWith("a.jsonl:2: "), HasSubstr("longer than")));
}

TEST(BoardTest, AFileThatCannotBeReadIsNamed) {
  const auto messageFor = [](const char* path) {
    return MessageOf([path] { ReadBoard(std::string(path)); });
  };
  EXPECT_EQ(messageFor("no-such.jsonl"),
            "no-such.jsonl: cannot be opened: No such file or directory");
  EXPECT_EQ(messageFor("/"), "/: cannot be read: Is a directory");
  EXPECT_THAT(messageFor("/dev/zero"), StartsWith("/dev/zero:1: the line is longer"));
}

}  // namespace
}  // namespace replay
