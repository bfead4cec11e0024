// Selecting and moving on a plain page, and the traces of painting.
#include "model/PlainPage.h"

int PlainPage::StartSelecting(const std::string& userId, const std::string& userSubId, POINT at) {
  PlainMarkPtr hit;
  for (const PlainMarkPtr& mark : TopmostFirst(userId, userSubId)) {
    if (mark->HasTwoPoints() && IsWithinBox(at, mark->frame)) {
      hit = mark;
      break;
    }
  }
  if (hit != nullptr && selected.contains(hit->id)) {
    isMoving = true;
    for (auto& [key, mark] : selected) {
      mark->origin = At(at);
    }
    return 1;
  }
  isMoving = false;
  selected.clear();
  if (hit != nullptr) {
    selected[hit->id] = hit;
  }
  band.userId = userId;
  band.type = AnnotationTypeDrawing;
  band.subType = AnnotationSubTypeRectangle;
  band.points.clear();
  band.AddPoint(At(at));
  band.erased = 0;
  return 1;
}

int PlainPage::MoveSelecting(POINT at) {
  if (isMoving) {
    for (auto& [key, mark] : selected) {
      if (!pending.contains(key)) {
        const auto backup = std::make_shared<PlainMark>();
        backup->TakeOver(*mark);
        backup->erased = 1;
        backup->isOwned = true;
        pending[key] = backup;
      }
    }
    for (auto& [key, mark] : selected) {
      mark->Move(At(at));
    }
    return 1;
  }
  if (band.erased != 0) {
    return 0;
  }
  band.AddPoint(At(at));
  const AnnotationPoint anchor = band.points.at(0)[0];
  selected.clear();
  SelectWithin({anchor.x, anchor.y, at.x, at.y});
  return 0;
}

// Of two authors' marks with one id the later author's stays.
void PlainPage::SelectWithin(const RECT& rect) {
  for (auto& [author, authored] : confirmed) {
    if (!band.userId.empty() && author != band.userId) {
      continue;
    }
    for (auto& [key, mark] : authored) {
      if (mark->erased == 0 && mark->object->IsInSelectRect(rect) != 0) {
        selected[key] = mark;
      }
    }
  }
}

int PlainPage::EndSelecting() {
  const bool wasMoving = isMoving;
  isMoving = false;
  band.erased = 1;
  return wasMoving ? 1 : 0;
}

bool PlainPage::IsTipShown(const PlainMark& mark, std::uint64_t tick) {
  if (!tips.contains(mark.userId)) {
    tips[mark.userId] = {mark.id, tick};
    return true;
  }
  const Tip tip = tips.at(mark.userId);
  if (tip.id == mark.id && tick - tip.shown < 2000) {
    return true;
  }
  if (tick - tip.shown < 5000) {
    return false;
  }
  tips.erase(mark.userId);
  if (tip.id == mark.id) {
    return false;
  }
  tips[mark.userId] = {mark.id, tick};
  return true;
}

void PlainPage::Paint(std::uint64_t tick) {
  if (background != nullptr && background->erased == 0) {
    background->Draw(Size());
  }
  for (const Place& place : places) {
    const PlainMarkPtr mark = Confirmed(place.userId, place.id);
    if (mark == nullptr) {
      continue;
    }
    if (mark->erased == 0) {
      mark->Draw(Size());
      if (selected.contains(mark->id)) {
        mark->UpdateFrame(Size());
      }
    }
    if (!mark->nickname.empty() && mark->tipVisible != 0) {
      mark->tipVisible = IsTipShown(*mark, tick) ? 1 : 0;
    }
  }
  for (auto& [key, mark] : pending) {
    if (mark->erased != 0) {
      continue;
    }
    if (mark->tempStartTick != 0 && tick - mark->tempStartTick >= 8000) {
      mark->erased = 1;
    } else {
      mark->Draw(Size());
    }
  }
  if (band.erased == 0) {
    band.Draw(Size());
    band.UpdateFrame(Size());
  }
}
