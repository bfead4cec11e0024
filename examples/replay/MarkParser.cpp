#include "MarkParser.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "AuthorParser.h"
#include "Failure.h"
#include "PointParser.h"

namespace replay {

namespace {

using Json = nlohmann::json;

constexpr std::size_t kKeyCount = 4;
constexpr std::array<const char*, kKeyCount> kKeys = {"kind", "color", "width", "points"};

// The four keys, all of them, and none besides but an author: a misspelt key would otherwise be a
// mark that looks wrong.
void CheckKeys(const Json& object) {
  for (const char* key : kKeys) {
    if (!object.contains(key)) {
      throw Failure("\"" + std::string(key) + "\" is missing");
    }
  }
  if (object.size() != kKeyCount + (object.contains("author") ? 1 : 0)) {
    throw Failure(
        "a mark has the keys kind, color, width, points and perhaps author, and no others");
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

void CheckPoints(const Mark& mark) {
  if (mark.kind == MarkKind::kPath && mark.points.empty()) {
    throw Failure("a path has at least one point");
  }
  if (mark.kind != MarkKind::kPath && mark.points.size() != 2) {
    throw Failure("every mark but a path has two points, not " +
                  std::to_string(mark.points.size()));
  }
  CheckPress(mark.points);
}

}  // namespace

Mark ParseMark(const nlohmann::json& object) {
  CheckKeys(object);
  Mark mark;
  mark.kind = ParseKind(object["kind"]);
  mark.color = ParseColor(object["color"]);
  mark.width = ParseWidth(object["width"]);
  mark.points = ParsePoints(object, "points");
  mark.author = ParseAuthor(object);
  CheckPoints(mark);
  return mark;
}

}  // namespace replay
