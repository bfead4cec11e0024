// Memory that runs out at any place of any call.
#include <fstream>
#include <functional>
#include <new>
#include <optional>
#include <vector>

#include <parchlet/Display.h>

#include "support/FailingAllocation.h"
#include "support/Mark.h"
#include "support/TemporaryFolder.h"
#include "support/Whiteboard.h"

namespace {

constexpr CurrentAnnotPageSize kSize = {60, 40};

const std::string kLongName = "a name that does not fit into a short string, nor its number";
const std::vector<POINT> kEraserPath = {{0, 0}, {59, 39}};

// A board with a bit of everything: marks of two authors, one of them in scattered fragments and
// being moved, a drawing in progress, a background, tips.
class Board {
 public:
  Board() : whiteboard(kSize.width, kSize.height), engine(whiteboard.engine) {
    engine.SetUserInfo("ada", "desk", "Ada, whose name is longer than a short string");
    engine.SetNicknameTip(kBlack, 9, "a font that is not installed anywhere", kRed);
    Ready(Mark("a").By("bob").Order(1).Points(kSize, {{4, 4}, {20, 20}}));
    HandOver();
    Ready(Mark("a").By("bob").Fragment(1).Points(kSize, {{30, 4}, {30, 9}}));
    HandOver();
    Ready(Mark("a").By("bob").Fragment(5).Points(kSize, {{31, 4}, {31, 9}}));
    HandOver();
    Ready(Mark("b")
              .By("cem")
              .Order(2)
              .Shape(AnnotationSubTypeRectangle)
              .Points(kSize, {{10, 10}, {30, 30}}));
    HandOver();
    engine.AddPictureFromStream("doc", "page", kBitmapFile, "a property of some length", true);
    engine.StartSelecting("doc", "page", "", "", {0, 0});
    engine.MoveSelecting({kSize.width, kSize.height});
    engine.EndSelecting();
    whiteboard.Paint();
  }

  // The mark is made beforehand: what the test itself takes of memory is not to fail.
  void Ready(Mark& mark) { ready = mark.Make(); }
  bool HandOver() {
    const int result = engine.AddAnnotationFromRemote("doc", "page", ready.get());
    // Who owns the mark is what the look-up says.
    if (engine.GetAnnotation("doc", "page", ready->userId, ready->annotationId) == ready.get()) {
      static_cast<void>(ready.release());
    }
    return result == 1;
  }
  void StartMove() { engine.StartSelecting("doc", "page", "", "", {4, 4}); }
  std::string Draw() {
    engine.StartDrawing("doc", "page", {5, 5});
    std::string doc;
    std::string page;
    return engine.GetCurrentAnnotationInfo(doc, page);
  }

  // What the engine holds. Ids made here read "local".
  std::string Describe();

  // Saves what `source`, a display's name or a window, shows.
  template <class Source>
  bool Save(const Source& source) {
    return engine.SavePage("doc", "page", file, source) == 1;
  }

