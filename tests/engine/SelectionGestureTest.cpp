#include <parchlet/Parchlet.h>

#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CurrentAnnotPageSize kSize = {200, 100};

// Three strokes: "left" and "right" of bob, "high" of eve above all; the page was painted once.
class SelectionGestureTest : public testing::Test {
 protected:
  SelectionGestureTest() {
    Receive("left", "bob", 1, {{10, 50}, {40, 60}});
    Receive("right", "bob", 2, {{110, 50}, {140, 60}});
    Receive("high", "eve", 3, {{60, 10}, {90, 20}});
    board.Paint();
  }

  void Receive(const std::string& id, const std::string& user, int order,
               const std::vector<POINT>& pixels) {
    Annotation* mark = Mark(id).By(user).Order(order).Points(kSize, pixels).Release();
    EXPECT_EQ(1, engine.AddAnnotationFromRemote("doc", "page", mark));
  }
  int Press(POINT at, const std::string& user = "") {
    return engine.StartSelecting("doc", "page", user, "", at);
  }
  void Band(POINT from, POINT to, const std::string& user = "") {
    engine.EraseSelectedAnnotations("doc", "page");
    EXPECT_EQ(1, Press(from, user));
    EXPECT_EQ(0, engine.MoveSelecting({100, 50}));
    EXPECT_EQ(0, engine.MoveSelecting(to));
    EXPECT_EQ(0, engine.EndSelecting());
  }
  std::vector<std::string> Selected() {
    std::vector<std::string> ids;
    for (const auto& [id, mark] : engine.GetSelectedAnnotations("doc", "page")) {
      ids.push_back(id);
    }
    return ids;
  }
  Annotation* Get(const std::string& id) {
    return engine.GetAnnotation("doc", "page", id == "high" ? "eve" : "bob", id);
  }
  AnnotationPoint First(const std::string& id) { return Get(id)->GetPoints().at(0)[0]; }
  std::vector<std::string> Erasable(const std::vector<POINT>& path, const std::string& user = "",
                                    const std::string& sub = "") {
    return engine.EraseAnnotations("doc", "page", user, sub, path);
  }

  Whiteboard board{kSize.width, kSize.height};
  Parchlet& engine = board.engine;
};

TEST_F(SelectionGestureTest, ABandSelectsWhatLiesInsideWhicheverWayItIsDragged) {
  Band({5, 45}, {150, 65});
  EXPECT_THAT(Selected(), ElementsAre("left", "right"));
  Band({150, 65}, {5, 45});
  EXPECT_THAT(Selected(), ElementsAre("left", "right"));
  Band({0, 0}, {139, 99});
  EXPECT_THAT(Selected(), ElementsAre("high", "left")) << "what it only cuts stays out";
  Band({0, 0}, {199, 99}, "eve");
  EXPECT_THAT(Selected(), ElementsAre("high"));
  Band({0, 0}, {199, 99}, "nobody");
  EXPECT_THAT(Selected(), IsEmpty());
  engine.EraseAnnotation("doc", "page", "bob", "left");
  Band({0, 0}, {199, 99});
  EXPECT_THAT(Selected(), ElementsAre("high", "right"));
  engine.EraseAnnotation("doc", "page", "bob", "right");
  EXPECT_THAT(Selected(), ElementsAre("high", "right")) << "erasing deselects nothing";
  EXPECT_EQ(0, engine.MoveSelecting({1, 1}));
  EXPECT_THAT(Selected(), ElementsAre("high", "right")) << "the gesture was over";
}

TEST_F(SelectionGestureTest, AClickSelectsOneMarkAndAPressOffThePageNothing) {
  EXPECT_EQ(1, Press({20, 52}));
  EXPECT_EQ(0, engine.EndSelecting());
  EXPECT_THAT(Selected(), ElementsAre("left"));
  EXPECT_EQ(0, Press({201, 50}));
  EXPECT_EQ(0, engine.StartSelecting("doc", "other", "", "", {20, 52}));
  EXPECT_THAT(Selected(), ElementsAre("left"));
  Press({120, 52}, "eve");
  EXPECT_THAT(Selected(), IsEmpty()) << "bob's mark is not eve's";
  Press({120, 52}, "bob");
  EXPECT_THAT(Selected(), ElementsAre("right"));
  EXPECT_THAT(engine.GetSelectedAnnotations("doc", "other"), IsEmpty());
}

