#include <algorithm>
#include <iterator>

#include <parchlet/Annotation.h>

#include "annotation/MarkLimits.h"

namespace {

// Cuts at the start of a character.
void CutName(std::string& name) {
  if (name.size() <= kMaxNicknameBytes) {
    return;
  }
  std::size_t end = kMaxNicknameBytes;
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
    --end;
  }
  name.erase(end);
}

void CutList(std::vector<AnnotationPoint>& list, std::size_t room) {
  if (list.size() > room) {
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(room), list.end());
  }
}

}  // namespace

void Annotation::LimitToBounds() {
  MutexLock lock(mutex);
  CutName(nickname);
  if (points.size() > kMaxSubModels) {
    points.erase(std::next(points.begin(), kMaxSubModels), points.end());
  }
  std::size_t room = kMaxMarkPoints;
  for (auto& [number, list] : points) {
    CutList(list, room);
    room -= list.size();
  }
  PointsReplaced();
}

bool Annotation::LimitFragment(unsigned int subModel, std::vector<AnnotationPoint>& list) const {
  MutexLock lock(mutex);
  const auto replaced = points.find(subModel);
  if (replaced == points.end() && points.size() >= kMaxSubModels) {
    return false;
  }
  const std::size_t others = span.count - (replaced != points.end() ? replaced->second.size() : 0);
  CutList(list, kMaxMarkPoints - std::min(others, kMaxMarkPoints));
  return true;
}
