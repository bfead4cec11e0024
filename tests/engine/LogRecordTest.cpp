#include "engine/LogRecord.h"

#include <functional>
#include <locale>
#include <optional>
#include <regex>
#include <stdexcept>
#include <utility>

#include <parchlet/ILogger.h>
#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;

// Keeps the lines whole, each behind its level, does what it was given to do about them, and then
// throws.
class KeptLines final : public ILogger {
 public:
  explicit KeptLines(
      std::string name, std::function<void()> answer = [] {})
      : name(std::move(name)), answer(std::move(answer)) {
    SetLogger(this->name, this);
  }
  ~KeptLines() override { SetLogger(name, nullptr); }
  KeptLines(const KeptLines&) = delete;
  KeptLines& operator=(const KeptLines&) = delete;

  void Write(int level, const std::string& line) override {
    lines.push_back(std::to_string(level) + line);
    std::exchange(answer, [] {})();
    throw std::runtime_error("the disk is full");
  }

  std::string name;
  std::function<void()> answer;
  std::vector<std::string> lines;
};

// A locale that writes a separator behind every digit.
class ManySeparators final : public std::numpunct<char> {
  std::string do_grouping() const override { return "\1"; }
};

TEST(LogRecordTest, TheHeaderIsTagBaseNameLineAndFunctionOrNothing) {
  KeptLines logger("mine");
  const std::locale before = std::locale::global({std::locale(), new ManySeparators});
  LogRecord(3, "", "f", 1234, "g", "mine").Text() << 5678;
  std::locale::global(before);
  EXPECT_THAT(logger.lines, ElementsAre("3[f:1234 g]5678"));
  logger.lines.clear();
  LogRecord(3, "", "/a/b\\c.cpp", 7, "F::G", "mine").Text() << "text" << 5;
  LogRecord(0, "tag", "d\\e/f.cpp", 8, "G", "mine").Text() << "";
  LogRecord(1, "", "folder/", -9, "", "mine").Text() << "m";
  LogRecord(0, nullptr, "f", 1, "g", "mine").Text() << "a";
  LogRecord(0, "", nullptr, 1, "g", "mine").Text() << "b";
  LogRecord(0, "", "f", 1, nullptr, "mine").Text() << "c";
  LogRecord(0, "", "f", 1, "g", "another").Text() << "nobody hears this";
  EXPECT_THAT(logger.lines, ElementsAre("3[c.cpp:7 F::G]text5", "0[tag][f.cpp:8 G]", "1[:-9 ]m",
                                        "0a", "0b", "0c"));
}

// What the records say is compared by the model.
TEST(LogRecordTest, AnEngineGoesOnWhateverItsLoggerThrows) {
  KeptLines logger("SDK");
  const MemoryWindow window({0, 0, 20, 10});
  std::optional<Parchlet> engine(std::in_place);
  EXPECT_EQ(1, engine->NewDoc("ada", "d"));
  engine->NewPage("d", "x", "ada", window.Handle(), PageOf(1, 0));
  EXPECT_EQ(1, engine->NewPage("d", "x", "ada", window.Handle(), PageOf(20, 10)));
  engine.reset();
  ASSERT_EQ(6U, logger.lines.size());
  EXPECT_THAT(logger.lines.back(), testing::EndsWith(" Parchlet::~Parchlet]destructor"));
  const std::regex form("[02].[A-Za-z]+[.]cpp:[1-9][0-9]* Parchlet::[^\\]]*\\].+");
  EXPECT_TRUE(std::regex_match(logger.lines[3], form)) << logger.lines[3];
}

TEST(LogRecordTest, ALoggerMayCallTheEngine) {
  Whiteboard board;
  Parchlet& engine = board.engine;
  engine.Init();
  {
    const KeptLines maker("SDK", [&] { EXPECT_EQ(1, engine.NewDoc("logger", "late")); });
    EXPECT_EQ(1, engine.NewDoc("ada", "late"));
  }
  std::string creator;
  EXPECT_EQ(1, engine.GetDocCreator("late", creator));
  EXPECT_EQ("logger", creator) << "it was first";
  const auto makePage = [&](const std::string& author) {
    return engine.NewPage("late", "page", author, board.window.Handle(), PageOf(20, 10));
  };
  {
    const KeptLines maker("SDK", [&] { EXPECT_EQ(1, makePage("logger")); });
    EXPECT_EQ(0, makePage("ada"));
  }
  EXPECT_EQ(1, engine.GetPageCount("late"));
  EXPECT_EQ(1, engine.DelPage("late", "page"));
  {
    const KeptLines deleter("SDK", [&] { EXPECT_EQ(1, engine.DelDoc("late")); });
    EXPECT_EQ(0, makePage("ada"));
  }
  EXPECT_EQ(1, engine.GetDocCount());
}

}  // namespace
