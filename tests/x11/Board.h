// Board.h - an engine with one transparent page over a window.
#pragma once

#include <string>

#include <parchlet/Parchlet.h>

class Board {
 public:
  Board(HWND window, int width, int height) {
    engine.SetUserInfo("ada", "", "Ada");
    engine.Init();
    engine.NewDoc("ada", "doc");
    created = engine.NewPage("doc", "page", "ada", window,
                             {0, 0, width, height, true, {0, 0, width, height}, 0});
  }

  bool IsCreated() const { return created == 1; }
  Parchlet& Engine() { return engine; }

  void DrawLine(POINT from, POINT to, unsigned long color, unsigned int penWidth) {
    engine.SetPen(color, penWidth);
    engine.StartDrawing("doc", "page", from);
    engine.MoveDrawing(to);
    engine.EndDrawing();
  }

 private:
  Parchlet engine;
  int created = 0;
};
