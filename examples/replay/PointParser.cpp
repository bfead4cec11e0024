#include "PointParser.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "Failure.h"

namespace replay {

namespace {

using Json = nlohmann::json;

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

}  // namespace

std::vector<BoardPoint> ParsePoints(const Json& object, const char* key) {
  const Json& list = object[key];
  if (!list.is_array()) {
    throw Failure("\"" + std::string(key) + "\" must be a list of points");
  }
  std::vector<BoardPoint> points;
  points.reserve(list.size());
  for (const Json& point : list) {
    points.push_back(ParsePoint(point, points.size() + 1));
  }
  return points;
}

void CheckPress(const std::vector<BoardPoint>& points) {
  const BoardPoint& first = points.front();
  if (!(first.x >= 0 && first.x <= kBoardWidth && first.y >= 0 && first.y <= kBoardHeight)) {
    throw Failure("the first point must lie on the page, 1920 x 1080");
  }
}

}  // namespace replay
