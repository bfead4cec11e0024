// Memory that runs out at any place of any call.
#include <fstream>
#include <functional>
#include <new>
#include <optional>
#include <regex>
#include <tuple>
#include <vector>

#include <parchlet/Display.h>

#include "support/FailingAllocation.h"
#include "support/Mark.h"
#include "support/TemporaryFolder.h"
#include "support/Whiteboard.h"

// All of it that calls change and painting does not.
static void PrintTo(Annotation* mark, std::ostream* out) {
  *out << testing::PrintToString(std::tuple(mark->annotationId, mark->userId, mark->nickname,
                                            mark->erased, mark->type, mark->subType));
  for (const auto& [number, list] : mark->GetPoints()) {
    for (const AnnotationPoint& point : list) {
      *out << " " << number << ": " << point.xRatio << "," << point.yRatio;
    }
  }
}

namespace {

constexpr CurrentAnnotPageSize kSize = {60, 40};
constexpr POINT kNear = {9, 9};
constexpr POINT kFar = {59, 39};
constexpr POINT kOrigin = {0, 0};
constexpr POINT kCorner = {29, 29};  // of the box

const std::string kLongName = "a name that does not fit into a short string, nor its number";
const std::vector<POINT> kEraserPath = {{0, 0}, kFar};

// A board with a bit of everything: marks of two authors, one of them in scattered fragments and
// being moved, a drawing in progress, a background, tips.
class Board {
 public:
  Board() : whiteboard(kSize.width, kSize.height), engine(whiteboard.engine) {
    engine.SetUserInfo("ada", "desk", "Ada, whose name is longer than a short string");
    engine.SetNicknameTip(kBlack, 9, "a font that is not installed anywhere", kRed);
    Receive(Mark("a").By("bob").Order(1).Points(kSize, {{4, 4}, {20, 20}}));
    Receive(Mark("a").By("bob").Fragment(1).Points(kSize, {{30, 4}, {30, 9}}));
    Receive(Mark("a").By("bob").Fragment(5).Points(kSize, {{31, 4}, {31, 9}}));
    Mark box("b");
    box.By("cem").Order(2).Shape(AnnotationSubTypeRectangle);
    Receive(box.Points(kSize, {{10, 10}, {30, 30}}));
    Place(false, true);
    engine.StartSelecting("doc", "page", "", "", {0, 0});
    engine.MoveSelecting({kSize.width, kSize.height});
    engine.EndSelecting();
    whiteboard.Paint();
  }

  // The mark is made beforehand: what the test itself takes of memory is not to fail.
  void Ready(Mark& mark) { ready = mark.Make(); }
  int HandOver() {
    const int result = engine.AddAnnotationFromRemote("doc", "page", ready.get());
    // Who owns the mark is what the look-up says.
    if (engine.GetAnnotation("doc", "page", ready->userId, ready->annotationId) == ready.get()) {
      static_cast<void>(ready.release());
    }
    return result;
  }
  void Deselect() { engine.EraseSelectedAnnotations("doc", "page"); }
  int Press(POINT at) { return engine.StartSelecting("doc", "page", "", "", at); }
  void StartMove() { Press({4, 4}); }
  int Move() { return engine.MoveSelecting(kNear); }
  void Drag() {
    StartMove();
    Move();
  }
  int StartDrawing() { return engine.StartDrawing("doc", "page", {5, 5}); }
  std::string AskForDrawing() {
    std::string doc;
    std::string page;
    return engine.GetCurrentAnnotationInfo(doc, page);
  }
  int OpenPage(const std::string& id) {
    return engine.NewPage("doc", id, kLongName, whiteboard.window.Handle(),
                          PageOf(kSize.width, kSize.height));
  }

  // What the engine holds. Ids made here read "local".
  std::string Describe();

  // Saves what `source`, a display's name or a window, shows.
  template <class Source>
  int Save(const Source& source) {
    return engine.SavePage("doc", "page", file, source);
  }

  int SaveDocument() { return engine.SaveDocument("doc", folderName, kLongName, std::wstring()); }
  // A picture, from `file` or from bytes.
  Annotation* Place(bool isFile, bool isBackground) {
    return isFile
               ? engine.AddPictureFromFile("doc", "page", file, kLongName, isBackground)
               : engine.AddPictureFromStream("doc", "page", kBitmapFile, kLongName, isBackground);
  }

  const TemporaryFolder folder;
  // Made beforehand, as well.
  const std::string folderName = folder.Path().string();
  const std::string file = folder.File("a.png");
  Whiteboard whiteboard;
  Parchlet& engine;
  std::unique_ptr<Annotation> ready;

