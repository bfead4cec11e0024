// Shortcuts.h - which key asks for what.
#pragma once

#include "Keyboard.h"
#include "Tools.h"

namespace whiteboard {

// What the key asks for; Command::kNone for any other key.
Action ActionOf(const Key& key);

}  // namespace whiteboard
