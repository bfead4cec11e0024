// Prompt.h - a question answered with a line of text.
#pragma once

#include <string>

#include "whiteboard/Keyboard.h"
#include "whiteboard/Tools.h"

namespace whiteboard {

struct Prompt {
  Command command = Command::kNone;  // what the answer is for; kNone: no question
  std::string label;
  std::string answer;  // UTF-8
};

enum class Answer { kGoesOn, kGiven, kDropped };

// Applies a key to the answer: Return accepts it, Escape drops it, Backspace removes a character,
// with Control all of them.
Answer TypeInto(Prompt& prompt, const Key& key);

}  // namespace whiteboard
