// Replay.h - draws boards through the engine, as a meeting.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "replay/Board.h"
#include "replay/Meeting.h"
#include "replay/Options.h"
#include "replay/Progress.h"

namespace replay {

// Delays points to a given pace. One thread.
class Pacer {
 public:
  // `pointsPerSecond` 0: no delay.
  explicit Pacer(double pointsPerSecond);

  // Counts time and points from now on.
  void Restart();
  // Sleeps until the next point is due. After a delay, points are not held back until the pace is
  // reached again.
  void AwaitNext();

 private:
  double pointsPerSecond;
  std::chrono::steady_clock::time_point start;
  std::uint64_t points = 0;
};

// What a replay has done so far.
struct Tally {
  std::size_t marks = 0;
  std::size_t points = 0;        // of the marks
  std::uint64_t frames = 0;      // pushed to all windows
  double secondsPerFrame = 0.0;  // the engines' CPU time, averaged over the frames
};

// Owns the meeting; every board becomes a page of it. One thread.
class Replay {
 public:
  // `authors`: those of all boards to come. Throws apps::Failure when an engine does not start.
  Replay(const Options& options, const std::vector<std::string>& authors);

  // Draws the board on a new page, scaled to its size, and returns the last frame, which shows all
  // of it. Throws apps::Failure when an engine refuses a call or pushes no frames, and for a drag
  // that starts on no selected mark; Disagreement when the participants' pages differ.
  MemoryFrame Draw(const Board& board, Progress& progress);

  // Let the drawer's engine write the page drawn last, or all pages. Throw apps::Failure.
  void SavePage(const std::string& path);
  void SaveDocument(const std::string& folder);

  Tally GetTally() const;

 private:
  // One overload per kind of step. Return false when the step does not apply.
  bool Do(const Mark& mark, Progress& progress);
  bool Do(const Erasure& erasure, Progress& progress);
  bool Do(const Selection& selection, Progress& progress);
  bool Do(const Drag& drag, Progress& progress);
  bool Do(const Clearing& clearing, Progress& progress);
  bool Do(const Placement& placement, Progress& progress);
  bool Do(const Background& background, Progress& progress);
  bool Do(const Pause& pause, Progress& progress);
  // Waits as the pace demands, and returns the points in pixels.
  std::vector<POINT> Trace(const std::vector<BoardPoint>& way, Progress& progress);
  POINT ToPixels(const BoardPoint& point) const;
  // The width of a pen or the size of a letter, at least 1.
  unsigned int ToPixels(int width) const;

  apps::PageSize size;
  Meeting meeting;
  double startSeconds;  // of the engines' CPU time
  Pacer pacer;
  std::size_t pages = 0;
  std::size_t marks = 0;
  std::size_t points = 0;
};

}  // namespace replay
