#include "engine/LogRecord.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "support/RecordingLogger.h"
#include "support/Whiteboard.h"

namespace {

using Lines = std::vector<std::string>;
using testing::ElementsAre;

constexpr const char* kNoDocX = "0 Parchlet::IsDocExist: doc does not exist, docid=x";
constexpr const char* kNoPageX = "0 Parchlet::GetPagePtr: page does not exist, pageid=x";

// An engine with document "d" and page "p"; what led there is not recorded.
class LoggedEngine : public testing::Test {
 protected:
  LoggedEngine() {
    engine.emplace();
    engine->NewDoc("ada", "d");
    engine->NewPage("d", "p", "ada", window.Handle(), PageOf(20, 10));
    logger.Take();
  }

  MemoryWindow window{{0, 0, 20, 10}};
  RecordingLogger logger;
  std::optional<Parchlet> engine;
};

TEST_F(LoggedEngine, EveryCallLeavesItsRecordsInTheirOrder) {
  const AnnotationPageInfo info = PageOf(20, 10);
  const AnnotationPageInfo flat = PageOf(20, 0);
  const AnnotationPageInfo noWidth = PageOf(0, 10);
  HWND const shown = window.Handle();
  AnnotationPageInfo out{};
  std::string text;
  char bytes[8];
  const struct {
    const char* call;
    std::function<void()> act;
    Lines expected;
  } cases[] = {
      {"IsDocExist of a document", [&] { engine->IsDocExist("d"); }, {}},
      {"IsDocExist of none", [&] { engine->IsDocExist("x"); }, {kNoDocX}},
      {"NewDoc", [&] { engine->NewDoc("ada", "x"); }, {kNoDocX}},
      {"NewDoc again",
       [&] { engine->NewDoc("bob", "x"); },
       {"0 Parchlet::NewDoc: doc is already exist, docid=x"}},
      {"DelDoc", [&] { engine->DelDoc("x"); }, {}},
      {"DelDoc again", [&] { engine->DelDoc("x"); }, {kNoDocX}},
      {"GetDocCreator", [&] { engine->GetDocCreator("x", text); }, {kNoDocX}},
      {"an empty id",
       [&] { engine->IsDocExist(""); },
       {"0 Parchlet::IsDocExist: doc does not exist, docid="}},
      {"an id with a zero byte",
       [&] { engine->IsDocExist(std::string("a\0b", 3)); },
       {"0 Parchlet::IsDocExist: doc does not exist, docid=a"}},
      {"NewPage without a window, though the document is missing too",
       [&] { engine->NewPage("x", "x", "ada", nullptr, info); },
       {"0 Parchlet::NewPage: invalid parameters"}},
      {"NewPage without a width",
       [&] { engine->NewPage("x", "x", "ada", shown, noWidth); },
       {"0 Parchlet::NewPage: invalid parameters"}},
      {"NewPage in no document",
       [&] { engine->NewPage("x", "x", "ada", shown, info); },
       {kNoDocX, "0 Parchlet::NewPage: doc does not exist, docid=x"}},
      {"NewPage over a page",
       [&] { engine->NewPage("d", "p", "ada", shown, info); },
       {"0 Parchlet::NewPage: page is already exist, pageid=p"}},
      {"NewPage without a height",
       [&] { engine->NewPage("d", "x", "ada", shown, flat); },
       {kNoPageX, "0 Parchlet::NewPage: init page failed"}},
      {"NewPage", [&] { engine->NewPage("d", "x", "ada", shown, info); }, {kNoPageX}},
      {"DelPage", [&] { engine->DelPage("d", "x"); }, {}},
      {"DelPage again", [&] { engine->DelPage("d", "x"); }, {}},
      {"DelPage in no document", [&] { engine->DelPage("x", "x"); }, {kNoDocX}},
      {"GetPagePtr", [&] { engine->GetPagePtr("d", "x"); }, {kNoPageX}},
      {"GetPagePtr in no document", [&] { engine->GetPagePtr("x", "x"); }, {kNoDocX}},
      {"GetPageById", [&] { ParchletTestAccess::GetPageById(*engine, "d", "x"); }, {kNoPageX}},
      {"GetPageCount", [&] { engine->GetPageCount("x"); }, {kNoDocX}},
      {"GetPageIndex", [&] { engine->GetPageIndex("d", "x"); }, {kNoPageX}},
      {"GetPageCreator", [&] { engine->GetPageCreator("d", "x", bytes, 8); }, {kNoPageX}},
      {"GetPageCreator without a buffer",
       [&] {
         engine->GetPageCreator("d", "x", nullptr, 8);
         engine->GetPageCreator("d", "x", bytes, 0);
       },
       {}},
      {"GetPageSize", [&] { engine->GetPageSize("d", "x", out, true); }, {kNoPageX}},
      {"UpdatePage", [&] { engine->UpdatePage("d", "x", info, true); }, {kNoPageX}},
      {"SetCurrentPage", [&] { engine->SetCurrentPage("d", "x"); }, {kNoPageX}},
      {"GotoPage to no page", [&] { engine->GotoPage("d", "x"); }, {}},
      {"StartDrawing on no page",
       [&] {
         engine->StartDrawing("d", "x", {1, 1});
       },
       {kNoPageX}},
      {"StartDrawing off the page",
       [&] {
         engine->StartDrawing("d", "p", {-1, 1});
       },
       {}},
      {"the accepted calls without effect",
       [&] {
         engine->IsDocOpened("x", text);
         engine->DuplicatePage("x", "x", text);
         engine->SetZoom("x", 1, 0, 0);
         engine->SetPageSize("x", "x", 1, 1);
       },
       {}},
  };
  for (const auto& [call, act, expected] : cases) {
    SCOPED_TRACE(call);
    act();
    EXPECT_EQ(expected, logger.Take());
  }
}

TEST_F(LoggedEngine, ConstructionAndDestructionAreNotedEvenWithoutInit) {
  engine.reset();
  EXPECT_THAT(logger.Take(), ElementsAre("2 Parchlet::~Parchlet: destructor"));
  engine.emplace();
  EXPECT_THAT(logger.Take(), ElementsAre("2 Parchlet::Parchlet: constructor"));
}

// The lines of a source file, found by its base name.
Lines SourceLines(const std::string& baseName) {
  Lines lines;
  const std::filesystem::path folder(PARCHLET_SOURCE_FOLDER "/src/engine");
  std::ifstream source(folder / baseName);
  for (std::string line; std::getline(source, line);) {
    lines.push_back(line);
  }
  return lines;
}

TEST_F(LoggedEngine, TheHeaderNamesTheFileAndLineOfTheStatement) {
  engine->IsDocExist("x");
  engine->NewDoc("ada", "d");
  engine->GetPagePtr("d", "x");
  engine->NewPage("d", "x", "ada", nullptr, PageOf(1, 1));
  engine->NewPage("x", "x", "ada", window.Handle(), PageOf(1, 1));
  engine.reset();
  const std::vector<LoggedRecord> records = logger.TakeRecords();
  ASSERT_EQ(7U, records.size());
  for (const LoggedRecord& record : records) {
    SCOPED_TRACE(record.function + " " + record.message);
    const Lines source = SourceLines(record.file);
    const auto line = static_cast<std::size_t>(record.line);
    ASSERT_TRUE(line >= 1 && line < source.size()) << record.file << ":" << record.line;
    const std::string statement = source[line - 1] + source[line];
    const std::string text = record.message.substr(0, record.message.find('=') + 1);
    EXPECT_THAT(source[line - 1], testing::HasSubstr("L")) << "the statement starts here";
    EXPECT_THAT(statement, testing::HasSubstr(text.empty() ? record.message : text));
  }
}

// The lines that LogRecord itself writes, whole.
class RawLogger final : public ILogger {
 public:
  explicit RawLogger(const std::string& name) : name(name) { SetLogger(name, this); }
  ~RawLogger() override { SetLogger(name, nullptr); }
  void Write(int level, const std::string& line) override {
    lines.push_back(std::to_string(level) + line);
  }

