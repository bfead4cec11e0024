// StepParser.h - one line of a board file becomes a step.
#pragma once

#include <string_view>

#include "Board.h"

namespace replay {

// Reads the JSON object of one line; the step's line number and the bytes of its picture are left
// to the caller. Throws Failure with the reason, without file and line, for anything that is not
// exactly a step.
Step ParseStep(std::string_view line);

}  // namespace replay