TEST_F(SelectionGestureTest, TwoDragsBeforeAnEchoAreCancelledAtOnce) {
  const AnnotationPoint before = First("left");
  Band({5, 45}, {150, 65});
  for (int drag = 0; drag < 2; ++drag) {
    EXPECT_EQ(1, Press({20 + 10 * drag, 53 + 5 * drag}));
    EXPECT_EQ(1, engine.MoveSelecting({25 + 10 * drag, 50}));
    EXPECT_EQ(1, engine.MoveSelecting({30 + 10 * drag, 58 + 5 * drag}));
    EXPECT_EQ(1, engine.EndSelecting());
    board.Paint();
  }
  EXPECT_EQ(30, First("left").x);
  EXPECT_EQ(60, First("left").y);
  EXPECT_EQ(130, First("right").x);
  EXPECT_EQ(2U, PageTestAccess::Pending(board.Page()).size());
  EXPECT_EQ(1, engine.GetLocalAnnotation("doc", "page", "left")->IsErased());
  engine.EraseAnnotation("doc", "page", "bob", "left");
  engine.CancelAnnotation("doc", "page", "left");
  EXPECT_EQ(before, First("left"));
  EXPECT_EQ(0, Get("left")->IsErased());
  EXPECT_EQ(nullptr, engine.GetLocalAnnotation("doc", "page", "left"));
  EXPECT_THAT(Selected(), ElementsAre("left", "right"));

  const auto echo = Mark("right").By("bob").Points(kSize, {{150, 10}, {160, 20}}).Make();
  EXPECT_EQ(1, engine.AddAnnotationFromRemote("doc", "page", echo.get()));
  EXPECT_EQ(nullptr, engine.GetLocalAnnotation("doc", "page", "right"));
  engine.CancelAnnotation("doc", "page", "right");
  EXPECT_EQ(150, First("right").x) << "there is nothing left to revert";
}

TEST_F(SelectionGestureTest, ARevertedMoveBringsBackWhatACopyHolds) {
  const auto waiting = Mark("left").By("bob").Fragment(2).Points(kSize, {{70, 70}}).Make();
  engine.AddAnnotationFromRemote("doc", "page", waiting.get());
  Press({30, 60});
  Press({30, 60});
  EXPECT_EQ(1, engine.MoveSelecting({40, 65}));
  EXPECT_EQ(1, engine.EndSelecting());
  engine.CancelAnnotation("doc", "page", "left");
  EXPECT_EQ(PointsOn(kSize, {{10, 50}, {40, 60}}), Get("left")->GetPoints()[0]);
  EXPECT_EQ(0, Get("left")->IsSubModelExist(2)) << "a copy ends at a gap";
}

TEST_F(SelectionGestureTest, AnEraserReportsAndDropsTheSelection) {
  Band({0, 0}, {199, 99});
  EXPECT_THAT(Erasable({{300, 50}}), ElementsAre("")) << "off the page";
  EXPECT_THAT(Erasable({{-9, -9}, {-1, 99}}), IsEmpty());
  EXPECT_THAT(Erasable({}), IsEmpty());
  EXPECT_THAT(Selected(), ElementsAre("high", "left", "right"));
  EXPECT_THAT(Erasable({{180, 90}}), ElementsAre("")) << "on the page, but nothing there";
  EXPECT_THAT(Selected(), IsEmpty());

  EXPECT_THAT(Erasable({{25, 55}}), ElementsAre("left"));
  EXPECT_THAT(Erasable({{0, 55}, {199, 55}}), ElementsAre("right", "left"));
  EXPECT_THAT(Erasable({{0, 90}, {9, 90}, {0, 55}, {199, 55}}), IsEmpty()) << "the first two";
  EXPECT_THAT(Erasable({{0, 55}, {199, 55}}, "eve"), IsEmpty());
  EXPECT_THAT(Erasable({{0, 55}, {199, 55}}, "", "sub"), ElementsAre("right", "left"));
  EXPECT_THAT(Erasable({{0, 55}, {199, 55}}, "bob", "sub"), IsEmpty());

  EXPECT_EQ(1, engine.EraseAnnotation("doc", "page", "bob", "right"));
  EXPECT_EQ(0, engine.EraseAnnotationFromRemote("doc", "page", "bob", "right"));
  EXPECT_EQ(0, engine.EraseAnnotation("doc", "page", "eve", "left"));
  EXPECT_THAT(Erasable({{0, 55}, {199, 55}}), ElementsAre("left"));
  EXPECT_EQ(1, engine.FindAnnotation("doc", "page", "bob", "right"));
  Band({0, 0}, {199, 99});
  EXPECT_THAT(engine.EraseSelectedAnnotations("doc", "page"), ElementsAre("high", "left"));
  EXPECT_THAT(engine.EraseSelectedAnnotations("doc", "page"), IsEmpty());
  EXPECT_EQ(0, Get("left")->IsErased());
}

