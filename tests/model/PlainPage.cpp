#include "model/PlainPage.h"

#include <algorithm>
#include <utility>

namespace {

bool IsEmptyView(const RECT& view) {
  return std::int64_t{view.right} - view.left < 1 || std::int64_t{view.bottom} - view.top < 1;
}

// Of an author and a sub-author; an empty id stands for all.
bool IsMeant(const PlainPage::Id& userId, const PlainPage::Id& userSubId,
             const PlainPage::Id& author, const PlainPage::Id& subAuthor) {
  return userId.empty() || (author == userId && (userSubId.empty() || subAuthor == userSubId));
}

}  // namespace

int PlainPage::UpdatePage(AnnotationPageInfo info, bool resize) {
  now.userValue1 = info.userValue1;
  now.userValue2 = info.userValue2;
  now.viewRect = info.viewRect;
  if (IsEmptyView(initial.viewRect)) {
    initial.viewRect = info.viewRect;
  }
  const bool isSame = info.width == now.width && info.height == now.height;
  if (resize && (info.width < 1 || info.height < 1 || isSame)) {
    return 0;
  }
  // Also when the surface stays as it was, for want of memory.
  now.width = resize ? info.width : now.width;
  now.height = resize ? info.height : now.height;
  return 1;
}

void PlainPage::AddLocal(const PlainMarkPtr& mark) {
  mark->annotationId = kNewId;
  mark->isOwned = true;
  pending[kNewId] = mark;
  drawing = mark;
  selected.clear();
}

bool PlainPage::AddRemote(const PlainMarkPtr& given) {
  const Id key = given->annotationId;
  const Place place = {given->order, given->userId, given->userSubId, key};
  const auto number = static_cast<unsigned>(given->subModelIndex);
  const PlainMark::PointList received = ValueAt(given->points, 0);
  PlainMarkPtr& known = confirmed[given->userId][key];
  const bool isPagesOwn = known == given || GetLocalAnnotation(key) == given;
  const bool hasPlace = std::any_of(places.begin(), places.end(), [&](const Place& other) {
    return other.userId == given->userId && other.id == key;
  });
  if (!hasPlace && (number == 0 || (isPagesOwn && known == nullptr))) {
    places.insert(std::find_if(places.begin(), places.end(),
                               [&](const Place& other) { return other.order > place.order; }),
                  place);
  }
  if (pending.contains(key)) {
    if (known == nullptr) {
      known = pending.at(key);
    } else if (drawing == pending.at(key)) {
      drawing = nullptr;
    }
    pending.erase(key);
  }
  const bool isKept = known == nullptr && !given->isOwned;
  if (known == nullptr) {
    known = isKept ? given : std::make_shared<PlainMark>(*given);
    known->object = isKept ? given->object : nullptr;
    known->isOwned = true;
    known->nickname.resize(std::min(known->nickname.size(), std::size_t{1024}));
    if (isKept && given->subModelIndex >= 1) {
      known->Renumber(number);
    }
  } else if (!isPagesOwn) {
    known->points[number] = received;
  }
  known->SetRectEx(Size());
  return isKept;
}

int PlainPage::CancelAnnotation(const Id& key) {
  const PlainMarkPtr backup = GetLocalAnnotation(key);
  if (backup == nullptr) {
    return 0;
  }
  for (auto& [author, authored] : confirmed) {
    if (authored.contains(key)) {
      authored.at(key)->TakeOver(*backup);
      authored.at(key)->erased = 0;
      break;
    }
  }
  pending.erase(key);
  drawing = drawing == backup ? nullptr : drawing;
  return 1;
}

std::vector<PlainMarkPtr> PlainPage::TopmostFirst(const Id& userId, const Id& userSubId) const {
  std::vector<PlainMarkPtr> marks;
  for (auto place = places.rbegin(); place != places.rend(); ++place) {
    const PlainMarkPtr mark = GetAnnotation(place->userId, place->id);
    if (mark != nullptr && mark->erased == 0 &&
        IsMeant(userId, userSubId, place->userId, place->userSubId)) {
      marks.push_back(mark);
    }
  }
  return marks;
}

