#include "Board.h"

#include <cerrno>
#include <fstream>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "Failure.h"
#include "StepParser.h"

namespace replay {

namespace {

enum class LineResult { kLine, kEnd, kTooLong };

// Reads up to the next line's end into `line`, and never more than a line may hold: a device or a
// pipe may well give bytes for ever.
LineResult ReadLine(std::streambuf& bytes, std::string& line) {
  using Traits = std::streambuf::traits_type;
  line.clear();
  for (;;) {
    const Traits::int_type byte = bytes.sbumpc();
    if (Traits::eq_int_type(byte, Traits::eof())) {
      return line.empty() ? LineResult::kEnd : LineResult::kLine;
    }
    if (byte == '\n') {
      return LineResult::kLine;
    }
    if (line.size() == kMaxLineBytes) {
      return LineResult::kTooLong;
    }
    line.push_back(Traits::to_char_type(byte));
  }
}

bool IsBlank(std::string_view line) {
  return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

std::size_t Step::PointCount() const {
  return std::visit(
      [](const auto& gesture) -> std::size_t {
        if constexpr (std::is_same_v<decltype(gesture), const Clearing&>) {
          return 0;
        } else {
          return gesture.points.size();
        }
      },
      action);
}

std::size_t Board::PointCount() const {
  std::size_t count = 0;
  for (const Step& step : steps) {
    count += step.PointCount();
  }
  return count;
}

Board ReadBoard(const std::string& path) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw Failure(path + ": cannot be opened: " + std::generic_category().message(errno));
  }
  try {
    return ReadBoard(file, path);
  } catch (const std::ios_base::failure& error) {
    throw Failure(path + ": cannot be read: " + error.code().message());
  }
}

Board ReadBoard(std::istream& stream, const std::string& name) {
  Board board{name, {}};
  std::size_t pointCount = 0;
  std::string line;
  for (std::size_t number = 1;; ++number) {
    const LineResult result = ReadLine(*stream.rdbuf(), line);
    if (result == LineResult::kEnd) {
      return board;
    }
    try {
      if (result == LineResult::kTooLong) {
        throw Failure("the line is longer than " + std::to_string(kMaxLineBytes) + " bytes");
      }
      if (IsBlank(line)) {
        continue;
      }
      Step step = ParseStep(line);
      step.line = number;
      pointCount += step.PointCount();
      if (pointCount > kMaxBoardPoints) {
        throw Failure("the board has more than " + std::to_string(kMaxBoardPoints) + " points");
      }
      board.steps.push_back(std::move(step));
    } catch (const Failure& reason) {
      throw Failure(name + ":" + std::to_string(number) + ": " + reason.what());
    }
  }
}

}  // namespace replay
