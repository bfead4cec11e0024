#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "common/Input.h"
#include "replay/Board.h"

namespace replay {

namespace {

using apps::Failure;
using Json = nlohmann::json;

// Far more than any page; after scaling it still fits a pixel coordinate.
constexpr double kMaxCoordinate = 1'000'000.0;
constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

// Messages show keys as the file does.
std::string Quoted(const char* key) {
  return std::string("\"") + key + "\"";
}

[[noreturn]] void Refuse(const char* key, const std::string& wanted) {
  throw Failure(Quoted(key) + " must be " + wanted);
}

// Throws Failure unless the object has all keys of `required` and no others than `optional`: a
// misspelt key would become a step that looks wrong. `rule` is the message for another key.
void CheckKeys(const Json& object, std::initializer_list<const char*> required,
               std::initializer_list<const char*> optional, const std::string& rule) {
  for (const char* key : required) {
    if (!object.contains(key)) {
      throw Failure(Quoted(key) + " is missing");
    }
  }
  const auto found = std::count_if(optional.begin(), optional.end(),
                                   [&](const char* key) { return object.contains(key); });
  if (object.size() != required.size() + static_cast<std::size_t>(found)) {
    throw Failure(rule);
  }
}

std::string ParseText(const Json& object, const char* key, const char* wanted,
                      bool (*isGood)(const std::string&)) {
  const Json& value = object[key];
  if (!value.is_string() || !isGood(value.get_ref<const std::string&>())) {
    Refuse(key, wanted);
  }
  return value.get<std::string>();
}

double ParseNumber(const Json& object, const char* key, const char* wanted,
                   bool (*isGood)(double)) {
  const Json& value = object[key];
  if (!value.is_number() || !isGood(value.get<double>())) {
    Refuse(key, wanted);
  }
  return value.get<double>();
}

// Returns what the word under `key` stands for.
template <class Value>
Value ParseWord(const Json& object, const char* key, const char* wanted,
                std::initializer_list<std::pair<const char*, Value>> words) {
  for (const auto& [word, value] : words) {
    if (object[key] == word) {
      return value;
    }
  }
  Refuse(key, wanted);
}

BoardPoint ParsePoint(const Json& value, std::size_t number) {
  if (!value.is_array() || value.size() != 2 || !value[0].is_number() || !value[1].is_number()) {
    throw Failure("point " + std::to_string(number) + " must be [x, y], two numbers");
  }
  const BoardPoint point = {value[0].get<double>(), value[1].get<double>()};
  if (!(std::abs(point.x) <= kMaxCoordinate && std::abs(point.y) <= kMaxCoordinate)) {
    throw Failure("point " + std::to_string(number) + " is more than 1000000 pixels away");
  }
  return point;
}

std::vector<BoardPoint> ParsePoints(const Json& object, const char* key, std::size_t fewest,
                                    std::size_t most) {
  const Json& list = object[key];
  if (!list.is_array()) {
    Refuse(key, "a list of points");
  }
  if (list.size() < fewest || list.size() > most) {
    throw Failure(Quoted(key) + " needs " + std::to_string(fewest) +
                  (most == fewest ? " points" : " or more points") + ", not " +
                  std::to_string(list.size()));
  }
  std::vector<BoardPoint> points;
  points.reserve(list.size());
  for (const Json& point : list) {
    points.push_back(ParsePoint(point, points.size() + 1));
  }
  return points;
}

// Parses points of which the first is where the pointer is pressed.
std::vector<BoardPoint> ParseWay(const Json& object, const char* key, std::size_t fewest,
                                 std::size_t most) {
  std::vector<BoardPoint> points = ParsePoints(object, key, fewest, most);
  const BoardPoint& press = points.front();
  if (!(press.x >= 0 && press.x <= kBoardWidth && press.y >= 0 && press.y <= kBoardHeight)) {
    throw Failure("the first point must lie on the page, 1920 x 1080");
  }
  return points;
}

// Returns an empty name when the object has none.
std::string ParseAuthor(const Json& object) {
  if (!object.contains("author")) {
    return {};
  }
  return ParseText(object, "author", "a name of 1 to 64 bytes without control characters",
                   [](const std::string& name) {
                     constexpr std::size_t kMaxBytes = 64;
                     return !name.empty() && name.size() <= kMaxBytes &&
                            std::none_of(name.begin(), name.end(), [](char byte) {
                              constexpr char kDelete = '\x7F';
                              return static_cast<unsigned char>(byte) < ' ' || byte == kDelete;
                            });
                   });
}

std::uint32_t ParseColor(const Json& object) {
  const std::string text = ParseText(
      object, "color", "#AARRGGBB, eight hexadecimal digits", [](const std::string& color) {
        constexpr std::size_t kLength = 9;
        return color.size() == kLength && color.front() == '#' &&
               color.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
      });
  return static_cast<std::uint32_t>(std::stoul(text.substr(1), nullptr, 16));
}

PictureSource ParsePicture(const Json& object, const char* key) {
  return {ParseText(object, key, "the name of a picture file",
                    [](const std::string& file) {
                      return !file.empty() && file.find('\0') == std::string::npos;
                    }),
          nullptr};
}

Action ParseMark(const Json& object) {
  CheckKeys(object, {"kind", "color", "width", "points"}, {"author"},
            "a mark has the keys kind, color, width, points and perhaps author, and no others");
  Mark mark;
  mark.kind = ParseWord<MarkKind>(object, "kind", "path, line, rectangle or ellipse",
                                  {{"path", MarkKind::kPath},
                                   {"line", MarkKind::kLine},
                                   {"rectangle", MarkKind::kRectangle},
                                   {"ellipse", MarkKind::kEllipse}});
  mark.color = ParseColor(object);
  mark.width = static_cast<int>(ParseNumber(
      object, "width", "a whole number from 1 to 30",
      [](double width) { return width >= 1 && width <= 30 && width == std::floor(width); }));
  const bool isPath = mark.kind == MarkKind::kPath;
  mark.points = ParseWay(object, "points", isPath ? 1 : 2, isPath ? kAnyNumber : 2);
  mark.author = ParseAuthor(object);
  return mark;
}

Action ParsePlacement(const Json& object) {
  CheckKeys(object, {"picture"}, {"points", "author"},
            "a picture may have the keys points and author, and no others");
  Placement placement;
  placement.author = ParseAuthor(object);
  placement.source = ParsePicture(object, "picture");
  if (object.contains("points")) {
    placement.corners = ParsePoints(object, "points", 2, 2);
  }
  return placement;
}

Action ParseClearing(const Json& object) {
  return ParseWord<Clearing>(object, "clear", "mine or all",
                             {{"mine", Clearing::kMine}, {"all", Clearing::kAll}});
}

Action ParsePause(const Json& object) {
  return Pause{ParseNumber(object, "pause", "a number of seconds above 0, 60 at most",
                           [](double seconds) { return seconds > 0 && seconds <= 60; })};
}

// The steps of one key.
struct Gesture {
  const char* key;
  Action (*parse)(const Json& object);
};
constexpr Gesture kGestures[] = {
    {"erase", [](const Json& o) -> Action { return Erasure{ParseWay(o, "erase", 1, kAnyNumber)}; }},
    {"select", [](const Json& o) -> Action { return Selection{ParseWay(o, "select", 2, 2)}; }},
    {"move", [](const Json& o) -> Action { return Drag{ParseWay(o, "move", 2, kAnyNumber)}; }},
    {"clear", ParseClearing},
    {"background",
     [](const Json& o) -> Action { return Background{ParsePicture(o, "background")}; }},
    {"pause", ParsePause},
};

Action ParseAction(const Json& object) {
  for (const Gesture& gesture : kGestures) {
    if (object.contains(gesture.key)) {
      CheckKeys(object, {gesture.key}, {},
                Quoted(gesture.key) + " stands alone, without other keys");
      return gesture.parse(object);
    }
  }
  return object.contains("picture") ? ParsePlacement(object) : ParseMark(object);
}

Json ParseJson(std::string_view line) {
  try {
    return Json::parse(line);
  } catch (const Json::parse_error& error) {
    throw Failure("not valid JSON, see byte " + std::to_string(error.byte) + " of the line");
  } catch (const Json::out_of_range&) {
    throw Failure("a number is out of every range");
  }
}

}  // namespace

Step ParseStep(std::string_view line) {
  const Json object = ParseJson(line);
  if (!object.is_object()) {
    throw Failure("a line is one JSON object");
  }
  return {0, ParseAction(object)};
}

}  // namespace replay
