#include "engine/LogRecord.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

#include <parchlet/ILogger.h>
#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;

// Keeps the lines whole, each behind its level.
class KeptLines final : public ILogger {
 public:
  explicit KeptLines(const std::string& name) : name(name) { SetLogger(name, this); }
  ~KeptLines() override { SetLogger(name, nullptr); }
  KeptLines(const KeptLines&) = delete;
  KeptLines& operator=(const KeptLines&) = delete;

  void Write(int level, const std::string& line) override {
    lines.push_back(std::to_string(level) + line);
    if (level < 0) {
      throw std::runtime_error("the disk is full");
    }
  }

  std::string name;
  std::vector<std::string> lines;
};

TEST(LogRecordTest, TheHeaderIsTagBaseNameLineAndFunctionOrNothing) {
  KeptLines logger("mine");
  LogRecord(3, "", "/a/b\\c.cpp", 7, "F::G", "mine").Text() << "text" << 5;
  LogRecord(0, "tag", "d\\e/f.cpp", 8, "G", "mine").Text() << "";
  LogRecord(1, "", "folder/", -9, "", "mine").Text() << "m";
  LogRecord(0, nullptr, "f", 1, "g", "mine").Text() << "a";
  LogRecord(0, "", nullptr, 1, "g", "mine").Text() << "b";
  LogRecord(0, "", "f", 1, nullptr, "mine").Text() << "c";
  LogRecord(0, "", "f", 1, "g", "another").Text() << "nobody hears this";
  LogRecord(-1, "", "f", 1, "g", "mine").Text() << "nor what the logger throws";
  EXPECT_THAT(logger.lines, ElementsAre("3[c.cpp:7 F::G]text5", "0[tag][f.cpp:8 G]", "1[:-9 ]m",
                                        "0a", "0b", "0c", "-1[f:1 g]nor what the logger throws"));
}

// That line of a source file and the one after it.
std::string StatementAt(const std::string& file, int line) {
  std::ifstream source(std::filesystem::path(PARCHLET_SOURCE_FOLDER "/src/engine") / file);
  std::string text;
  std::string next;
  for (int i = 0; i < line && std::getline(source, text); ++i) {
  }
  std::getline(source, next);
  return text + next;
}

// What the records say is compared by the model.
TEST(LogRecordTest, AnEnginesRecordsNameTheFileAndLineOfTheirStatement) {
  KeptLines logger("SDK");
  const MemoryWindow window({0, 0, 20, 10});
  std::optional<Parchlet> engine(std::in_place);
  engine->NewDoc("ada", "d");
  engine->NewDoc("ada", "d");
  engine->NewPage("d", "x", "ada", nullptr, PageOf(20, 10));
  engine->NewPage("x", "x", "ada", window.Handle(), PageOf(20, 10));
  engine->NewPage("d", "x", "ada", window.Handle(), PageOf(1, 0));
  engine->Init();
  engine->Destroy();
  engine->ClearAnnotations("d", "x", "", "");  // without a window no page is looked for
  engine.reset();
  ASSERT_EQ(9U, logger.lines.size());
  EXPECT_THAT(logger.lines.back(), testing::EndsWith(" Parchlet::~Parchlet]destructor"));
  for (const std::string& line : logger.lines) {
    const auto open = line.find('[');
    const auto colon = line.find(':', open);
    const auto close = line.find(']', colon);
    ASSERT_NE(std::string::npos, close) << line;
    const std::string file = line.substr(open + 1, colon - open - 1);
    const std::string text = line.substr(close + 1, line.find('=', close) - close);
    EXPECT_THAT(StatementAt(file, std::stoi(line.substr(colon + 1))),
                testing::AllOf(testing::HasSubstr(text), testing::ContainsRegex("L(OG|og)")))
        << line;
  }
}

}  // namespace
