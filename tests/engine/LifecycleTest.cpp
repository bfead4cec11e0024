#include <limits>
#include <system_error>

#include <parchlet/Parchlet.h>
#include <pthread.h>

#include "support/Whiteboard.h"

namespace {

constexpr int kPatienceMs = 60'000;  // nothing is decided by it: a frame comes or the test hangs

// The mark that a press starts.
const Annotation* PressedMark(Whiteboard& board) {
  EXPECT_EQ(1, board.engine.StartDrawing("doc", "page", {5, 5}));
  return ParchletTestAccess::GetCurrentAnnotation(board.engine);
}

TEST(LifecycleTest, AnEnginePaintsFromInitToDestroy) {
  MemoryWindow window({0, 0, 20, 10});
  for (int life = 0; life < 2; ++life) {
    Parchlet engine;
    for (int run = 0; run < 2; ++run) {
      const std::uint64_t before = window.PresentCount();
      EXPECT_EQ(1, engine.Init());
      EXPECT_EQ(0, engine.Init());
      engine.NewDoc("ada", "doc");
      engine.NewPage("doc", "page", "ada", window.Handle(), PageOf(20, 10));
      EXPECT_TRUE(window.WaitForPresent(before + 2, kPatienceMs));
      if (run == 0) {
        engine.Destroy();
      }
    }
  }
  EXPECT_FALSE(window.WaitForPresent(window.PresentCount() + 1, 100)) << "gone while it painted";
}

// No thread has room for its stack for as long as this lives.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&before);
    pthread_attr_t huge = before;
    EXPECT_EQ(0, pthread_attr_setstacksize(&huge, std::size_t{1} << 47));
    EXPECT_EQ(0, pthread_setattr_default_np(&huge));
  }
  ~NoThreads() { pthread_setattr_default_np(&before); }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

 private:
  pthread_attr_t before{};
};

TEST(LifecycleTest, AnEngineWithoutAThreadStaysIdleUntilItGetsOne) {
  Whiteboard board;
  {
    const NoThreads none;
    EXPECT_THROW(board.engine.Init(), std::system_error);
  }
  board.engine.Destroy();
  EXPECT_EQ(1, board.engine.GetDocCount()) << "there was nothing to destroy";
  EXPECT_NE(0, ParchletTestAccess::Refresh(board.engine));
  EXPECT_EQ(1, board.engine.Init());
  EXPECT_TRUE(board.window.WaitForPresent(2, kPatienceMs));
}

TEST(LifecycleTest, DestroyEmptiesTheEngineAndKeepsItsSettings) {
  Whiteboard board;
  board.engine.SetPen(kRed, 9);
  board.engine.SetAnnotationType(AnnotationTypeDrawing, AnnotationSubTypeLine);
  board.engine.SetUserInfo("u", "", "");
  board.engine.SetUserInfo("", "s", "n");  // an empty id keeps the previous one
  board.engine.SetPageBackgroundColor(kBlue);
  board.engine.Destroy();
  EXPECT_EQ(1, board.engine.GetDocCount()) << "it was idle";
  board.engine.Init();
  board.engine.StartDrawing("doc", "page", {1, 1});
  board.engine.Destroy();
  EXPECT_EQ(0, board.engine.GetDocCount());
  EXPECT_EQ(0, board.engine.MoveDrawing({2, 2}));
  EXPECT_EQ(0, ParchletTestAccess::Refresh(board.engine));

  board.engine.NewDoc("ada", "doc");
  board.engine.NewPage("doc", "page", "ada", board.window.Handle(), PageOf(200, 100));
  const Annotation* mark = PressedMark(board);
  EXPECT_EQ(kRed, mark->pen.color);
  EXPECT_EQ(9, mark->pen.width);
  EXPECT_EQ(AnnotationSubTypeLine, mark->subType);
  EXPECT_EQ("u s n", mark->userId + " " + mark->userSubId + " " + mark->nickname);
  EXPECT_THAT(board.Paint(), Shows(199, 99, kBlue));
}

TEST(SettingsTest, PenWidthsAreBroughtIntoRange) {
  Whiteboard board;
  for (const auto& [given, kept] : {std::pair{0U, 1},
                                    {1U, 1},
                                    {30U, 30},
                                    {31U, 30},
                                    {std::numeric_limits<unsigned>::max(), 30}}) {
    board.engine.SetPen(0x12345678, given);
    const AnnotationPen pen = PressedMark(board)->pen;
    EXPECT_EQ(kept, pen.width);
    EXPECT_EQ(0x12345678U, pen.color);
    EXPECT_EQ(0, pen.fill);
  }
}

TEST(SettingsTest, TypeAndSubTypeAreCheckedEachByItself) {
  const struct {
    int type, subType, keptType, keptSubType;
  } cases[] = {{5, 10, 1, 10}, {1, 24, 1, 10}, {0, 5, 1, 5},   {-1, -1, 1, 5},
               {4, 24, 4, 5},  {3, -1, 3, 5},  {2, 23, 2, 23}, {1, 0, 1, 0}};
  Whiteboard board;
  const auto set = [&](int type, int subType) {
    board.engine.SetAnnotationType(static_cast<AnnotationType>(type),
                                   static_cast<AnnotationSubType>(subType));
  };
  for (const auto& [type, subType, keptType, keptSubType] : cases) {
    SCOPED_TRACE(testing::Message() << type << ", " << subType);
    set(type, subType);
    EXPECT_EQ(keptType == 1 ? 1 : 0, board.engine.StartDrawing("doc", "page", {1, 1}));
    set(AnnotationTypeDrawing, -1);
    EXPECT_EQ(keptSubType, PressedMark(board)->subType);
    set(keptType, -1);
  }
}

TEST(SettingsTest, ABackgroundGoesToTheCurrentPageAndToNewOnes) {
  MemoryWindow window({0, 0, 10, 10});
  Parchlet engine;
  const auto shown = [&] {
    ParchletTestAccess::Refresh(engine);
    return Frame(window.CopyFrame());
  };
  EXPECT_EQ(0, engine.SetPageBackgroundColor(kGreen)) << "there is no page yet";
  engine.NewDoc("ada", "doc");
  AnnotationPageInfo info = PageOf(10, 10);
  info.backgroundColor = kBlue;
  engine.NewPage("doc", "1", "ada", window.Handle(), info);
  EXPECT_THAT(shown(), IsAll(kGreen));
  engine.GetPageSize("doc", "1", info, true);
  EXPECT_EQ(kGreen, info.backgroundColor);

  EXPECT_EQ(1, engine.SetPageBackgroundColor(kRed));
  EXPECT_THAT(shown(), IsAll(kRed));
  engine.NewPage("doc", "2", "ada", window.Handle(), info);
  engine.SetPageBackgroundColor(0x80FFFFFF);
  EXPECT_THAT(shown(), IsAll(0x80808080)) << "premultiplied";
  engine.GotoPage("doc", 1);
  EXPECT_THAT(shown(), IsAll(kRed)) << "a page that is not current keeps its colour";

  info.transparent = true;
  engine.NewPage("doc", "3", "ada", window.Handle(), info);
  EXPECT_EQ(1, engine.SetPageBackgroundColor(kBlue));
  EXPECT_THAT(shown(), IsAll(0x0A000000)) << "a transparent page has a colour of its own";
}

}  // namespace
