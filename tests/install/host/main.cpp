// Draws a line and looks whether the window shows it.
#include <cstdio>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

int main() {
  MemoryWindow window({0, 0, 100, 50});
  Parchlet engine;
  engine.Init();
  engine.NewDoc("ada", "doc");
  engine.NewPage("doc", "page", "ada", window.Handle(),
                 {0, 0, 100, 50, false, {0, 0, 100, 50}, 0xFFFFFFFF});
  engine.SetPen(0xFF0000FF, 6);
  engine.StartDrawing("doc", "page", {10, 25});
  engine.MoveDrawing({90, 25});
  engine.EndDrawing();
  // The frame under way may be older than the line; the one after it is not.
  if (!window.WaitForPresent(window.PresentCount() + 2, 60'000)) {
    std::puts("no frame came");
    return 1;
  }
  const MemoryFrame frame = window.CopyFrame();
  const bool isDrawn = frame.width == 100 && frame.pixels[25 * 100 + 50] == 0xFF0000FF &&
                       frame.pixels[10 * 100 + 50] == 0xFFFFFFFF;
  std::puts(isDrawn ? "the line is there" : "the line is missing");
  return isDrawn ? 0 : 1;
}
