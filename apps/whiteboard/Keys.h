// Keys.h - what each key asks for, and the list of them that help shows.
#pragma once

#include <string>
#include <vector>

#include "whiteboard/Keyboard.h"
#include "whiteboard/Tools.h"

namespace whiteboard {

// Returns what the key asks for; Command::kNone for any other key.
Action ActionOf(const Key& key);

struct HelpLine {
  std::string keys;
  std::string meaning;
};

// Every key, in the order in which a person learns them.
const std::vector<HelpLine>& HelpLines();

// The same as lines of text, for a terminal.
std::string HelpText();

}  // namespace whiteboard