  const TemporaryFolder folder;
  // Made beforehand, as well.
  const std::string folderName = folder.Path().string();
  const std::string file = folder.File("a.png");
  Whiteboard whiteboard;
  Parchlet& engine;
  std::unique_ptr<Annotation> ready;
};

std::string DescribeMark(const std::string& id, const Annotation& mark) {
  std::string text = (id.size() == 36 ? "local" : id) + " by " + mark.userId + " \"" +
                     mark.nickname + "\" erased " + std::to_string(mark.erased) + " kind " +
                     std::to_string(mark.type) + "/" + std::to_string(mark.subType) + ":";
  for (const auto& [number, list] : mark.GetPoints()) {
    if (list.empty()) {
      continue;  // as good as none
    }
    text += " [" + std::to_string(number) + "]";
    for (const AnnotationPoint& point : list) {
      text += " " + std::to_string(point.xRatio) + "," + std::to_string(point.yRatio);
    }
  }
  return text + "\n";
}

std::string Board::Describe() {
  std::string text = std::to_string(engine.GetDocCount()) + " documents, " +
                     std::to_string(engine.GetPageCount("doc")) + " pages\n";
  const AnnotationPage& page = *engine.GetPagePtr("doc", "page");
  text += std::to_string(folder.FileCount()) + " files, tips of " +
          std::to_string(PageTestAccess::TipStyle(page)->fontSize) + " pixels\n";
  text += std::to_string(page.GetCurrentInfo().width) + " wide\n";
  for (const auto& [author, authored] : PageTestAccess::Confirmed(page)) {
    text += "author " + author + "\n";
    for (const auto& [id, mark] : authored) {
      text += DescribeMark(id, *mark);
    }
  }
  for (const auto& [id, mark] : PageTestAccess::Pending(page)) {
    text += "pending " + DescribeMark(id, *mark);
  }
  for (const auto& [author, id] : PageTestAccess::PaintPlaces(page)) {
    text += "painted " + (id.size() == 36 ? "local" : id) + "\n";
  }
  for (const auto& [id, mark] : page.GetSelectedAnnotations()) {
    text += "selected " + id + "\n";
  }
  return text + (page.GetCurrentAnnotation() != nullptr ? "drawing" : "idle");
}

struct Call {
  std::string name;
  // True and false tell what the call said; nothing when it does not say.
  std::function<std::optional<bool>(Board&)> make;
  std::function<void(Board&)> prepare = [](Board&) {};
};
void PrintTo(const Call& call, std::ostream* out) {
  *out << call.name;
}

class MemoryFaultTest : public testing::TestWithParam<Call> {};

// Makes the call on a new board, its nth allocation failing; false when it has fewer.
bool MakeWithFault(const Call& call, int nth, const std::string& after) {
  Board board;
  call.prepare(board);
  const std::string before = board.Describe();
  std::optional<bool> result;
  bool hasFailed = false;
  {
    const FailingAllocation failing(nth);
    EXPECT_NO_THROW(result = call.make(board));
    hasFailed = failing.HasFailed();
  }
  const std::string now = board.Describe();
  if (result.has_value()) {
    EXPECT_EQ(*result ? after : before, now) << "allocation " << nth;
  } else {
    EXPECT_THAT(now, testing::AnyOf(before, after)) << "allocation " << nth;
  }
  if (hasFailed && !result.value_or(true)) {
    EXPECT_TRUE(call.make(board).value_or(true)) << "again, after allocation " << nth;
    EXPECT_EQ(after, board.Describe()) << "again, after allocation " << nth;
  }
  board.engine.GotoPage("", "page");
  std::string doc;
  std::string page;
  board.engine.GetCurrentPageInfo(doc, page);
  EXPECT_EQ(page.empty(), ParchletTestAccess::Refresh(board.engine) == 0) << "allocation " << nth;
  return hasFailed;
}

TEST_P(MemoryFaultTest, ACallThatRunsOutOfMemoryChangesAllOrNothing) {
  const Call& call = GetParam();
  std::string after;
  {
    Board board;
    call.prepare(board);
    EXPECT_TRUE(call.make(board).value_or(true));
    after = board.Describe();
    ParchletTestAccess::Refresh(board.engine);  // fills what painting keeps for good
  }
  const std::int64_t live = LiveAllocations();
  int nth = 1;
  while (MakeWithFault(call, nth, after) && !HasFailure()) {
    ++nth;
  }
  EXPECT_EQ(live, LiveAllocations()) << "leaked";
  RecordProperty("allocations", nth - 1);
}

void SmallDesktop(Board& /*board*/) {
  SetMemoryDesktop({{"S", {0, 0, kSize.width + 9, kSize.height + 9}}}, nullptr, {});
}

constexpr POINT kOrigin = {0, 0};
constexpr POINT kSpot = {5, 5};
constexpr POINT kAway = {9, 9};
constexpr POINT kOnB = {29, 29};
constexpr POINT kBottomRight = {59, 39};
const std::vector<POINT> kOne = {{1, 1}};
const std::vector<POINT> kTwo = {{1, 1}, {2, 2}};

// For a call that does not say whether it was made.
template <class Act>
std::function<std::optional<bool>(Board&)> Quiet(const Act& act) {
  return [act](Board& board) {
    act(board);
    return std::optional<bool>();
  };
}

const Call kCalls[] = {
    {"StartDrawing",
     [](Board& board) { return board.engine.StartDrawing("doc", "page", kSpot) == 1; }},
    {"MoveDrawing", [](Board& board) { return board.engine.MoveDrawing(kAway) == 1; },
     [](Board& board) { board.Draw(); }},
    {"AskForDrawing", Quiet([](Board& board) {
       std::string doc;
       std::string page;
       board.engine.GetCurrentAnnotationInfo(doc, page);
     }),
     [](Board& board) { board.Draw(); }},
    {"Press",
     [](Board& board) { return board.engine.StartSelecting("doc", "page", "", "", kOnB) == 1; },
     [](Board& board) { board.engine.EraseSelectedAnnotations("doc", "page"); }},
    {"PressElsewhere",
     [](Board& board) {
       return board.engine.StartSelecting("doc", "page", kLongName, "", kBottomRight) == 1;
     }},
    {"RubberBand", Quiet([](Board& board) { board.engine.MoveSelecting(kBottomRight); }),
     [](Board& board) { board.engine.StartSelecting("doc", "page", "", "", kOrigin); }},
    {"Move", [](Board& board) { return board.engine.MoveSelecting(kAway) == 1; },
     [](Board& board) { board.StartMove(); }},
    {"Cancel", Quiet([](Board& board) { board.engine.CancelAnnotation("doc", "page", "a"); }),
     [](Board& board) {
       board.StartMove();
       board.engine.MoveSelecting(kAway);
     }},
    {"GetSelection",
     Quiet([](Board& board) { board.engine.GetSelectedAnnotations("doc", "page"); })},
    {"NewMark", [](Board& board) { return board.HandOver(); },
     [](Board& board) { board.Ready(Mark("c").By(kLongName).Order(1).Points(kSize, kTwo)); }},
    {"LateFragment", [](Board& board) { return board.HandOver(); },
     [](Board& board) { board.Ready(Mark("c").By("dot").Fragment(3).Points(kSize, kOne)); }},
    {"Fragment", [](Board& board) { return board.HandOver(); },
     [](Board& board) { board.Ready(Mark("b").By("cem").Fragment(1).Points(kSize, kOne)); }},
    {"AnotherAuthorsId", [](Board& board) { return board.HandOver(); },
     [](Board& board) { board.Ready(Mark("a").By("cem").Points(kSize, kTwo)); }},
    {"OwnMark", [](Board& board) { return board.HandOver(); },
     [](Board& board) {
       board.Ready(Mark("c").By("ada").Points(kSize, kTwo));
       board.ready->userSubId = "desk";
     }},
    {"EchoOfADrawing", [](Board& board) { return board.HandOver(); },
     [](Board& board) { board.Ready(Mark(board.Draw()).By("ada").Points(kSize, kTwo)); }},
    {"EchoOfAMove", [](Board& board) { return board.HandOver(); },
     [](Board& board) {
       board.StartMove();
       board.engine.MoveSelecting(kAway);
       board.Ready(Mark("a").By("bob").Points(kSize, kTwo));
     }},
    {"AnotherPagesMark",
     [](Board& board) {
       Annotation* mark = board.engine.GetAnnotation("doc", "page", "bob", "a");
       return board.engine.AddAnnotationFromRemote("doc", "other", mark) == 1;
     },
     [](Board& board) {
       board.engine.NewPage("doc", "other", "ada", board.whiteboard.window.Handle(),
                            PageOf(kSize.width, kSize.height));
       board.engine.SetCurrentPage("doc", "page");
     }},
    {"Clear",
     [](Board& board) { return board.engine.ClearAnnotations("doc", "page", "", "") == 1; }},
    {"NewDoc", [](Board& board) { return board.engine.NewDoc(kLongName, kLongName) == 1; }},
    {"NewPage",
     [](Board& board) {
       return board.engine.NewPage("doc", kLongName, kLongName, board.whiteboard.window.Handle(),
                                   PageOf(kSize.width, kSize.height)) == 1;
     }},
    {"Resize",
     Quiet([](Board& board) { board.engine.UpdatePage("doc", "page", PageOf(50, 30), true); })},
    {"SetUserInfo",
     Quiet([](Board& board) { board.engine.SetUserInfo(kLongName, kLongName, kLongName); })},
    {"SetNicknameTip",
     [](Board& board) { return board.engine.SetNicknameTip(1, 2, kLongName, 3) == 1; }},
    {"SavePage", [](Board& board) { return board.Save(std::wstring()); }},
    {"SaveDisplay", [](Board& board) { return board.Save(std::wstring(L"S")); }, SmallDesktop},
    {"SaveWindow", [](Board& board) { return board.Save(board.whiteboard.window.Handle()); },
     SmallDesktop},
    {"SaveDocument",
     [](Board& board) {
       return board.engine.SaveDocument("doc", board.folderName, kLongName, std::wstring()) == 1;
     }},
    {"Background",
     [](Board& board) {
       return board.engine.AddPictureFromStream("doc", "page", kBitmapFile, kLongName, true) !=
              nullptr;
     }},
    {"Eraser",
     Quiet([](Board& board) { board.engine.EraseAnnotations("doc", "page", "", "", kEraserPath); }),
     [](Board& board) { board.engine.EraseSelectedAnnotations("doc", "page"); }},
    {"Refresh", Quiet([](Board& board) { ParchletTestAccess::Refresh(board.engine); })},
};

INSTANTIATE_TEST_SUITE_P(Calls, MemoryFaultTest, testing::ValuesIn(kCalls),
                         [](const auto& info) { return info.param.name; });

// A picture is its page's before it is loaded, so a mark may be left of it.
class PictureFaultTest : public testing::TestWithParam<std::pair<bool, bool>> {
 protected:
  // Places a picture, from a file or from bytes, the nth allocation failing; false when there are
  // fewer.
  static bool PlaceWithFault(int nth) {
    const auto [isFile, isBackground] = GetParam();
    Board board;
    const std::string path = board.folder.File("picture");
    std::ofstream(path) << kBitmapFile;
    Parchlet& engine = board.engine;
    const Annotation* made = nullptr;
    bool hasFailed = false;
    {
      const FailingAllocation failing(nth);
      made = isFile
                 ? engine.AddPictureFromFile("doc", "page", path, kLongName, isBackground)
                 : engine.AddPictureFromStream("doc", "page", kBitmapFile, kLongName, isBackground);
      hasFailed = failing.HasFailed();
    }
    for (const auto& [id, mark] : PageTestAccess::Pending(board.whiteboard.Page())) {
      EXPECT_FALSE(isBackground);
      EXPECT_EQ(mark == made, !mark->GetPoints().empty()) << "allocation " << nth;
      EXPECT_TRUE(mark == made || AnnotationTestAccess::PictureOf(*mark) == nullptr);
    }
    EXPECT_NE(0, ParchletTestAccess::Refresh(engine));
    return hasFailed;
  }
};

TEST_P(PictureFaultTest, APictureThatRunsOutOfMemoryLeavesAnEmptyMarkAtMost) {
  PlaceWithFault(0);  // fills what painting keeps for good
  const std::int64_t live = LiveAllocations();
  int nth = 1;
  while (PlaceWithFault(nth) && !HasFailure()) {
    ++nth;
  }
  EXPECT_LT(10, nth);
  EXPECT_EQ(live, LiveAllocations()) << "leaked";
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureFaultTest,
                         testing::Values(std::pair(false, false), std::pair(false, true),
                                         std::pair(true, false), std::pair(true, true)));

TEST(ExportFaultTest, APageThatRunsOutOfMemoryKeepsNoOtherFromItsFile) {
  int lastAlone = 0;
  int files = 0;
  bool hasFailed = true;
  for (int nth = 1; hasFailed; ++nth) {
    Board board;
    board.engine.NewPage("doc", "z", "", board.whiteboard.window.Handle(), PageOf(9, 9));
    int result = 0;
    {
      const FailingAllocation failing(nth);
      result = board.engine.SaveDocument("doc", board.folderName, kLongName, std::wstring());
      hasFailed = failing.HasFailed();
    }
    files = static_cast<int>(board.folder.FileCount());
    lastAlone += result == 1 && files == 1 ? 1 : 0;
  }
  EXPECT_EQ(2, files) << "when nothing fails";
  EXPECT_LT(5, lastAlone);
}

TEST(TimerFaultTest, AnEngineWithoutMemoryForItsThreadStaysIdle) {
  Parchlet engine;
  {
    const FailingAllocation failing(1);
    EXPECT_EQ(0, engine.Init());
    EXPECT_TRUE(failing.HasFailed());
  }
  EXPECT_EQ(1, engine.Init());
}

TEST(WindowFaultTest, AWindowThatCannotBeMadeIsNotRegistered) {
  const MemoryWindow first({0, 0, 9, 9});
  bool hasFailed = true;
  for (int nth = 1; hasFailed; ++nth) {
    const FailingAllocation failing(nth);
    try {
      const MemoryWindow window({0, 0, 9, 9});
    } catch (const std::bad_alloc&) {
    }
    hasFailed = failing.HasFailed();
  }
  // Handles are numbers, given out one after the other.
  const MemoryWindow last({0, 0, 9, 9});
  for (auto handle = reinterpret_cast<std::uintptr_t>(first.Handle()) + 1;
       handle < reinterpret_cast<std::uintptr_t>(last.Handle()); ++handle) {
    EXPECT_EQ(0, IsWindow(reinterpret_cast<HWND>(handle)));
  }
}

}  // namespace
