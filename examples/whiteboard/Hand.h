// Hand.h - one participant's pointer on the page.
#pragma once

#include <chrono>

#include "Meeting.h"
#include "Participant.h"
#include "Tools.h"

namespace whiteboard {

// How long others wait at least for the next piece of a drawing: a frame of the engine.
inline constexpr std::chrono::milliseconds kBetweenShows(40);

// Turns a press, moves and a release into the participant's gesture, and hands what comes of it to
// the meeting. Every move counts. Owns nothing; one thread's own.
class Hand {
 public:
  Hand(Participant& participant, Meeting& meeting);

  bool IsDown() const { return isDown; }
  // Starts what the style's tool does; does nothing while a gesture is under way. With `band`,
  // selecting drags out a frame wherever it starts.
  void Press(const Style& style, POINT point, bool band);
  void Move(POINT point);
  // Lets the others see how far a drawing has got, unless they just did.
  void Show();
  // Whether there is something that the next Show may let them see.
  bool IsAhead() const { return isAhead; }
  // Ends the gesture where it got to.
  void Release();

 private:
  void Erase(POINT to);

  Participant& participant;
  Meeting& meeting;
  Tool tool = Tool::kPath;
  POINT last = {0, 0};
  bool isDown = false;
  bool isAhead = false;  // of what the others have seen
  std::chrono::steady_clock::time_point lastShown;
};

}  // namespace whiteboard
