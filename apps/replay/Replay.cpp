#include "replay/Replay.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <string>
#include <thread>
#include <variant>

namespace replay {

namespace {

double ReadClock(clockid_t clock) {
  constexpr double kNanosecond = 1e-9;
  timespec time = {};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + kNanosecond * static_cast<double>(time.tv_nsec);
}

// Returns the CPU time that all threads but this one have used.
double OtherThreadsSeconds() {
  return ReadClock(CLOCK_PROCESS_CPUTIME_ID) - ReadClock(CLOCK_THREAD_CPUTIME_ID);
}

}  // namespace

Pacer::Pacer(double pointsPerSecond)
    : pointsPerSecond(pointsPerSecond), start(std::chrono::steady_clock::now()) {}

void Pacer::Restart() {
  start = std::chrono::steady_clock::now();
  points = 0;
}

void Pacer::AwaitNext() {
  if (pointsPerSecond <= 0) {
    return;
  }
  // A century is long enough, and still fits the clock.
  constexpr double kLongestSeconds = 3e9;
  const double due = std::min(static_cast<double>(points) / pointsPerSecond, kLongestSeconds);
  ++points;
  std::this_thread::sleep_until(start +
                                std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                    std::chrono::duration<double>(due)));
}

Replay::Replay(const Options& options, const std::vector<std::string>& authors)
    : size(options.size),
      meeting(size, authors, options.lossySeed),
      startSeconds(OtherThreadsSeconds()),
      pacer(options.pace) {
  constexpr int kNameSize = 28;  // pixels of the board's page
  if (options.showNames) {
    meeting.ShowNames(ToPixels(kNameSize));
  }
}

MemoryFrame Replay::Draw(const Board& board, Progress& progress) {
  meeting.OpenPage(std::string("page-") + std::to_string(++pages));
  progress.Begin(board.name, board.PointCount());
  pacer.Restart();
  for (const Step& step : board.steps) {
    if (!std::visit([&](const auto& action) { return Do(action, progress); }, step.action)) {
      throw apps::Failure(board.name + ":" + std::to_string(step.line) +
                          ": the move does not start on a selected mark");
    }
  }
  MemoryFrame frame = meeting.ClosePage(board.name);
  progress.End();
  return frame;
}

void Replay::SavePage(const std::string& path) {
  meeting.SavePage(path);
}

void Replay::SaveDocument(const std::string& folder) {
  meeting.SaveDocument(folder);
}

Tally Replay::GetTally() const {
  Tally tally = {marks, points, meeting.FrameCount(), 0.0};
  if (tally.frames > 0) {
    tally.secondsPerFrame =
        (OtherThreadsSeconds() - startSeconds) / static_cast<double>(tally.frames);
  }
  return tally;
}

bool Replay::Do(const Mark& mark, Progress& progress) {
  Participant& author = meeting.Author(mark.author);
  author.TakePen(mark.kind, mark.color, ToPixels(mark.width));
  for (const BoardPoint& point : mark.points) {
    pacer.AwaitNext();
    if (&point == &mark.points.front()) {
      author.Press(ToPixels(point));
    } else {
      author.Move(ToPixels(point));
    }
    ++points;
    progress.Step();
  }
  meeting.RelayDrawing(author);
  ++marks;
  return true;
}

bool Replay::Do(const Erasure& erasure, Progress& progress) {
  meeting.Erase(Trace(erasure.points, progress));
  return true;
}

bool Replay::Do(const Selection& selection, Progress& progress) {
  const std::vector<POINT> corners = Trace(selection.points, progress);
  meeting.Select(corners.front(), corners.back());
  return true;
}

bool Replay::Do(const Drag& drag, Progress& progress) {
  return meeting.Drag(Trace(drag.points, progress));
}

bool Replay::Do(const Clearing& clearing, Progress& /*progress*/) {
  meeting.Clear(clearing);
  return true;
}

bool Replay::Do(const Placement& placement, Progress& /*progress*/) {
  std::vector<POINT> corners;
  for (const BoardPoint& corner : placement.corners) {
    corners.push_back(ToPixels(corner));
  }
  meeting.Place(meeting.Author(placement.author), placement.source, corners);
  ++marks;
  return true;
}

bool Replay::Do(const Background& background, Progress& /*progress*/) {
  meeting.SetBackground(background.source);
  return true;
}

bool Replay::Do(const Pause& pause, Progress& /*progress*/) {
  meeting.Settle();
  std::this_thread::sleep_for(std::chrono::duration<double>(pause.seconds));
  pacer.Restart();
  return true;
}

std::vector<POINT> Replay::Trace(const std::vector<BoardPoint>& way, Progress& progress) {
  std::vector<POINT> pixels;
  pixels.reserve(way.size());
  for (const BoardPoint& point : way) {
    pacer.AwaitNext();
    pixels.push_back(ToPixels(point));
    progress.Step();
  }
  return pixels;
}

POINT Replay::ToPixels(const BoardPoint& point) const {
  return {static_cast<LONG>(std::lround(point.x * size.width / kBoardWidth)),
          static_cast<LONG>(std::lround(point.y * size.height / kBoardHeight))};
}

unsigned int Replay::ToPixels(int width) const {
  const double scale = std::min(static_cast<double>(size.width) / kBoardWidth,
                                static_cast<double>(size.height) / kBoardHeight);
  return static_cast<unsigned int>(std::max(1L, std::lround(width * scale)));
}

}  // namespace replay
