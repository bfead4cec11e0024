#include "replay/Board.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "common/Input.h"

namespace replay {
namespace {

// The message of the failure that the reading ends in; empty when it succeeds.
std::string MessageOf(const std::string& text) {
  try {
    std::istringstream stream(text);
    ReadBoard(stream, "a.jsonl");
  } catch (const apps::Failure& failure) {
    return failure.what();
  }
  return {};
}

std::string MarkWith(const std::string& points) {
  return R"({"kind":"path","color":"#FF000000","width":2,"points":)" + points + "}";
}

// A line's mark with another value, or another key's.
std::string LineWith(const std::string& key, const std::string& value) {
  std::string line =
      R"({"kind":"line","color":"#80fFa501","width":30,"points":[[0,0],[1919.5,-7]]})";
  const std::size_t at = line.find(':', line.find(key)) + 1;
  return line.replace(at, line.find(key == "points" ? "}" : ",", at) - at, value);
}

TEST(BoardTest, AnythingThatIsNotAStepIsRefusedWithItsReason) {
  const std::pair<std::string, const char*> badLines[] = {
      {"{\"kind\":\"\xFF\"}", "not valid JSON"},
      {R"({"undo":1})", "\"kind\" is missing"},
      {MarkWith("[[1,1]],\"fill\":1"), "no others"},
      {LineWith("kind", "10"), "\"kind\" must be"},
      {LineWith("color", "\"#-F000000\""), "\"color\" must be"},
      {LineWith("width", "31"), "\"width\" must be"},
      {LineWith("width", "1.5"), "\"width\" must be"},
      {LineWith("points", "{}"), "\"points\" must be a list"},
      {MarkWith("[[1,1],[2]]"), "point 2 must be"},
      {MarkWith("[[1,1e999]]"), "a number is out of every range"},
      {MarkWith("[[1,1],[1,-1e308]]"), "point 2 is more than 1000000 pixels away"},
      {MarkWith("[[1920.5,1]]"), "the first point must lie on the page"},
      {R"({"erase":[[1,1]],"width":3})", "\"erase\" stands alone"},
      {R"({"clear":"theirs"})", "\"clear\" must be mine or all"},
      {R"({"pause":61})", "\"pause\" must be a number of seconds above 0"},
      {MarkWith("[[1,1]],\"author\":\"A\\u0000\""), "\"author\" must be a name"},
      {R"({"background":"no-such.png"})", "no-such.png: cannot be opened: No such file"},
      {R"({"picture":"/dev/null"})", "/dev/null: is no PNG, JPEG, BMP or GIF picture"},
      {R"({"picture":"/dev/zero"})", "/dev/zero: is larger than 67108864 bytes"},
      {R"({"picture":"/"})", "/: cannot be read: Is a directory"},
      {std::string(kMaxLineBytes + 1, ' '), "longer than"},
  };
  for (const auto& [line, reason] : badLines) {
    EXPECT_THAT(MessageOf(MarkWith("[[1,1]]") + "\n\n" + line + "\n"),
                testing::AllOf(testing::StartsWith("a.jsonl:3: "), testing::HasSubstr(reason)))
        << line.substr(0, 100);
  }
  EXPECT_EQ(MessageOf(std::string(kMaxLineBytes, ' ')), "") << "the longest line";
}

}  // namespace
}  // namespace replay
