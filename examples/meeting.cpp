// meeting.cpp - two engines in a meeting: what one draws reaches the other as fragments, and comes
// back as the echo that confirms it. Ends with status 0 when both show the same page.
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Fragments.h>
#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

namespace {

// One of the people in the meeting, with an engine and a window. In a real host this is one
// process.
struct Participant {
  explicit Participant(const std::string& name) : userId(name) {
    engine.SetUserInfo(userId, "desk", name);
    engine.Init();
    engine.NewDoc(userId, "doc");
    AnnotationPageInfo info{};
    info.width = 800;
    info.height = 600;
    info.viewRect = {0, 0, 800, 600};
    engine.NewPage("doc", "page", userId, window.Handle(), info);
  }

  // Draws a wave and returns the id of its mark. The mark is pending: drawn, but not confirmed yet.
  std::string DrawWave(LONG top, unsigned int color) {
    engine.SetPen(color, 8);
    engine.StartDrawing("doc", "page", {0, top});
    for (LONG x = 1; x < 800; ++x) {
      engine.MoveDrawing({x, top + (x / 40 % 2 == 0 ? x % 40 : 40 - x % 40)});
    }
    std::string docId, pageId;
    std::string id = engine.GetCurrentAnnotationInfo(docId, pageId);
    engine.EndDrawing();
    return id;
  }

  // What the window shows once everything done so far is painted.
  std::vector<std::uint32_t> Look() const {
    window.WaitForPresent(window.PresentCount() + 2, 60'000);
    return window.CopyFrame().pixels;
  }

  std::string userId;
  MemoryWindow window{{0, 0, 800, 600}};
  Parchlet engine;  // goes before the window that it pushes frames to
};

// Stands for the server: numbers the author's mark and sends it to both, the author included. The
// engines take over what they need of a fragment and delete the rest.
void Relay(Participant& author, const std::string& id, Participant& other) {
  static std::int32_t order = 0;  // later marks lie above earlier ones, for everybody
  const Annotation* mark = author.engine.GetLocalAnnotation("doc", "page", id);
  // All of them first: the echo of the first one already changes the author's mark.
  for (const auto& fragment : parchlet::SplitMark(*mark, ++order)) {
    other.engine.AddAnnotationFromRemote("doc", "page", std::make_unique<Annotation>(*fragment));
    author.engine.AddAnnotationFromRemote("doc", "page", std::make_unique<Annotation>(*fragment));
  }
}

}  // namespace

int main() {
  Participant ada("ada");
  Participant grace("grace");

  const std::string first = ada.DrawWave(100, 0xFF2266CC);
  const std::string second = grace.DrawWave(300, 0xFFCC4422);
  Relay(ada, first, grace);
  Relay(grace, second, ada);
  const std::vector<std::uint32_t> both = ada.Look();
  const bool areEqual = both == grace.Look();

  // Ada's eraser crosses Grace's wave. EraseAnnotations only tells what an eraser touches; whoever
  // decides erases it everywhere. Marks are found where they were painted last, hence after Look.
  for (const std::string& id :
       ada.engine.EraseAnnotations("doc", "page", "", "", {{400, 250}, {400, 400}})) {
    ada.engine.EraseAnnotation("doc", "page", grace.userId, id);
    grace.engine.EraseAnnotationFromRemote("doc", "page", grace.userId, id);
  }
  const std::vector<std::uint32_t> one = ada.Look();
  const bool areStillEqual = one == grace.Look() && one != both;

  std::puts(areEqual && areStillEqual ? "both see the same page" : "they see different pages");
  return areEqual && areStillEqual ? 0 : 1;
}
