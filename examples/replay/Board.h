// Board.h - a drawing as a list of steps, and the reader of the files that hold one
// (docs/boards.md).
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <variant>
#include <vector>

#include "PictureFile.h"

namespace replay {

// The page that boards are laid out on, in pixels.
inline constexpr int kBoardWidth = 1920;
inline constexpr int kBoardHeight = 1080;

// What a file may hold at most, so that a wrong one ends in a message and not in a full memory.
inline constexpr std::size_t kMaxLineBytes = std::size_t{8} << 20;
inline constexpr std::size_t kMaxBoardPoints = 10'000'000;

// Every author is a participant, with an engine and a window.
inline constexpr std::size_t kMaxAuthors = 16;

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
  std::string author;  // the name of the one who draws it; empty: the drawer, who has none
};

// The way of an eraser: one point or more, the first on the page.
struct Erasure {
  std::vector<BoardPoint> points;
};

// A rubber band between two opposite corners, the first on the page.
struct Selection {
  std::vector<BoardPoint> points;
};

// The way that the selection is dragged: two points or more, the first on the page.
struct Drag {
  std::vector<BoardPoint> points;
};

enum class Clearing { kMine, kAll };

struct PictureSource {
  std::string file;  // relative to the tool's folder, or absolute
  PictureBytes bytes;
};

// A picture on the page, in the box between two corners; without them where the engine puts it.
struct Placement {
  std::string author;  // as a mark's
  PictureSource source;
  std::vector<BoardPoint> corners;
};

// A picture behind everything, instead of the one before.
struct Background {
  PictureSource source;
};

// Everybody sees everything, and then nobody does anything for a while.
struct Pause {
  double seconds;
};

// What one line of the file asks for.
struct Step {
  std::size_t line = 0;  // its number in the file, from 1
  std::variant<Mark, Erasure, Selection, Drag, Clearing, Placement, Background, Pause> action;

  std::size_t PointCount() const;
};

struct Board {
  std::string name;  // the file it was read from
  std::vector<Step> steps;
  std::vector<std::string> pictureFiles;  // that its steps bring

  std::size_t PointCount() const;
};

// Reads a board file and the pictures that it names. Throws Failure for a file that cannot be read
// and for the first line that is not a step, naming the file and, where there is one, the line.
Board ReadBoard(const std::string& path);

// The same from a stream. Messages call it `name`, and names of pictures are relative to the folder
// in that.
Board ReadBoard(std::istream& stream, const std::string& name);

// The names of those who draw on the boards, each once, in the order of their first marks. Throws
// Failure for more than kMaxAuthors.
std::vector<std::string> AuthorsOf(const std::vector<Board>& boards);

}  // namespace replay
