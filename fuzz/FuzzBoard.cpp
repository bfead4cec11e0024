// Feeds the reader of board files. What it takes for a board keeps the promises of its header.
#include <cstdlib>
#include <sstream>
#include <variant>

#include "common/Input.h"
#include "replay/Board.h"

namespace {

using replay::BoardPoint;

void Require(bool isTrue) {
  if (!isTrue) {
    std::abort();
  }
}

// As many points as there must be, and the first one on the page.
void RequirePoints(const std::vector<BoardPoint>& points, std::size_t least, std::size_t most) {
  Require(points.size() >= least && points.size() <= most);
  Require(points[0].x >= 0 && points[0].x <= replay::kBoardWidth && points[0].y >= 0 &&
          points[0].y <= replay::kBoardHeight);
}

void RequireStep(const replay::Step& step) {
  if (const auto* mark = std::get_if<replay::Mark>(&step.action)) {
    const bool isPath = mark->kind == replay::MarkKind::kPath;
    RequirePoints(mark->points, isPath ? 1 : 2, isPath ? replay::kMaxBoardPoints : 2);
    Require(mark->width >= 1 && mark->width <= 30);
  } else if (const auto* erasure = std::get_if<replay::Erasure>(&step.action)) {
    RequirePoints(erasure->points, 1, replay::kMaxBoardPoints);
  } else if (const auto* selection = std::get_if<replay::Selection>(&step.action)) {
    RequirePoints(selection->points, 2, 2);
  } else if (const auto* drag = std::get_if<replay::Drag>(&step.action)) {
    RequirePoints(drag->points, 2, replay::kMaxBoardPoints);
  } else if (const auto* pause = std::get_if<replay::Pause>(&step.action)) {
    Require(pause->seconds >= 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
  try {
    // No picture that it names lies in that folder.
    const replay::Board board = replay::ReadBoard(stream, "/no such folder/board");
    Require(board.PointCount() <= replay::kMaxBoardPoints);
    for (const replay::Step& step : board.steps) {
      RequireStep(step);
    }
    replay::AuthorsOf({board});
  } catch (const apps::Failure&) {
  }
  return 0;
}
