#include "engine/LogRecord.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

#include <parchlet/Parchlet.h>

#include "support/RecordingLogger.h"
#include "support/Whiteboard.h"

namespace {

using Lines = std::vector<std::string>;
using testing::ElementsAre;

const Lines kNone;
constexpr const char* kNoDocX = "0 Parchlet::IsDocExist: doc does not exist, docid=x";
constexpr const char* kNoPageX = "0 Parchlet::GetPagePtr: page does not exist, pageid=x";

// An engine with document "d" and page "p"; what led there is not recorded.
class LoggedEngine : public testing::Test {
 protected:
  LoggedEngine() {
    engine.emplace();
    engine->NewDoc("ada", "d");
    engine->NewPage("d", "p", "ada", window.Handle(), info);
    logger.Take();
  }

  // The records of the call whose result is given.
  template <class Result>
  Lines After(const Result& /*result*/) {
    return logger.Take();
  }

  const AnnotationPageInfo info = PageOf(20, 10);
  MemoryWindow window{{0, 0, 20, 10}};
  RecordingLogger logger;
  std::optional<Parchlet> engine;
};

TEST_F(LoggedEngine, DocumentCallsLeaveTheirRecords) {
  EXPECT_EQ(kNone, After(engine->IsDocExist("d")));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->IsDocExist("x")));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->NewDoc("ada", "x")));
  EXPECT_EQ(Lines{"0 Parchlet::NewDoc: doc is already exist, docid=x"},
            After(engine->NewDoc("bob", "x")));
  EXPECT_EQ(kNone, After(engine->DelDoc("x")));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->DelDoc("x")));
  std::string out;
  EXPECT_EQ(Lines{kNoDocX}, After(engine->GetDocCreator("x", out)));
  EXPECT_EQ(Lines{"0 Parchlet::IsDocExist: doc does not exist, docid="},
            After(engine->IsDocExist("")));
  EXPECT_EQ(Lines{"0 Parchlet::IsDocExist: doc does not exist, docid=a"},
            After(engine->IsDocExist(std::string("a\0b", 3))));
}

TEST_F(LoggedEngine, NewPageTellsWhatItRefuses) {
  HWND const shown = window.Handle();
  const Lines invalid{"0 Parchlet::NewPage: invalid parameters"};
  EXPECT_EQ(invalid, After(engine->NewPage("x", "x", "ada", nullptr, info)));
  EXPECT_EQ(invalid, After(engine->NewPage("x", "x", "ada", shown, PageOf(0, 10))));
  EXPECT_EQ((Lines{kNoDocX, "0 Parchlet::NewPage: doc does not exist, docid=x"}),
            After(engine->NewPage("x", "x", "ada", shown, info)));
  EXPECT_EQ(Lines{"0 Parchlet::NewPage: page is already exist, pageid=p"},
            After(engine->NewPage("d", "p", "ada", shown, info)));
  EXPECT_EQ((Lines{kNoPageX, "0 Parchlet::NewPage: init page failed"}),
            After(engine->NewPage("d", "x", "ada", shown, PageOf(20, 0))));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->NewPage("d", "x", "ada", shown, info)));
  EXPECT_EQ(kNone, After(engine->DelPage("d", "x")));
}

TEST_F(LoggedEngine, LookingForAPageInVainLeavesOneRecord) {
  char bytes[8];
  AnnotationPageInfo out{};
  EXPECT_EQ(Lines{kNoPageX}, After(engine->GetPagePtr("d", "x")));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->GetPagePtr("x", "x")));
  EXPECT_EQ(Lines{kNoPageX}, After(ParchletTestAccess::GetPageById(*engine, "d", "x")));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->GetPageCount("x")));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->GetPageIndex("d", "x")));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->GetPageCreator("d", "x", bytes, 8)));
  EXPECT_EQ(kNone, After(engine->GetPageCreator("d", "x", nullptr, 8)));
  EXPECT_EQ(kNone, After(engine->GetPageCreator("d", "x", bytes, 0)));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->GetPageSize("d", "x", out, true)));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->UpdatePage("d", "x", info, true)));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->SetCurrentPage("d", "x")));
  EXPECT_EQ(kNone, After(engine->GotoPage("d", "x")));
  EXPECT_EQ(kNone, After(engine->DelPage("d", "x")));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->DelPage("x", "x")));
  EXPECT_EQ(Lines{kNoPageX}, After(engine->StartDrawing("d", "x", {1, 1})));
  EXPECT_EQ(kNone, After(engine->StartDrawing("d", "p", {-1, 1})));
  EXPECT_EQ(Lines{kNoDocX}, After(engine->ClearAnnotations("x", "x", "", "")));
  engine->Init();
  engine->Destroy();
  EXPECT_EQ(kNone, After(engine->ClearAnnotations("x", "x", "", ""))) << "there is no window";
}

TEST_F(LoggedEngine, ConstructionAndDestructionAreNotedEvenWithoutInit) {
  engine.reset();
  EXPECT_THAT(logger.Take(), ElementsAre("2 Parchlet::~Parchlet: destructor"));
  engine.emplace();
  EXPECT_THAT(logger.Take(), ElementsAre("2 Parchlet::Parchlet: constructor"));
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

TEST_F(LoggedEngine, TheHeaderNamesTheFileAndLineOfTheStatement) {
  engine->NewDoc("ada", "d");
  engine->NewPage("d", "x", "ada", nullptr, info);
  engine->NewPage("x", "x", "ada", window.Handle(), info);
  engine->NewPage("d", "x", "ada", window.Handle(), PageOf(1, 0));
  engine.reset();
  const std::vector<LoggedRecord> records = logger.TakeRecords();
  ASSERT_EQ(7U, records.size());
  for (const LoggedRecord& record : records) {
    const std::string fixedPart = record.message.substr(0, record.message.find('=') + 1);
    EXPECT_THAT(StatementAt(record.file, record.line),
                testing::AllOf(testing::HasSubstr(fixedPart), testing::ContainsRegex("L(OG|og)")))
        << record.file << ":" << record.line;
  }
}

// Keeps the lines whole.
class RawLogger final : public ILogger {
 public:
  explicit RawLogger(const std::string& name) : name(name) { SetLogger(name, this); }
  ~RawLogger() override { SetLogger(name, nullptr); }
  void Write(int level, const std::string& line) override {
    lines.push_back(std::to_string(level) + line);
    if (level < 0) {
      throw std::runtime_error("the disk is full");
    }
  }

  std::string name;
  Lines lines;
};

TEST(LogRecordTest, TheHeaderIsTagBaseNameLineAndFunctionOrNothing) {
  RawLogger logger("mine");
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

}  // namespace
