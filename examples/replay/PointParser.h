// PointParser.h - the lists of points in a board file.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "Board.h"

namespace replay {

// How far from the origin a point may lie, in pixels: far more than any page, and scaled to any
// page it still is a pixel number.
inline constexpr double kMaxCoordinate = 1'000'000.0;

// Reads the list under `key`, which the object has. Throws Failure for anything else than points.
std::vector<BoardPoint> ParsePoints(const nlohmann::json& object, const char* key);

// Throws Failure unless the first of the points, which there must be, is one where a pointer can
// be pressed.
void CheckPress(const std::vector<BoardPoint>& points);

}  // namespace replay
