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
    engine.NewPage("doc", "other", "ada", board.window.Handle(), PageOf(kWidth, kHeight));
  }

  void MakeOneCall() {
    const int kind = Any(10);
    if (kind < 4) {
      Receive();
    } else if (kind < 6) {
      Annotation* mark = engine.GetAnnotation("doc", page, "bob", AnyMark());
      if (mark != nullptr) {
        mark->Erase(1 - mark->IsErased());
      }
    } else if (kind == 6) {
      Select();
    } else if (kind == 7) {
      page = page == "page" ? "other" : "page";
      engine.SetCurrentPage("doc", page);
    } else if (kind == 8) {
      engine.SetPageBackgroundColor(AnyColor());
    } else {
      Resize(kWidth - 20 + Any(40), kHeight - 20 + Any(40));
    }
  }

  Frame Paint() { return board.Paint(); }

  // What the window shows of a surface and a painter that never saw the page: another size of the
  // page comes between.
  Frame PaintFromScratch() {
    const AnnotationPageInfo kept = engine.GetPagePtr("doc", page)->GetCurrentInfo();
    Resize(kept.width + 64, kept.height);
    board.Paint();
    Resize(kept.width, kept.height);
    return board.Paint();
  }

 private:
  int Any(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
  POINT AnyPoint() { return {Any(kWidth), Any(kHeight)}; }
  std::string AnyMark() { return std::to_string(Any(received + 1)); }
  std::uint32_t AnyColor() {
    return (Any(2) == 0 ? 0xFF000000U : 0x70000000U) | static_cast<std::uint32_t>(Any(0x1000000));
  }

  // A new mark, or a fragment of one.
  void Receive() {
    static constexpr int kShapes[] = {0, 0, 10, 14, 15, 19, 20};
    std::vector<POINT> path = {AnyPoint()};
    for (int count = 1 + Any(50); count > 0; --count) {
      path.push_back({path.back().x + Any(21) - 10, path.back().y + Any(21) - 10});
    }
    const bool isNew = Any(4) != 0;
    engine.AddAnnotationFromRemote("doc", page,
                                   Mark(isNew ? std::to_string(++received) : AnyMark())
                                       .By("bob")
                                       .Order(Any(50))
                                       .Fragment(isNew ? 0 : Any(3))
                                       .Shape(static_cast<AnnotationSubType>(kShapes[Any(7)]))
                                       .Pen(AnyColor(), 1 + Any(30), Any(2))
                                       .Points({kWidth, kHeight}, path)
                                       .Make());
  }
  // A band, and a drag of one mark that it caught.
  void Select() {
    engine.StartSelecting("doc", page, "", "", AnyPoint());
    engine.MoveSelecting(AnyPoint());
    engine.EndSelecting();
    const auto selected = engine.GetSelectedAnnotations("doc", page);
    if (!selected.empty() && Any(2) == 0) {
      const AnnotationPoint at = selected.begin()->second->GetPoints().at(0).front();
      engine.StartSelecting("doc", page, "", "", {at.x, at.y});
      engine.MoveSelecting(AnyPoint());
      engine.EndSelecting();
    }
  }
  void Resize(int width, int height) {
    engine.UpdatePage("doc", page, PageOf(width, height), true);
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
