#include "Replay.h"

#include <algorithm>
#include <cmath>

#include "Failure.h"

namespace replay {

namespace {

constexpr const char* kUser = "replay";
constexpr const char* kDocument = "boards";

AnnotationSubType SubTypeOf(MarkKind kind) {
  switch (kind) {
    case MarkKind::kLine:
      return AnnotationSubTypeLine;
    case MarkKind::kRectangle:
      return AnnotationSubTypeRectangle;
    case MarkKind::kEllipse:
      return AnnotationSubTypeEllipse;
    case MarkKind::kPath:
      break;
  }
  return AnnotationSubTypePath;
}

// Ends the replay when a call was refused.
void Require(int result, const char* call) {
  if (result != 1) {
    throw Failure(std::string("the engine refused ") + call);
  }
}

}  // namespace

Replay::Replay(PageSize size, double pace)
    : size(size), window(RECT{0, 0, size.width, size.height}), pacer(pace) {
  engine.SetUserInfo(kUser, "", "");
  Require(engine.NewDoc(kUser, kDocument), "NewDoc");
  Require(engine.Init(), "Init");
}

MemoryFrame Replay::Draw(const Board& board, Progress& progress) {
  const std::string pageId = std::string("page-") + std::to_string(++pages);
  OpenPage(pageId);
  progress.Begin(board.name, board.PointCount());
  pacer.Restart();
  for (const Mark& mark : board.marks) {
    DrawMark(mark, pageId, progress);
  }
  MemoryFrame frame = AwaitLastFrame();
  progress.End();
  return frame;
}

Tally Replay::GetTally() const {
  Tally tally = {marks, points, window.PresentCount(), 0.0};
  if (tally.frames > 0) {
    tally.secondsPerFrame = engineTime.Seconds() / static_cast<double>(tally.frames);
  }
  return tally;
}

void Replay::OpenPage(const std::string& pageId) {
  AnnotationPageInfo info = {};
  info.width = size.width;
  info.height = size.height;
  info.viewRect = {0, 0, size.width, size.height};
  Require(engine.NewPage(kDocument, pageId, kUser, window.Handle(), info), "NewPage");
}

void Replay::DrawMark(const Mark& mark, const std::string& pageId, Progress& progress) {
  engine.SetPen(mark.color, ToPixels(mark.width));
  engine.SetAnnotationType(AnnotationTypeDrawing, SubTypeOf(mark.kind));
  for (const BoardPoint& point : mark.points) {
    pacer.AwaitNext();
    if (&point == &mark.points.front()) {
      Require(engine.StartDrawing(kDocument, pageId, ToPixels(point)), "StartDrawing");
    } else {
      Require(engine.MoveDrawing(ToPixels(point)), "MoveDrawing");
    }
    ++points;
    progress.Step();
  }
  Require(engine.EndDrawing(), "EndDrawing");
  ++marks;
}

POINT Replay::ToPixels(const BoardPoint& point) const {
  return {static_cast<LONG>(std::lround(point.x * size.width / kBoardWidth)),
          static_cast<LONG>(std::lround(point.y * size.height / kBoardHeight))};
}

unsigned int Replay::ToPixels(int penWidth) const {
  const double scale = std::min(static_cast<double>(size.width) / kBoardWidth,
                                static_cast<double>(size.height) / kBoardHeight);
  return static_cast<unsigned int>(std::max(1L, std::lround(penWidth * scale)));
}

MemoryFrame Replay::AwaitLastFrame() const {
  // The next frame may have been painted before the last call; the one after it cannot have been.
  constexpr std::uint64_t kFrames = 2;
  constexpr int kTimeoutMs = 60'000;
  if (!window.WaitForPresent(window.PresentCount() + kFrames, kTimeoutMs)) {
    throw Failure("the engine has pushed no new frame for a minute");
  }
  return window.CopyFrame();
}

}  // namespace replay
