// Board.h - a drawing as a list of marks, and the reader of the files that hold one
// (docs/boards.md).
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace replay {

// The page that boards are laid out on, in pixels.
inline constexpr int kBoardWidth = 1920;
inline constexpr int kBoardHeight = 1080;

// What a file may hold at most, so that a wrong one ends in a message and not in a full memory.
inline constexpr std::size_t kMaxLineBytes = std::size_t{8} << 20;
inline constexpr std::size_t kMaxBoardPoints = 10'000'000;

enum class MarkKind { kPath, kLine, kRectangle, kEllipse };

struct BoardPoint {
  double x;  // pixels of the board's page
  double y;
};

// One mark. A path has one point or more, every other kind two; the first point lies on the page.
struct Mark {
  MarkKind kind = MarkKind::kPath;
  std::uint32_t color = 0xFF000000;  // 0xAARRGGBB
  int width = 1;                     // pixels, 1 to 30
  std::vector<BoardPoint> points;
};

struct Board {
  std::string name;  // the file it was read from
  std::vector<Mark> marks;

  std::size_t PointCount() const;
};

// Reads a board file. Throws Failure for a file that cannot be read and for the first line that is
// not a mark, naming the file and, where there is one, the line.
Board ReadBoard(const std::string& path);

// The same from a stream; messages call it `name`.
Board ReadBoard(std::istream& stream, const std::string& name);

}  // namespace replay
