#include <random>

#include <parchlet/Parchlet.h>

#include "support/Mark.h"
#include "support/Whiteboard.h"

namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;

// A host that edits two pages on one window at random.
class RestlessHost {
 public:
  explicit RestlessHost(unsigned seed) : random(seed), board(kWidth, kHeight) {
    engine.SetUserInfo("ada", "", "Ada");
    engine.NewPage("doc", "other", "ada", board.window.Handle(), PageOf(kWidth, kHeight));
  }

  void MakeOneCall() {
    constexpr void (RestlessHost::*kCalls[])() = {
        &RestlessHost::Draw,      &RestlessHost::Draw,   &RestlessHost::Receive,
        &RestlessHost::Receive,   &RestlessHost::Extend, &RestlessHost::Erase,
        &RestlessHost::Move,      &RestlessHost::Turn,   &RestlessHost::Recolor,
        &RestlessHost::ResizePage};
    (this->*kCalls[Any(10)])();
  }

  Frame Paint() { return board.Paint(); }

  // What the window shows of a surface and a painter that never saw the page: another size of the
  // page comes between.
  Frame PaintFromScratch() {
    const AnnotationPageInfo kept = board.engine.GetPagePtr("doc", page)->GetCurrentInfo();
    Resize(kept.width + 64, kept.height);
    board.Paint();
    Resize(kept.width, kept.height);
    return board.Paint();
  }

 private:
  int Any(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
  POINT AnyPoint() { return {Any(kWidth), Any(kHeight)}; }
  std::string AnyMark() { return "mark-" + std::to_string(Any(received + 1)); }
  std::vector<POINT> AnyPath() {
    std::vector<POINT> path = {AnyPoint()};
    for (int count = 1 + Any(50); count > 0; --count) {
      path.push_back({path.back().x + Any(21) - 10, path.back().y + Any(21) - 10});
    }
    return path;
  }
  std::uint32_t AnyColor() {
    return (Any(2) == 0 ? 0xFF000000U : 0x70000000U) | static_cast<std::uint32_t>(Any(0x1000000));
  }
  AnnotationSubType AnyShape() {
    constexpr AnnotationSubType kShapes[] = {
        AnnotationSubTypePath,         AnnotationSubTypePath,      AnnotationSubTypeLine,
        AnnotationSubTypeEllipse,      AnnotationSubTypeRectangle, AnnotationSubTypeTriangle,
        AnnotationSubTypeRightTriangle};
    return kShapes[Any(7)];
  }

  void Draw() {
    engine.SetPen(AnyColor(), static_cast<unsigned>(1 + Any(30)));
    engine.SetAnnotationType(AnnotationTypeDrawing, AnyShape());
    engine.StartDrawing("doc", page, AnyPoint());
    for (const POINT& point : AnyPath()) {
      engine.MoveDrawing(point);
    }
    if (Any(3) != 0) {
      engine.EndDrawing();
    }
  }
  void Receive() {
    const std::string id = "mark-" + std::to_string(++received);
    engine.AddAnnotationFromRemote("doc", page,
                                   Mark(id)
                                       .By("bob")
                                       .Order(Any(50))
                                       .Shape(AnyShape())
                                       .Pen(AnyColor(), 1 + Any(30), Any(2))
                                       .Points({kWidth, kHeight}, AnyPath())
                                       .Release());
  }
  void Extend() {
    if (Annotation* mark = engine.GetAnnotation("doc", page, "bob", AnyMark())) {
      mark->AddPoint({Any(kWidth), Any(kHeight), Any(100) / 100.0, Any(100) / 100.0});
    }
  }
  void Erase() {
    const std::string id = AnyMark();
    Annotation* mark = engine.GetAnnotation("doc", page, "bob", id);
    if (mark != nullptr && mark->IsErased() == 1) {
      mark->Erase(0);
    } else {
      engine.EraseAnnotation("doc", page, "bob", id);
    }
  }
  void Move() {
    engine.StartSelecting("doc", page, "", "", AnyPoint());
    engine.MoveSelecting(AnyPoint());
    engine.EndSelecting();
    if (Any(2) == 0) {
      return;
    }
    for (const auto& [id, mark] : engine.GetSelectedAnnotations("doc", page)) {
      const POINT at = {mark->GetPoints().at(0).front().x, mark->GetPoints().at(0).front().y};
      engine.StartSelecting("doc", page, "", "", at);
      engine.MoveSelecting(AnyPoint());
      engine.EndSelecting();
      return;
    }
  }
  void Turn() {
    page = page == "page" ? "other" : "page";
    engine.SetCurrentPage("doc", page);
  }
  void Recolor() { engine.SetPageBackgroundColor(AnyColor()); }
  void ResizePage() { Resize(kWidth - 20 + Any(40), kHeight - 20 + Any(40)); }
  void Resize(int width, int height) {
    AnnotationPageInfo info = PageOf(width, height);
    engine.UpdatePage("doc", page, info, true);
  }

  std::mt19937 random;
  Whiteboard board;
  Parchlet& engine = board.engine;
  std::string page = "other";
  int received = 0;
};

// The window takes over nothing but what a frame says to have changed, so this holds only if the
// frames say enough.
TEST(FrameParityTest, AfterAnyCallsTheWindowShowsThePagePaintedFromScratch) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    RestlessHost host(seed);
    for (int step = 0; step < 120; ++step) {
      host.MakeOneCall();
      const Frame shown = host.Paint();
      if (step % 6 == 5) {
        ASSERT_EQ(shown.pixels, host.PaintFromScratch().pixels)
            << "seed " << seed << ", step " << step;
      }
    }
  }
}

}  // namespace
