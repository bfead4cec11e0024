#include "StepParser.h"

#include <nlohmann/json.hpp>
#include <string>

#include "Failure.h"
#include "MarkParser.h"
#include "PictureParser.h"
#include "PointParser.h"

namespace replay {

namespace {

using Json = nlohmann::json;

Json ParseJson(std::string_view line) {
  try {
    return Json::parse(line);
  } catch (const Json::parse_error& error) {
    throw Failure("not valid JSON, see byte " + std::to_string(error.byte) + " of the line");
  } catch (const Json::out_of_range&) {
    throw Failure("a number is out of every range");
  }
}

// Whether the line is the gesture of that name, which then is its one key.
bool IsGesture(const Json& object, const char* name) {
  if (!object.contains(name)) {
    return false;
  }
  if (object.size() != 1) {
    throw Failure("\"" + std::string(name) + "\" stands alone, without other keys");
  }
  return true;
}

std::vector<BoardPoint> ParseWay(const Json& object, const char* name, std::size_t minPoints) {
  std::vector<BoardPoint> points = ParsePoints(object, name);
  if (points.size() < minPoints) {
    throw Failure("\"" + std::string(name) + "\" needs " + std::to_string(minPoints) +
                  (minPoints == 1 ? " point or more" : " points or more"));
  }
  CheckPress(points);
  return points;
}

Selection ParseSelection(const Json& object) {
  Selection selection = {ParseWay(object, "select", 2)};
  if (selection.points.size() != 2) {
    throw Failure("\"select\" has two points, not " + std::to_string(selection.points.size()));
  }
  return selection;
}

Clearing ParseClearing(const Json& value) {
  if (value == "mine") {
    return Clearing::kMine;
  }
  if (value == "all") {
    return Clearing::kAll;
  }
  throw Failure("\"clear\" must be mine or all");
}

Pause ParsePause(const Json& value) {
  constexpr double kMaxSeconds = 60;
  if (value.is_number()) {
    const double seconds = value.get<double>();
    if (seconds > 0 && seconds <= kMaxSeconds) {
      return {seconds};
    }
  }
  throw Failure("\"pause\" must be a number of seconds above 0, 60 at most");
}

}  // namespace

Step ParseStep(std::string_view line) {
  const Json json = ParseJson(line);
  if (!json.is_object()) {
    throw Failure("a line is one JSON object");
  }
  Step step;
  if (IsGesture(json, "erase")) {
    step.action = Erasure{ParseWay(json, "erase", 1)};
  } else if (IsGesture(json, "select")) {
    step.action = ParseSelection(json);
  } else if (IsGesture(json, "move")) {
    step.action = Drag{ParseWay(json, "move", 2)};
  } else if (IsGesture(json, "clear")) {
    step.action = ParseClearing(json["clear"]);
  } else if (IsGesture(json, "background")) {
    step.action = ParseBackground(json);
  } else if (IsGesture(json, "pause")) {
    step.action = ParsePause(json["pause"]);
  } else if (json.contains("picture")) {
    step.action = ParsePlacement(json);
  } else {
    step.action = ParseMark(json);
  }
  return step;
}

}  // namespace replay