TEST_F(SelectionGestureTest, ABandPassesOverWhatAHostErasedWithAnyValue) {
  Get("left")->Erase(2);
  Band({5, 45}, {150, 65});
  EXPECT_THAT(Selected(), ElementsAre("right"));
}

TEST_F(SelectionGestureTest, AnOverlapIsErasedFromTheTop) {
  Receive("above", "eve", 9, {{10, 50}, {40, 60}});
  Receive("between", "bob", 5, {{10, 50}, {40, 60}});
  for (const auto& [user, id] :
       {std::pair("eve", "above"), std::pair("bob", "between"), std::pair("bob", "left")}) {
    EXPECT_THAT(Erasable({{25, 55}}), ElementsAre(id));
    EXPECT_EQ(1, engine.EraseAnnotation("doc", "page", user, id));
  }
  EXPECT_THAT(Erasable({{25, 55}}), ElementsAre(""));
}

TEST_F(SelectionGestureTest, AClearSparesWhatIsPending) {
  engine.SetUserInfo("bob", "", "Bob");
  engine.StartDrawing("doc", "page", {5, 5});
  std::string doc;
  std::string page;
  const std::string id = engine.GetCurrentAnnotationInfo(doc, page);
  EXPECT_EQ(0, engine.ClearAnnotations("doc", "page", "nobody", ""));
  EXPECT_EQ(1, engine.ClearAnnotations("doc", "page", "bob", "sub"));
  EXPECT_EQ(0, Get("left")->IsErased());
  EXPECT_EQ(1, engine.ClearAnnotations("doc", "page", "", "sub"));
  EXPECT_EQ(1, Get("left")->IsErased() & Get("right")->IsErased() & Get("high")->IsErased());
  EXPECT_EQ(0, engine.GetLocalAnnotation("doc", "page", id)->IsErased());

  engine.CancelAnnotation("doc", "page", id);
  EXPECT_EQ(nullptr, engine.GetLocalAnnotation("doc", "page", id));
  EXPECT_EQ(0, engine.MoveDrawing({6, 6})) << "the mark in progress is gone";
  EXPECT_EQ(0, engine.EndDrawing());
}

// What ends a gesture by taking its page away.
using CutShort = void (*)(Parchlet&);

class CutShortGestureTest : public SelectionGestureTest,
                            public testing::WithParamInterface<CutShort> {};

TEST_P(CutShortGestureTest, LaterStepsOfTheGestureGiveNothing) {
  Press({20, 52});
  Press({20, 52});
  EXPECT_EQ(1, engine.MoveSelecting({25, 55}));
  engine.StartDrawing("doc", "page", {5, 5});
  GetParam()(engine);
  EXPECT_EQ(0, engine.MoveSelecting({30, 55}));
  EXPECT_EQ(0, engine.EndSelecting());
  EXPECT_EQ(0, engine.MoveDrawing({6, 6}));
  EXPECT_EQ(0, engine.EndDrawing());
}

INSTANTIATE_TEST_SUITE_P(ByWhat, CutShortGestureTest,
                         testing::Values(CutShort([](Parchlet& engine) {
                                           engine.DelPage("doc", "page");
                                         }),
                                         CutShort([](Parchlet& engine) { engine.DelDoc("doc"); }),
                                         CutShort([](Parchlet& engine) {
                                           engine.Init();
                                           engine.Destroy();
                                         })));

}  // namespace
