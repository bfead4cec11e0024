// Replay.h - draws boards through the engine, as a meeting.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "Board.h"
#include "CpuTime.h"
#include "Meeting.h"
#include "Options.h"
#include "Pacer.h"
#include "Progress.h"

namespace replay {

// What a replay did so far.
struct Tally {
  std::size_t marks = 0;
  std::size_t points = 0;        // of the marks
  std::uint64_t frames = 0;      // pushed to all windows
  double secondsPerFrame = 0.0;  // the engines' CPU time, averaged over the frames
};

// Owns the meeting, a page of which every board gets. One thread's own.
class Replay {
 public:
  // `authors`: all those of the boards to come. Throws Failure when an engine does not start.
  Replay(const Options& options, const std::vector<std::string>& authors);

  // Does the board's steps, scaled to the page's size, on a new page and gives the last frame,
  // which shows all of it. Throws Failure when an engine refuses a call or pushes no frames, and
  // for a drag that grabs nothing; Disagreement when the participants' pages differ.
  MemoryFrame Draw(const Board& board, Progress& progress);

  // Let the drawer's engine write what it shows: the page drawn last, or all of them. Throw Failure
  // when it cannot.
  void SavePage(const std::string& path);
  void SaveDocument(const std::string& folder);

  Tally GetTally() const;

 private:
  // One overload a kind of step; false when there is nothing for it to be done to.
  bool Do(const Mark& mark, Progress& progress);
  bool Do(const Erasure& erasure, Progress& progress);
  bool Do(const Selection& selection, Progress& progress);
  bool Do(const Drag& drag, Progress& progress);
  bool Do(const Clearing& clearing, Progress& progress);
  bool Do(const Placement& placement, Progress& progress);
  bool Do(const Background& background, Progress& progress);
  bool Do(const Pause& pause, Progress& progress);
  // Takes the time that a way of so many points takes, and gives the way in pixels.
  std::vector<POINT> Trace(const std::vector<BoardPoint>& way, Progress& progress);
  POINT ToPixels(const BoardPoint& point) const;
  // Of a pen or a letter, 1 at least.
  unsigned int ToPixels(int width) const;

  PageSize size;
  Meeting meeting;
  OtherThreadsCpuTime engineTime;
  Pacer pacer;
  std::size_t pages = 0;
  std::size_t marks = 0;
  std::size_t points = 0;
};

}  // namespace replay
