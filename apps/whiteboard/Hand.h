// Hand.h - one participant's pointer on the page.
#pragma once

#include <chrono>

#include "whiteboard/Meeting.h"
#include "whiteboard/Participant.h"
#include "whiteboard/Tools.h"

namespace whiteboard {

// The shortest time between two pieces of a drawing that are sent: one frame.
inline constexpr std::chrono::milliseconds kBetweenShows(40);

// Turns a press, moves and a release into the participant's gesture, and tells the meeting the
// result. Every move counts. Owns nothing; one thread.
class Hand {
 public:
  // From now on the participant ends this hand's gesture before it leaves a page. Both must outlive
  // all calls.
  Hand(Participant& participant, Meeting& meeting);
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  bool IsDown() const { return isDown; }
  // Starts what the style's tool does. Does nothing during a gesture. With `band`, the select tool
  // drags out a frame wherever it starts.
  void Press(const Style& style, POINT point, bool band);
  void Move(POINT point);
  // Sends what has been drawn so far to the others, unless something was sent within kBetweenShows.
  void Show();
  // Returns whether Show has something to send.
  bool IsAhead() const { return isAhead; }
  // Ends the gesture at the last point.
  void Release();

 private:
  void Erase(POINT to);

  Participant& participant;
  Meeting& meeting;
  Tool tool = Tool::kPath;
  POINT last = {0, 0};
  bool isDown = false;
  bool isAhead = false;  // has drawn more than the others have seen
  std::chrono::steady_clock::time_point lastShown;
};

}  // namespace whiteboard