 private:
  void Receive(Mark& mark) {
    Ready(mark);
    HandOver();
  }
};

std::string Board::Describe() {
  const AnnotationPage& page = *engine.GetPagePtr("doc", "page");
  const std::string text = testing::PrintToString(
      std::tuple(engine.GetDocCount(), engine.GetPageCount("doc"), folder.FileCount(),
                 PageTestAccess::TipStyle(page)->fontSize, page.GetCurrentInfo().width,
                 PageTestAccess::Confirmed(page), PageTestAccess::Pending(page),
                 PageTestAccess::PaintPlaces(page), page.GetSelectedAnnotations(),
                 page.GetCurrentAnnotation() != nullptr));
  return std::regex_replace(text, std::regex("[0-9A-Fa-f-]{36}"), "local");
}

struct Call {
  using Prepare = std::function<void(Board&)>;

  template <class Make>
  Call(
      std::string name, Make makeIt, Prepare prepare = [](Board&) {})
      : name(std::move(name)), prepare(std::move(prepare)), make([makeIt](Board& board) {
          if constexpr (std::is_arithmetic_v<std::invoke_result_t<Make, Board&>>) {
            return std::optional(std::invoke(makeIt, board) != 0);
          } else {
            std::invoke(makeIt, board);
            return std::optional<bool>();
          }
        }) {}