  std::string name;
  Lines lines;
};

TEST(LogRecordTest, TheHeaderIsTagBaseNameLineAndFunction) {
  RawLogger logger("mine");
  LogRecord(3, "", "/a/b\\c.cpp", 7, "F::G", "mine").Text() << "text" << 5;
  LogRecord(0, "tag", "d\\e/f.cpp", 8, "G", "mine").Text() << "";
  LogRecord(1, "", "plain.cpp", -9, "H", "mine").Text() << "m";
  LogRecord(1, "", "folder/", 9, "", "mine").Text() << "m";
  EXPECT_THAT(logger.lines, ElementsAre("3[c.cpp:7 F::G]text5", "0[tag][f.cpp:8 G]",
                                        "1[plain.cpp:-9 H]m", "1[:9 ]m"));
}

TEST(LogRecordTest, AMissingPartLeavesTheHeaderOut) {
  RawLogger logger("mine");
  LogRecord(0, nullptr, "f", 1, "g", "mine").Text() << "a";
  LogRecord(0, "", nullptr, 1, "g", "mine").Text() << "b";
  LogRecord(0, "", "f", 1, nullptr, "mine").Text() << "c";
  EXPECT_THAT(logger.lines, ElementsAre("0a", "0b", "0c"));
}

TEST(LogRecordTest, RecordsGoToTheLoggerSetWhenTheyAreEmitted) {
  RawLogger later("later");
  {
    LogRecord record(0, "", "f", 1, "g", "name");
    record.Text() << "m";
    ILogger::SetLogger("name", &later);
  }
  ILogger::SetLogger("name", nullptr);
  LogRecord(0, "", "f", 1, "g", "name").Text() << "nobody hears this";
  EXPECT_THAT(later.lines, ElementsAre("0[f:1 g]m"));
}

class ThrowingLogger final : public ILogger {
 public:
  ThrowingLogger() { SetLogger("SDK", this); }
  ~ThrowingLogger() override { SetLogger("SDK", nullptr); }
  void Write(int /*level*/, const std::string& /*line*/) override {
    throw std::runtime_error("the disk is full");
  }
};

TEST(LogRecordTest, ALoggerThatThrowsChangesNoResult) {
  const ThrowingLogger logger;
  Parchlet engine;
  EXPECT_EQ(1, engine.NewDoc("ada", "doc"));
  EXPECT_EQ(0, engine.NewPage("doc", "page", "ada", nullptr, PageOf(1, 1)));
  EXPECT_EQ(1, engine.GetDocCount());
}

}  // namespace
