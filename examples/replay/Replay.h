// Replay.h - a host without a screen that draws boards through the engine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>

#include "Board.h"
#include "CpuTime.h"
#include "Options.h"
#include "Pacer.h"
#include "Progress.h"

namespace replay {

// What a replay did so far.
struct Tally {
  std::size_t marks = 0;
  std::size_t points = 0;
  std::uint64_t frames = 0;      // pushed to the window
  double secondsPerFrame = 0.0;  // the engine's CPU time, averaged over the frames
};

// Owns an engine whose timer runs, one document in it, and the window in memory that the current
// page is pushed to. One thread's own.
class Replay {
 public:
  // `pace` is in points a second; 0: as fast as it goes. Throws Failure when the engine does not
  // start.
  Replay(PageSize size, double pace);

  // Draws the board, scaled to the page's size, on a new page and gives the last frame pushed,
  // which shows all of it. Throws Failure when the engine refuses a call or pushes no frames.
  MemoryFrame Draw(const Board& board, Progress& progress);

  Tally GetTally() const;

 private:
  void OpenPage(const std::string& pageId);
  void DrawMark(const Mark& mark, const std::string& pageId, Progress& progress);
  POINT ToPixels(const BoardPoint& point) const;
  unsigned int ToPixels(int penWidth) const;
  MemoryFrame AwaitLastFrame() const;

  PageSize size;
  MemoryWindow window;  // outlives the engine that pushes to it
  Parchlet engine;
  OtherThreadsCpuTime engineTime;
  Pacer pacer;
  std::size_t pages = 0;
  std::size_t marks = 0;
  std::size_t points = 0;
};

}  // namespace replay
