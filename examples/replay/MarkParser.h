// MarkParser.h - one line of a board file becomes a mark.
#pragma once

#include <string_view>

#include "Board.h"

namespace replay {

// How far from the origin a point may lie, in pixels: far more than any page, and scaled to any
// page it still is a pixel number.
inline constexpr double kMaxCoordinate = 1'000'000.0;

// Reads the JSON object of one line. Throws Failure with the reason, without file and line, for
// anything that is not exactly a mark.
Mark ParseMark(std::string_view line);

}  // namespace replay
