#include "whiteboard/Hand.h"

namespace whiteboard {

Hand::Hand(Participant& participant, Meeting& meeting)
    : participant(participant), meeting(meeting) {
  participant.OnLeavingPage([this] { Release(); });
}

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
    isAhead = true;
  }
  last = point;
}

void Hand::Show() {
  const auto now = std::chrono::steady_clock::now();
  if (!isAhead || now - lastShown < kBetweenShows) {
    return;
  }
  isAhead = false;
  if (const Annotation* mark = participant.Drawing()) {
    meeting.Preview(*mark);
    lastShown = now;
  }
}

void Hand::Release() {
  if (!isDown) {
    return;
  }
  isDown = false;
  isAhead = false;
  if (tool == Tool::kSelect) {
    for (const Annotation* mark : participant.EndSelecting()) {
      meeting.Relay(*mark);
    }
  } else if (tool != Tool::kErase) {
    const Annotation* shown = participant.Drawing();
    const std::string id = shown != nullptr ? shown->GetAnnotationId() : std::string();
    if (const Annotation* mark = participant.Release(last)) {
      meeting.Relay(*mark);
    } else {
      meeting.Erase({id});
    }
  }
}

void Hand::Erase(POINT to) {
  meeting.Erase(participant.FindErased(last, to));
}

}  // namespace whiteboard
