#include "whiteboard/Prompt.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace whiteboard {

namespace {

void TakeCharacterAway(std::string& text) {
  const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
  while (!text.empty() && isInside(text.back())) {
    text.pop_back();
  }
  if (!text.empty()) {
    text.pop_back();
  }
}

}  // namespace

Answer TypeInto(Prompt& prompt, const Key& key) {
  switch (key.symbol) {
    case XKB_KEY_Return:
    case XKB_KEY_KP_Enter:
      return Answer::kGiven;
    case XKB_KEY_Escape:
      return Answer::kDropped;
    case XKB_KEY_BackSpace:
      if (key.control) {
        prompt.answer.clear();
      } else {
        TakeCharacterAway(prompt.answer);
      }
      return Answer::kGoesOn;
    default:
      break;
  }
  // No control characters.
  if (!key.text.empty() && static_cast<unsigned char>(key.text.front()) >= ' ' &&
      key.text != "\x7F") {
    prompt.answer += key.text;
  }
  return Answer::kGoesOn;
}

}  // namespace whiteboard
