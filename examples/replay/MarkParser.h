// MarkParser.h - the JSON object of a mark.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "Board.h"

namespace replay {

// Reads a mark. Throws Failure with the reason for an object that is not exactly a mark.
Mark ParseMark(const nlohmann::json& object);

}  // namespace replay
