#include "replay/Board.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

#include "common/Input.h"

namespace replay {

namespace {

using apps::Failure;

enum class LineResult { kLine, kEnd, kTooLong };

// Reads a line into `line`, and stops at its limit: a device or a pipe may never end.
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

// Returns the picture of the step, or null.
PictureSource* SourceOf(Step& step) {
  if (auto* placement = std::get_if<Placement>(&step.action)) {
    return &placement->source;
  }
  if (auto* background = std::get_if<Background>(&step.action)) {
    return &background->source;
  }
  return nullptr;
}

// The picture files of one board, each read once and checked to be a picture.
class PictureShelf {
 public:
  PictureBytes Get(const std::string& path) {
    PictureBytes& kept = pictures[path];
    if (kept == nullptr) {
      std::string bytes = apps::ReadFileBytes(path);
      apps::DecodeFileBytes(bytes, path);
      byteCount += bytes.size();
      if (byteCount > kMaxBoardPictureBytes) {
        throw Failure("the board's pictures have more than " +
                      std::to_string(kMaxBoardPictureBytes) + " bytes");
      }
      kept = std::make_shared<const std::string>(std::move(bytes));
    }
    return kept;
  }

 private:
  std::map<std::string, PictureBytes> pictures;
  std::size_t byteCount = 0;
};

// Returns an empty name for a step of the drawer.
std::string AuthorOf(const Step& step) {
  return std::visit(
      [](const auto& action) {
        if constexpr (requires { action.author; }) {
          return action.author;
        } else {
          return std::string();
        }
      },
      step.action);
}

}  // namespace

std::size_t Step::PointCount() const {
  return std::visit(
      [](const auto& gesture) -> std::size_t {
        if constexpr (requires { gesture.points; }) {
          return gesture.points.size();
        } else {
          return 0;
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
  Board board{name, {}, {}};
  PictureShelf shelf;
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
      if (PictureSource* source = SourceOf(step)) {
        source->file = (std::filesystem::path(name).parent_path() / source->file).string();
        source->bytes = shelf.Get(source->file);
        board.pictureFiles.push_back(source->file);
      }
      board.steps.push_back(std::move(step));
    } catch (const Failure& reason) {
      throw Failure(name + ":" + std::to_string(number) + ": " + reason.what());
    }
  }
}

std::vector<std::string> AuthorsOf(const std::vector<Board>& boards) {
  std::vector<std::string> authors;
  for (const Board& board : boards) {
    for (const Step& step : board.steps) {
      const std::string author = AuthorOf(step);
      if (!author.empty() && std::find(authors.begin(), authors.end(), author) == authors.end()) {
        authors.push_back(author);
      }
    }
  }
  if (authors.size() > kMaxAuthors) {
    throw Failure("the boards have more than " + std::to_string(kMaxAuthors) + " authors");
  }
  return authors;
}

}  // namespace replay