  std::string name;
  Prepare prepare;
  // True and false tell what the call said; nothing when it does not say.
  std::function<std::optional<bool>(Board&)> make;
};
void PrintTo(const Call& call, std::ostream* out) {
  *out << call.name;
}

class MemoryFaultTest : public testing::TestWithParam<Call> {};

// Makes the call on a new board, its nth allocation failing; false when it has fewer.
bool MakeWithFault(const Call& call, int nth, const std::string& after) {
  SCOPED_TRACE(nth);
  Board board;
  call.prepare(board);
  const std::string before = board.Describe();
  std::optional<bool> result;
  const bool hasFailed = FailsAt(nth, [&] { result = call.make(board); });
  const std::string now = board.Describe();
  if (result.has_value()) {
    EXPECT_EQ(*result ? after : before, now);
  } else {
    EXPECT_THAT(now, testing::AnyOf(before, after));
  }
  if (hasFailed && !result.value_or(true)) {
    EXPECT_TRUE(call.make(board).value_or(true)) << "again";
    EXPECT_EQ(after, board.Describe()) << "again";
  }
  board.engine.GotoPage("", "page");
  std::string doc;
  std::string page;
  board.engine.GetCurrentPageInfo(doc, page);
  EXPECT_EQ(page.empty(), ParchletTestAccess::Refresh(board.engine) == 0);
  return hasFailed;
}

TEST_P(MemoryFaultTest, ACallThatRunsOutOfMemoryChangesAllOrNothing) {
  const Call& call = GetParam();
  Board board;
  call.prepare(board);
  EXPECT_TRUE(call.make(board).value_or(true));
  const std::string after = board.Describe();
  ForEveryAllocation([&](int nth) { return MakeWithFault(call, nth, after); });
}

void SmallDesktop(Board& /*board*/) {
  SetMemoryDesktop({{"S", {0, 0, kSize.width + 9, kSize.height + 9}}}, nullptr, {});
}

const std::vector<POINT> kOne = {{1, 1}};
const std::vector<POINT> kTwo = {{1, 1}, {2, 2}};

// The results of calls that do not say whether they were made are cast away.
const Call kCalls[] = {
    {"StartDrawing", &Board::StartDrawing},
    {"MoveDrawing", [](Board& b) { return b.engine.MoveDrawing(kNear); }, &Board::StartDrawing},
    {"AskForDrawing", &Board::AskForDrawing, &Board::StartDrawing},
    {"Press", [](Board& b) { return b.Press(kCorner); }, &Board::Deselect},
    {"PressElsewhere",
     [](Board& b) { return b.engine.StartSelecting("doc", "page", kLongName, "", kFar); }},
    {"RubberBand", [](Board& b) { static_cast<void>(b.engine.MoveSelecting(kFar)); },
     [](Board& b) { b.Press(kOrigin); }},
    {"Move", &Board::Move, &Board::StartMove},
    {"Cancel", [](Board& b) { b.engine.CancelAnnotation("doc", "page", "a"); }, &Board::Drag},
    {"GetSelection", [](Board& b) { b.engine.GetSelectedAnnotations("doc", "page"); }},
    {"NewMark", &Board::HandOver,
     [](Board& b) { b.Ready(Mark("c").By(kLongName).Order(1).Points(kSize, kTwo)); }},
    {"LateFragment", &Board::HandOver,
     [](Board& b) { b.Ready(Mark("c").By("dot").Fragment(3).Points(kSize, kOne)); }},
    {"Fragment", &Board::HandOver,
     [](Board& b) { b.Ready(Mark("b").By("cem").Fragment(1).Points(kSize, kOne)); }},
    {"AnotherAuthorsId", &Board::HandOver,
     [](Board& b) { b.Ready(Mark("a").By("cem").Points(kSize, kTwo)); }},
    {"OwnMark", &Board::HandOver,
     [](Board& b) {
       b.Ready(Mark("c").By("ada").Points(kSize, kTwo));
       b.ready->userSubId = "desk";
     }},
    {"EchoOfADrawing", &Board::HandOver,
     [](Board& b) {
       b.StartDrawing();
       b.Ready(Mark(b.AskForDrawing()).By("ada").Points(kSize, kTwo));
     }},
    {"EchoOfAMove", &Board::HandOver,
     [](Board& b) {
       b.Drag();
       b.Ready(Mark("a").By("bob").Points(kSize, kTwo));
     }},
    {"AnotherPagesMark",
     [](Board& b) {
       Annotation* mark = b.engine.GetAnnotation("doc", "page", "bob", "a");
       return b.engine.AddAnnotationFromRemote("doc", "other", mark);
     },
     [](Board& b) {
       b.OpenPage("other");
       b.engine.SetCurrentPage("doc", "page");
     }},
    {"Clear", [](Board& b) { return b.engine.ClearAnnotations("doc", "page", "", ""); }},
    {"NewDoc", [](Board& b) { return b.engine.NewDoc(kLongName, kLongName); }},
    {"NewPage", [](Board& b) { return b.OpenPage(kLongName); }},
    {"Resize",
     [](Board& b) { static_cast<void>(b.engine.UpdatePage("doc", "page", PageOf(50, 30), true)); }},
    {"SetUserInfo", [](Board& b) { b.engine.SetUserInfo(kLongName, kLongName, kLongName); }},
    {"SetNicknameTip", [](Board& b) { return b.engine.SetNicknameTip(1, 2, kLongName, 3); }},
    {"SavePage", [](Board& b) { return b.Save(std::wstring()); }},
    {"SaveDisplay", [](Board& b) { return b.Save(std::wstring(L"S")); }, SmallDesktop},
    {"SaveWindow", [](Board& b) { return b.Save(b.whiteboard.window.Handle()); }, SmallDesktop},
    {"SaveDocument", &Board::SaveDocument},
    {"Background", [](Board& b) { return b.Place(false, true) != nullptr; }},
    {"Eraser", [](Board& b) { b.engine.EraseAnnotations("doc", "page", "", "", kEraserPath); },
     &Board::Deselect},
    {"Refresh", [](Board& b) { static_cast<void>(ParchletTestAccess::Refresh(b.engine)); }},
};

INSTANTIATE_TEST_SUITE_P(Calls, MemoryFaultTest, testing::ValuesIn(kCalls),
                         [](const auto& info) { return info.param.name; });

// Places a picture, from a file or from bytes, the nth allocation failing; false when there are
// fewer.
bool PlaceWithFault(int nth, bool isFile, bool isBackground) {
  Board board;
  std::ofstream(board.file) << kBitmapFile;
  const Annotation* made = nullptr;
  const bool hasFailed = FailsAt(nth, [&] { made = board.Place(isFile, isBackground); });
  for (const auto& [id, mark] : PageTestAccess::Pending(board.whiteboard.Page())) {
    EXPECT_FALSE(isBackground);
    EXPECT_EQ(mark == made, !mark->GetPoints().empty()) << "allocation " << nth;
    EXPECT_TRUE(mark == made || AnnotationTestAccess::PictureOf(*mark) == nullptr);
  }
  EXPECT_NE(0, ParchletTestAccess::Refresh(board.engine));
  return hasFailed;
}

// A picture is its page's before it is loaded, so a mark may be left of it.
TEST(PictureFaultTest, APictureThatRunsOutOfMemoryLeavesAnEmptyMarkAtMost) {
  for (const bool isFile : {false, true}) {
    for (const bool isBackground : {false, true}) {
      EXPECT_LT(9, ForEveryAllocation(
                       [&](int nth) { return PlaceWithFault(nth, isFile, isBackground); }));
    }
  }
}

TEST(ExportFaultTest, APageThatRunsOutOfMemoryKeepsNoOtherFromItsFile) {
  int lastAlone = 0;
  std::size_t files = 0;
  ForEveryAllocation([&](int nth) {
    Board board;
    board.OpenPage("z");
    int result = 0;
    const bool hasFailed = FailsAt(nth, [&] { result = board.SaveDocument(); });
    files = board.folder.FileCount();
    lastAlone += result == 1 && files == 1 ? 1 : 0;
    return hasFailed;
  });
  EXPECT_EQ(2U, files) << "when nothing fails";
  EXPECT_LT(5, lastAlone);
}

}  // namespace
