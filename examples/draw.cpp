// draw.cpp - draws one page into memory and saves it as a picture:  draw [page.png]
#include <cstdio>
#include <string>
#include <utility>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>
#include <parchlet/Pictures.h>

namespace {

constexpr RECT kArea = {0, 0, 800, 600};

// Draws as a pointer does: press, moves, release. The style holds for the marks that follow.
void Draw(Parchlet& engine, AnnotationSubType shape, unsigned int color, POINT from, POINT to) {
  engine.SetAnnotationType(AnnotationTypeDrawing, shape);
  engine.SetPen(color, 6);  // 0xAARRGGBB, pixels
  engine.StartDrawing("doc", "page", from);
  engine.MoveDrawing(to);
  engine.EndDrawing();
}

}  // namespace

int main(int argc, char** argv) {
  const std::string file = argc > 1 ? argv[1] : "page.png";

  // The window goes last: the engine pushes frames to it for as long as it lives.
  MemoryWindow window(kArea);
  Parchlet engine;
  engine.SetUserInfo("ada", "desk", "Ada");  // who draws: user, device, nickname
  engine.Init();                             // starts to repaint the page 25 times a second

  engine.NewDoc("ada", "doc");
  AnnotationPageInfo info{};
  info.width = kArea.right;
  info.height = kArea.bottom;
  info.viewRect = kArea;
  engine.NewPage("doc", "page", "ada", window.Handle(), info);

  Draw(engine, AnnotationSubTypeRectangle, 0xFF2266CC, {100, 250}, {500, 520});
  Draw(engine, AnnotationSubTypeLine, 0xFFCC4422, {80, 260}, {300, 90});
  Draw(engine, AnnotationSubTypeLine, 0xFFCC4422, {300, 90}, {520, 260});
  Draw(engine, AnnotationSubTypeEllipse, 0xFFE8A020, {600, 60}, {720, 180});

  // A path keeps every point that the pointer reports.
  engine.SetAnnotationType(AnnotationTypeDrawing, AnnotationSubTypePath);
  engine.SetPen(0xFF2F9E44, 10);
  engine.StartDrawing("doc", "page", {40, 560});
  for (LONG x = 60; x <= 760; x += 20) {
    engine.MoveDrawing({x, x % 40 == 0 ? 560 : 545});
  }
  engine.EndDrawing();

  // The next frame may have been painted before the last call; the one after it shows everything.
  if (!window.WaitForPresent(window.PresentCount() + 2, 60'000)) {
    std::puts("no frame came");
    return 1;
  }
  MemoryFrame frame = window.CopyFrame();
  if (!parchlet::SavePicture({frame.width, frame.height, std::move(frame.pixels)}, file)) {
    std::printf("%s cannot be written\n", file.c_str());
    return 1;
  }
  std::printf("%s shows the page\n", file.c_str());
  return 0;
}
