// Board.h - an engine whose timer runs, with one page on a window in memory.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

// Says where an expectation failed and ends the program.
#define EXPECT(condition)                                                 \
  do {                                                                    \
    if (!(condition)) {                                                   \
      std::printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      std::exit(1);                                                       \
    }                                                                     \
  } while (false)

struct Board {
  static constexpr int kWidth = 100;
  static constexpr int kHeight = 50;

  Board() {
    engine.SetUserInfo("ada", "desk", "Ada");
    EXPECT(engine.Init() == 1);
    EXPECT(engine.NewDoc("ada", "doc") == 1);
    AddPage("page");
  }

  void AddPage(const std::string& id) {
    EXPECT(engine.NewPage("doc", id, "ada", window.Handle(),
                          {0, 0, kWidth, kHeight, false, {0, 0, kWidth, kHeight}, 0xFFFFFFFF}) ==
           1);
  }

  // What the window shows of everything done so far.
  MemoryFrame Show() const {
    // The frame under way may be older than the last call; the one after it is not.
    EXPECT(window.WaitForPresent(window.PresentCount() + 2, 60'000));
    return window.CopyFrame();
  }

  // Whether the box shows `color`, and what lies around it, as far as the page goes, does not.
  bool ShowsBox(const RECT& box, std::uint32_t color) const {
    const MemoryFrame frame = Show();
    for (int y = 0; y < frame.height; ++y) {
      for (int x = 0; x < frame.width; ++x) {
        const bool isIn = x >= box.left && x < box.right && y >= box.top && y < box.bottom;
        if ((frame.pixels[static_cast<std::size_t>(y) * frame.width + x] == color) != isIn) {
          return false;
        }
      }
    }
    return true;
  }

  MemoryWindow window{{10, 20, 10 + kWidth, 20 + kHeight}};
  Parchlet engine;
};
