// Help.h - what the whiteboard says about itself.
#pragma once

#include <string>
#include <vector>

namespace whiteboard {

struct HelpLine {
  std::string keys;
  std::string meaning;
};

// Every key, in the order in which a person learns them.
const std::vector<HelpLine>& HelpLines();

// The same as lines of text, for a terminal.
std::string HelpText();

}  // namespace whiteboard
