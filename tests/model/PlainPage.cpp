#include "model/PlainPage.h"

#include <algorithm>

namespace {

bool IsEmptyView(const RECT& view) {
  return std::int64_t{view.right} - view.left < 1 || std::int64_t{view.bottom} - view.top < 1;
}

}  // namespace

bool PlainPage::Holds(POINT at) const {
  return IsWithinBox(at, {0, 0, now.width, now.height});
}

AnnotationPoint PlainPage::At(POINT pixel) const {
  return {pixel.x, pixel.y, static_cast<double>(pixel.x) / static_cast<double>(now.width),
          static_cast<double>(pixel.y) / static_cast<double>(now.height)};
}

int PlainPage::Update(AnnotationPageInfo info, bool resize) {
  now.userValue1 = info.userValue1;
  now.userValue2 = info.userValue2;
  now.viewRect = info.viewRect;
  if (IsEmptyView(initial.viewRect)) {
    initial.viewRect = info.viewRect;
  }
  if (!resize) {
    return 1;
  }
  if (info.width < 1 || info.height < 1) {
    return 0;
  }
  if (info.width == now.width && info.height == now.height) {
    return 0;
  }
  // Also when the surface stays as it was, for want of memory.
  now.width = info.width;
  now.height = info.height;
  return 1;
}

void PlainPage::AddLocal(const PlainMarkPtr& mark, const std::string& newId) {
  mark->id = newId;
  mark->isOwned = true;
  pending[newId] = mark;
  drawing = mark;
  selected.clear();
}

bool PlainPage::AddRemote(const PlainMarkPtr& given) {
  const std::string key = given->id;
  const Place place = {given->order, given->userId, given->userSubId, key};
  const std::int32_t number = given->subModelIndex;
  const std::vector<AnnotationPoint> received =
      given->points.contains(0) ? given->points.at(0) : std::vector<AnnotationPoint>();
  Marks& authored = confirmed[given->userId];
  const bool hasPlace = std::any_of(places.begin(), places.end(), [&](const Place& other) {
    return other.userId == given->userId && other.id == key;
  });
  const bool isPagesOwn = (authored.contains(key) && authored.at(key) == given) ||
                          (pending.contains(key) && pending.at(key) == given);
  const bool getsPlace = !hasPlace && (number == 0 || (isPagesOwn && !authored.contains(key)));
  if (pending.contains(key)) {
    if (!authored.contains(key)) {
      authored[key] = pending.at(key);
    } else if (drawing == pending.at(key)) {
      drawing = nullptr;
    }
    pending.erase(key);
  }
  bool isKept = false;
  if (!authored.contains(key)) {
    isKept = !given->isOwned;
    PlainMarkPtr stored = given;
    if (!isKept) {
      stored = std::make_shared<PlainMark>(*given);
      stored->object = nullptr;
    }
    stored->isOwned = true;
    stored->nickname.resize(std::min(stored->nickname.size(), std::size_t{1024}));
    authored[key] = stored;
    if (isKept && number >= 1) {
      stored->Renumber(static_cast<unsigned>(number));
    }
  } else if (!isPagesOwn) {
    authored.at(key)->points[static_cast<unsigned>(number)] = received;
  }
  if (getsPlace) {
    AddPlace(place);
  }
  authored.at(key)->UpdateFrame(Size());
  return isKept;
}

void PlainPage::AddPlace(const Place& place) {
  auto above = places.begin();
  while (above != places.end() && above->order <= place.order) {
    ++above;
  }
  places.insert(above, place);
}

int PlainPage::Cancel(const std::string& key) {
  if (!pending.contains(key)) {
    return 0;
  }
  const PlainMarkPtr backup = pending.at(key);
  for (auto& [author, authored] : confirmed) {
    if (!authored.contains(key)) {
      continue;
    }
    authored.at(key)->TakeOver(*backup);
    authored.at(key)->erased = 0;
    break;
  }
  pending.erase(key);
  if (drawing == backup) {
    drawing = nullptr;
  }
  return 1;
}

PlainMarkPtr PlainPage::Confirmed(const std::string& userId, const std::string& key) const {
  if (!confirmed.contains(userId) || !confirmed.at(userId).contains(key)) {
    return nullptr;
  }
  return confirmed.at(userId).at(key);
}

std::vector<PlainMarkPtr> PlainPage::TopmostFirst(const std::string& userId,
                                                  const std::string& userSubId) const {
  std::vector<PlainMarkPtr> marks;
  for (auto place = places.rbegin(); place != places.rend(); ++place) {
    if (!userId.empty() && place->userId != userId) {
      continue;
    }
    if (!userId.empty() && !userSubId.empty() && place->userSubId != userSubId) {
      continue;
    }
    const PlainMarkPtr mark = Confirmed(place->userId, place->id);
    if (mark != nullptr && mark->erased == 0) {
      marks.push_back(mark);
    }
  }
  return marks;
}

std::string PlainPage::EraserAt(const std::string& userId, const std::string& userSubId, POINT at) {
  if (!Holds(at)) {
    return "";
  }
  selected.clear();
  for (const PlainMarkPtr& mark : TopmostFirst(userId, userSubId)) {
    if (mark->IsHit(at)) {
      return mark->id;
    }
  }
  return "";
}

std::vector<std::string> PlainPage::EraserAlong(const std::string& userId,
                                                const std::string& userSubId, POINT from,
                                                POINT to) {
  std::vector<std::string> ids;
  if (!Holds(from) && !Holds(to)) {
    return ids;
  }
  selected.clear();
  for (const PlainMarkPtr& mark : TopmostFirst(userId, userSubId)) {
    if (mark->IsTouched(from, to)) {
      ids.push_back(mark->id);
    }
  }
  return ids;
}

int PlainPage::Erase(const std::string& userId, const std::string& key) {
  const PlainMarkPtr mark = Confirmed(userId, key);
  if (mark == nullptr || mark->erased != 0) {
    return 0;
  }
  mark->erased = 1;
  return 1;
}

int PlainPage::Clear(const std::string& userId, const std::string& userSubId) {
  if (!userId.empty() && !confirmed.contains(userId)) {
    return 0;
  }
  for (auto& [author, authored] : confirmed) {
    for (auto& [key, mark] : authored) {
      const bool isMeant = userId.empty() || (author == userId &&
                                              (userSubId.empty() || mark->userSubId == userSubId));
      if (isMeant && mark->erased == 0) {
        mark->erased = 1;
      }
    }
  }
  return 1;
}

std::vector<std::string> PlainPage::DropSelection() {
  std::vector<std::string> ids;
  for (const auto& [key, mark] : selected) {
    ids.push_back(key);
  }
  selected.clear();
  return ids;
}
