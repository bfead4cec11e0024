#include "Hand.h"

namespace whiteboard {

Hand::Hand(Participant& participant, Meeting& meeting)
    : participant(participant), meeting(meeting) {}

void Hand::Press(const Style& style, POINT point, bool band) {
  if (isDown) {
    return;
  }
  tool = style.tool;
  last = point;
  if (tool == Tool::kErase) {
    isDown = true;
    Erase(point);
  } else if (tool == Tool::kSelect) {
    isDown = participant.StartSelecting(point, band);
  } else {
    participant.TakePen(style);
    isDown = participant.Press(point);
  }
}

void Hand::Move(POINT point) {
  if (!isDown) {
    return;
  }
  if (tool == Tool::kErase) {
    Erase(point);
  } else if (tool == Tool::kSelect) {
    participant.MoveSelecting(point);
  } else {
    participant.Move(point);
  }
  last = point;
}

void Hand::Release() {
  if (!isDown) {
    return;
  }
  isDown = false;
  if (tool == Tool::kSelect) {
    for (const Annotation* mark : participant.EndSelecting()) {
      meeting.Relay(*mark);
    }
  } else if (tool != Tool::kErase) {
    if (const Annotation* mark = participant.Release(last)) {
      meeting.Relay(*mark);
    }
  }
}

void Hand::Erase(POINT to) {
  meeting.Erase(participant.FindErased(last, to));
}

}  // namespace whiteboard
