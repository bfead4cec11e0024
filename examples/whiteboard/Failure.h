// Failure.h - why the whiteboard ends early or cannot do what it was asked.
#pragma once

#include <replay/Failure.h>

namespace whiteboard {

using replay::Failure;

}  // namespace whiteboard
