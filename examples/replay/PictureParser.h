// PictureParser.h - the JSON objects that bring pictures.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "Board.h"

namespace replay {

// Read an object that has the key "picture" or "background"; the file is as the line names it and
// its bytes are left to the caller. Throw Failure with the reason for any other object.
Placement ParsePlacement(const nlohmann::json& object);
Background ParseBackground(const nlohmann::json& object);

}  // namespace replay
