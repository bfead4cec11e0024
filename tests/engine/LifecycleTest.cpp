#include <limits>

#include <parchlet/Parchlet.h>

#include "support/Whiteboard.h"

namespace {

constexpr int kPatienceMs = 60'000;  // nothing is decided by it: a frame comes or the test hangs

// The mark that a press at (5, 5) starts.
Annotation* PressedMark(Whiteboard& board) {
  EXPECT_EQ(1, board.engine.StartDrawing("doc", "page", {5, 5}));
  return ParchletTestAccess::GetCurrentAnnotation(board.engine);
}

TEST(LifecycleTest, InitRunsTheTimerOnceUntilDestroy) {
  Whiteboard board;
  EXPECT_EQ(0U, board.window.PresentCount());
  EXPECT_EQ(1, board.engine.Init());
  EXPECT_EQ(0, board.engine.Init());
  EXPECT_TRUE(board.window.WaitForPresent(2, kPatienceMs));
  board.engine.Destroy();
  const std::uint64_t pushed = board.window.PresentCount();
  EXPECT_EQ(1, board.engine.Init());
  board.engine.NewDoc("ada", "again");
  board.engine.NewPage("again", "page", "ada", board.window.Handle(), PageOf(200, 100));
  EXPECT_TRUE(board.window.WaitForPresent(pushed + 1, kPatienceMs));
}

TEST(LifecycleTest, DestroyEmptiesTheEngineAndKeepsItsSettings) {
  Whiteboard board;
  board.engine.SetPen(kRed, 9);
  board.engine.SetAnnotationType(AnnotationTypeDrawing, AnnotationSubTypeLine);
  board.engine.SetUserInfo("u", "s", "n");
  board.engine.SetPageBackgroundColor(kBlue);
  board.engine.Init();
  board.engine.StartDrawing("doc", "page", {1, 1});
  board.engine.Destroy();
  EXPECT_EQ(0, board.engine.GetDocCount());
  EXPECT_EQ(0, board.engine.MoveDrawing({2, 2}));
  EXPECT_EQ(0, ParchletTestAccess::Refresh(board.engine));

  board.engine.NewDoc("ada", "doc");
  EXPECT_EQ(0, board.engine.MoveDrawing({2, 2}));
  board.engine.NewPage("doc", "page", "ada", board.window.Handle(), PageOf(200, 100));
  const Annotation* mark = PressedMark(board);
  EXPECT_EQ(kRed, mark->pen.color);
  EXPECT_EQ(9, mark->pen.width);
  EXPECT_EQ(AnnotationSubTypeLine, mark->subType);
  EXPECT_EQ("u", mark->userId);
  EXPECT_EQ("s", mark->userSubId);
  EXPECT_EQ("n", mark->nickname);
  EXPECT_THAT(board.Paint(), Shows(199, 99, kBlue));
}

TEST(LifecycleTest, DestroyOfAnIdleEngineLeavesItsDocuments) {
  Whiteboard board;
  board.engine.Destroy();
  EXPECT_EQ(1, board.engine.GetDocCount());
  EXPECT_EQ(1, board.engine.StartDrawing("doc", "page", {1, 1}));
  EXPECT_EQ(1, board.engine.MoveDrawing({2, 2}));
}

TEST(LifecycleTest, AnEngineMayGoWhileItsTimerPaints) {
  MemoryWindow window({0, 0, 30, 20});
  {
    Parchlet engine;
    engine.Init();
    engine.NewDoc("ada", "doc");
    engine.NewPage("doc", "page", "ada", window.Handle(), PageOf(30, 20));
    EXPECT_TRUE(window.WaitForPresent(1, kPatienceMs));
  }
  const std::uint64_t pushed = window.PresentCount();
  EXPECT_FALSE(window.WaitForPresent(pushed + 1, 100));
}

TEST(SettingsTest, PenWidthsAreBroughtIntoRange) {
  const struct {
    unsigned int given;
    int kept;
  } cases[] = {{0, 1}, {1, 1}, {30, 30}, {31, 30}, {std::numeric_limits<unsigned>::max(), 30}};
  Whiteboard board;
  for (const auto& [given, kept] : cases) {
    board.engine.SetPen(0x12345678, given);
    const Annotation* mark = PressedMark(board);
    EXPECT_EQ(kept, mark->pen.width);
    EXPECT_EQ(0x12345678U, mark->pen.color);
    EXPECT_EQ(0, mark->pen.fill);
  }
}

TEST(SettingsTest, TypeAndSubTypeAreCheckedEachByItself) {
  const struct {
    int type, subType, keptType, keptSubType;
  } cases[] = {{5, 10, 1, 10}, {1, 24, 1, 10}, {0, 5, 1, 5},
               {-1, -1, 1, 5}, {4, 24, 4, 5},  {3, -1, 3, 5},
               {2, 23, 2, 23}, {1, 0, 1, 0},   {INT32_MIN, INT32_MAX, 1, 0}};
  Whiteboard board;
  for (const auto& [type, subType, keptType, keptSubType] : cases) {
    SCOPED_TRACE(testing::Message() << type << ", " << subType);
    board.engine.SetAnnotationType(static_cast<AnnotationType>(type),
                                   static_cast<AnnotationSubType>(subType));
    EXPECT_EQ(keptType == 1 ? 1 : 0, board.engine.StartDrawing("doc", "page", {1, 1}));
    board.engine.SetAnnotationType(AnnotationTypeDrawing, static_cast<AnnotationSubType>(-1));
    EXPECT_EQ(keptSubType, PressedMark(board)->subType);
    board.engine.SetAnnotationType(static_cast<AnnotationType>(keptType),
                                   static_cast<AnnotationSubType>(-1));
  }
}

TEST(SettingsTest, AnEmptyUserIdKeepsThePreviousOne) {
  Whiteboard board;
  board.engine.SetUserInfo("u", "s", "n");
  board.engine.SetUserInfo("", "", "m");
  const Annotation* mark = PressedMark(board);
  EXPECT_EQ("u", mark->userId);
  EXPECT_EQ("", mark->userSubId);
  EXPECT_EQ("m", mark->nickname);
}

TEST(SettingsTest, ABackgroundGoesToTheCurrentPageAndToNewOnes) {
  MemoryWindow window({0, 0, 10, 10});
  Parchlet engine;
  EXPECT_EQ(0, engine.SetPageBackgroundColor(kRed));
  engine.NewDoc("ada", "doc");
  EXPECT_EQ(0, engine.SetPageBackgroundColor(kGreen));
  AnnotationPageInfo info = PageOf(10, 10);
  info.backgroundColor = kBlue;
  engine.NewPage("doc", "1", "ada", window.Handle(), info);
  const auto shown = [&] {
    ParchletTestAccess::Refresh(engine);
    return Frame(window.CopyFrame());
  };
  EXPECT_THAT(shown(), IsAll(kGreen));
  engine.GetPageSize("doc", "1", info, true);
  EXPECT_EQ(kGreen, info.backgroundColor);

  EXPECT_EQ(1, engine.SetPageBackgroundColor(kRed));
  EXPECT_THAT(shown(), IsAll(kRed));
  engine.NewPage("doc", "2", "ada", window.Handle(), info);
  engine.SetPageBackgroundColor(0x80FFFFFF);
  EXPECT_THAT(shown(), IsAll(0x80808080));
  engine.GotoPage("doc", 1);
  EXPECT_THAT(shown(), IsAll(kRed)) << "a page that is not current keeps its colour";
}

TEST(SettingsTest, ATransparentPageKeepsItsFaintBlack) {
  MemoryWindow window({0, 0, 10, 10});
  Parchlet engine;
  engine.NewDoc("ada", "doc");
  AnnotationPageInfo info = PageOf(10, 10);
  info.transparent = true;
  engine.NewPage("doc", "1", "ada", window.Handle(), info);
  EXPECT_EQ(1, engine.SetPageBackgroundColor(kRed));
  ParchletTestAccess::Refresh(engine);
  EXPECT_THAT(Frame(window.CopyFrame()), IsAll(0x0A000000));
}

TEST(SettingsTest, ZoomAndPageSizeAreAcceptedWithoutEffect) {
  Whiteboard board;
  EXPECT_EQ(1, board.engine.SetZoom("nowhere", 2.0F, 1, 1));
  EXPECT_EQ(1, board.engine.SetPageSize("doc", "page", 5, 5));
  std::string out = "kept";
  EXPECT_EQ(1, board.engine.IsDocOpened("nowhere", out));
  EXPECT_EQ(1, board.engine.DuplicatePage("nowhere", "page", out));
  EXPECT_EQ("kept", out);
  AnnotationPageInfo info{};
  board.engine.GetPageSize("doc", "page", info, false);
  EXPECT_EQ(200, info.width);
  EXPECT_EQ(1, board.engine.GetPageCount("doc"));
}

}  // namespace
