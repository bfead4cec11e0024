// Board.h - a drawing as a list of steps, and the reader of the files that hold one
// (docs/boards.md).
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace replay {

// The page that boards are laid out on, in pixels.
inline constexpr int kBoardWidth = 1920;
inline constexpr int kBoardHeight = 1080;

// Limits, so that a wrong file ends in a message instead of filling the memory.
inline constexpr std::size_t kMaxLineBytes = std::size_t{8} << 20;
inline constexpr std::size_t kMaxBoardPoints = 10'000'000;
inline constexpr std::size_t kMaxBoardPictureBytes = std::size_t{256} << 20;

// Every author is a participant, with an engine and a window.
inline constexpr std::size_t kMaxAuthors = 16;

enum class MarkKind { kPath, kLine, kRectangle, kEllipse };

struct BoardPoint {
  double x;  // pixels of the board's page
  double y;
};

// A path has one point or more, every other kind two. The first point lies on the page.
struct Mark {
  MarkKind kind = MarkKind::kPath;
  std::uint32_t color = 0xFF000000;  // 0xAARRGGBB
  int width = 1;                     // pixels, 1 to 30
  std::vector<BoardPoint> points;
  std::string author;  // empty: the drawer
};

// The path of an eraser: one point or more, the first on the page.
struct Erasure {
  std::vector<BoardPoint> points;
};

// A selection rectangle: two opposite corners, the first on the page.
struct Selection {
  std::vector<BoardPoint> points;
};

// The path of a drag of the selection: two points or more, the first on the page.
struct Drag {
  std::vector<BoardPoint> points;
};

enum class Clearing { kMine, kAll };

// The bytes of a picture file, shared by all who keep or send them.
using PictureBytes = std::shared_ptr<const std::string>;

struct PictureSource {
  std::string file;  // absolute, or relative to the current folder
  PictureBytes bytes;
};

// A picture on the page, in the box between two corners, or where the engine puts it when there are
// none.
struct Placement {
  std::string author;  // as a mark's
  PictureSource source;
  std::vector<BoardPoint> corners;
};

// A picture behind everything; replaces the one before.
struct Background {
  PictureSource source;
};

// Waits until everybody sees everything, and then so many seconds.
struct Pause {
  double seconds;
};

using Action = std::variant<Mark, Erasure, Selection, Drag, Clearing, Placement, Background, Pause>;

// What one line of the file asks for.
struct Step {
  std::size_t line = 0;  // its number in the file, from 1
  Action action;

  std::size_t PointCount() const;
};

struct Board {
  std::string name;  // the file it was read from
  std::vector<Step> steps;
  std::vector<std::string> pictureFiles;  // of all its steps

  std::size_t PointCount() const;
};

// Reads a board file and its pictures. Throws apps::Failure when a file cannot be read, and for the
// first line that is not a step; the message names the file and the line.
Board ReadBoard(const std::string& path);

// Reads a board from a stream. Messages use `name`; pictures are relative to its folder.
Board ReadBoard(std::istream& stream, const std::string& name);

// Reads one line of a board. The caller sets the step's line number and reads the bytes of its
// picture. Throws apps::Failure with the reason, without file and line, for anything that is not
// exactly a step.
Step ParseStep(std::string_view line);

// Returns the authors of the boards, each once, in the order of their first marks. Throws
// apps::Failure for more than kMaxAuthors.
std::vector<std::string> AuthorsOf(const std::vector<Board>& boards);

}  // namespace replay
