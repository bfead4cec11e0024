#include "MarkParser.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "Failure.h"

namespace replay {

namespace {

using Json = nlohmann::json;

constexpr std::size_t kKeyCount = 4;
constexpr std::array<const char*, kKeyCount> kKeys = {"kind", "color", "width", "points"};

Json ParseJson(std::string_view line) {
  try {
    return Json::parse(line);
  } catch (const Json::parse_error& error) {
    throw Failure("not valid JSON, see byte " + std::to_string(error.byte) + " of the line");
  } catch (const Json::out_of_range&) {
    throw Failure("a number is out of every range");
  }
}

// The four keys, all of them and no other: a misspelt key would otherwise be a mark that looks
// wrong.
void CheckKeys(const Json& object) {
  for (const char* key : kKeys) {
    if (!object.contains(key)) {
      throw Failure("\"" + std::string(key) + "\" is missing");
    }
  }
  if (object.size() != kKeyCount) {
    throw Failure("a mark has the keys kind, color, width and points, and no others");
  }
}

MarkKind ParseKind(const Json& value) {
  if (value == "path") {
    return MarkKind::kPath;
  }
  if (value == "line") {
    return MarkKind::kLine;
  }
  if (value == "rectangle") {
    return MarkKind::kRectangle;
  }
  if (value == "ellipse") {
    return MarkKind::kEllipse;
  }
  throw Failure("\"kind\" must be path, line, rectangle or ellipse");
}

std::uint32_t ParseColor(const Json& value) {
  constexpr std::size_t kTextLength = 9;
  if (value.is_string()) {
    const auto& text = value.get_ref<const std::string&>();
    const char* end = text.data() + text.size();
    std::uint32_t color = 0;
    if (text.size() == kTextLength && text.front() == '#') {
      const auto [last, error] = std::from_chars(text.data() + 1, end, color, 16);
      if (error == std::errc() && last == end) {
        return color;
      }
    }
  }
  throw Failure("\"color\" must be #AARRGGBB, eight hexadecimal digits");
}

int ParseWidth(const Json& value) {
  constexpr double kMinWidth = 1;
  constexpr double kMaxWidth = 30;
  if (value.is_number()) {
    const double width = value.get<double>();
    if (width >= kMinWidth && width <= kMaxWidth && width == std::floor(width)) {
      return static_cast<int>(width);
    }
  }
  throw Failure("\"width\" must be a whole number from 1 to 30");
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

std::vector<BoardPoint> ParsePoints(const Json& value) {
  if (!value.is_array()) {
    throw Failure("\"points\" must be a list of points");
  }
  std::vector<BoardPoint> points;
  points.reserve(value.size());
  for (const Json& point : value) {
    points.push_back(ParsePoint(point, points.size() + 1));
  }
  return points;
}

void CheckPoints(const Mark& mark) {
  if (mark.kind == MarkKind::kPath && mark.points.empty()) {
    throw Failure("a path has at least one point");
  }
  if (mark.kind != MarkKind::kPath && mark.points.size() != 2) {
    throw Failure("every mark but a path has two points, not " +
                  std::to_string(mark.points.size()));
  }
  // A mark starts with a press of the pointer, and that is always on the page.
  const BoardPoint& first = mark.points.front();
  if (!(first.x >= 0 && first.x <= kBoardWidth && first.y >= 0 && first.y <= kBoardHeight)) {
    throw Failure("the first point must lie on the page, 1920 x 1080");
  }
}

}  // namespace

Mark ParseMark(std::string_view line) {
  const Json json = ParseJson(line);
  if (!json.is_object()) {
    throw Failure("a mark is a JSON object");
  }
  CheckKeys(json);
  Mark mark;
  mark.kind = ParseKind(json["kind"]);
  mark.color = ParseColor(json["color"]);
  mark.width = ParseWidth(json["width"]);
  mark.points = ParsePoints(json["points"]);
  CheckPoints(mark);
  return mark;
}

}  // namespace replay
