// Prompt.h - a question that is answered with a line of text.
#pragma once

#include <string>

#include "Keyboard.h"
#include "Tools.h"

namespace whiteboard {

struct Prompt {
  Command command = Command::kNone;  // what the answer is for; none: nothing is asked
  std::string label;
  std::string answer;  // UTF-8
};

enum class Answer { kGoesOn, kGiven, kDropped };

// Types a key into the answer: Return gives it, Escape drops it, Backspace takes a character away,
// with Control everything.
Answer TypeInto(Prompt& prompt, const Key& key);

}  // namespace whiteboard