PlainPage::Ids PlainPage::EraseAnnotations(const Id& userId, const Id& userSubId,
                                           std::vector<POINT> path) {
  path.resize(std::min(path.size(), std::size_t{2}));
  Ids ids;
  if (Holds(path.front()) || Holds(path.back())) {
    selected.clear();
    for (const PlainMarkPtr& mark : TopmostFirst(userId, userSubId)) {
      if (mark->IsTouched(path)) {
        ids.push_back(mark->annotationId);
      }
    }
  }
  if (path.size() == 1) {
    ids.resize(1);
  }
  return ids;
}

int PlainPage::EraseAnnotation(const Id& userId, const Id& key) {
  const PlainMarkPtr mark = GetAnnotation(userId, key);
  if (mark == nullptr || mark->erased != 0) {
    return 0;
  }
  mark->erased = 1;
  return 1;
}

int PlainPage::ClearAnnotations(const Id& userId, const Id& userSubId) {
  for (auto& [author, authored] : confirmed) {
    for (auto& [key, mark] : authored) {
      if (mark->erased == 0 && IsMeant(userId, userSubId, author, mark->userSubId)) {
        mark->erased = 1;
      }
    }
  }
  return userId.empty() || confirmed.contains(userId) ? 1 : 0;
}

int PlainPage::StartSelecting(const Id& userId, const Id& userSubId, POINT at) {
  if (!Holds(at)) {
    return 0;
  }
  const std::vector<PlainMarkPtr> marks = TopmostFirst(userId, userSubId);
  const auto hit = std::find_if(marks.begin(), marks.end(), [&](const PlainMarkPtr& mark) {
    return mark->HasTwoPoints() && DoMeet(BoxOf(at, at), mark->frame);
  });
  isMoving = hit != marks.end() && selected.contains((*hit)->annotationId);
  if (isMoving) {
    for (auto& [key, mark] : selected) {
      mark->StartMoving(At(at));
    }
    return 1;
  }
  selected.clear();
  if (hit != marks.end()) {
    selected[(*hit)->annotationId] = *hit;
  }
  band = PlainMark();
  band.userId = userId;
  band.subType = AnnotationSubTypeRectangle;
  band.AddPoint(At(at));
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
      mark->Moving(At(at));
    }
    return 1;
  }
  if (band.erased != 0) {
    return 0;
  }
  band.AddPoint(At(at));
  const AnnotationPoint anchor = band.points.at(0)[0];
  selected.clear();
  // Of two authors' marks with one id the later author's stays.
  for (auto& [author, authored] : confirmed) {
    for (auto& [key, mark] : authored) {
      if ((band.userId.empty() || author == band.userId) && mark->erased == 0 &&
          mark->object->IsInSelectRect({anchor.x, anchor.y, at.x, at.y}) != 0) {
        selected[key] = mark;
      }
    }
  }
  return 0;
}

int PlainPage::EndSelecting() {
  band.erased = 1;
  return std::exchange(isMoving, false) ? 1 : 0;
}

bool PlainPage::IsTipShown(const PlainMark& mark, std::uint64_t tick) {
  const auto last = tips.find(mark.userId);
  if (last != tips.end()) {
    const bool isSame = last->second.id == mark.annotationId;
    const std::uint64_t age = tick - last->second.shown;
    if (age < 5000) {
      return isSame && age < 2000;
    }
    tips.erase(last);
    if (isSame) {
      return false;
    }
  }
  tips[mark.userId] = {mark.annotationId, tick};
  return true;
}

void PlainPage::Paint(std::uint64_t tick) {
  if (background != nullptr && background->erased == 0) {
    background->Draw(Size());
  }
  for (const Place& place : places) {
    const PlainMarkPtr mark = GetAnnotation(place.userId, place.id);
    if (mark == nullptr) {
      continue;
    }
    if (mark->erased == 0) {
      mark->Draw(Size());
      if (selected.contains(mark->annotationId)) {
        mark->SetRectEx(Size());
      }
    }
    if (!mark->nickname.empty() && mark->tipVisible != 0) {
      mark->tipVisible = IsTipShown(*mark, tick) ? 1 : 0;
    }
  }
  for (auto& [key, mark] : pending) {
    if (mark->erased == 0 && mark->tempStartTick != 0 && tick - mark->tempStartTick >= 8000) {
      mark->erased = 1;
    } else if (mark->erased == 0) {
      mark->Draw(Size());
    }
  }
  if (band.erased == 0) {
    band.Draw(Size());
  }
}
