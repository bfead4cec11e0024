#include "annotation/ReachTable.h"

#include <algorithm>
#include <cstdlib>

namespace {

std::int64_t Farthest(const RECT& box) {
  const auto distance = [](LONG value) { return std::abs(std::int64_t{value}); };
  return std::max(
      {distance(box.left), distance(box.top), distance(box.right), distance(box.bottom)});
}

std::int64_t Extents(const RECT& box) {
  return std::int64_t{box.right} - box.left + (std::int64_t{box.bottom} - box.top);
}

}  // namespace

std::size_t ReachTable::Add() {
  MutexLock lock(mutex);
  constexpr RECT kNowhere = {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
  reaches.push_back({kNowhere, kNowhere});
  return reaches.size() - 1;
}

void ReachTable::Clear() {
  MutexLock lock(mutex);
  reaches.clear();
  farthest = 0;
  largest = 0;
}

void ReachTable::Set(std::size_t slot, const Reach& reach) {
  MutexLock lock(mutex);
  reaches[slot] = reach;
  if (reach.hit.left <= reach.hit.right && Farthest(reach.hit) <= kFarthestTabled) {
    farthest = std::max(farthest, Farthest(reach.hit));
    largest = std::max(largest, Extents(reach.hit));
  }
}

std::int64_t ReachTable::Margin(const RECT& box) const {
  return CrossingMargin(std::max(farthest, Farthest(box)), largest + Extents(box));
}

void ReachTable::FindTouched(const RECT& box, std::vector<std::size_t>& slots) const {
  MutexLock lock(mutex);
  const bool isTabled = Farthest(box) <= kFarthestTabled;
  const std::int64_t margin = isTabled ? Margin(box) : 0;
  const auto widened = [&](std::int64_t value) {
    return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
  };
  const RECT area = isTabled ? RECT{widened(box.left - margin), widened(box.top - margin),
                                    widened(box.right + margin), widened(box.bottom + margin)}
                             : kEverywhere;
  for (std::size_t slot = 0; slot < reaches.size(); ++slot) {
    const RECT& hit = reaches[slot].hit;
    if (hit.left <= area.right && hit.right >= area.left && hit.top <= area.bottom &&
        hit.bottom >= area.top) {
      slots.push_back(slot);
    }
  }
}

void ReachTable::FindFramed(POINT point, std::vector<std::size_t>& slots) const {
  MutexLock lock(mutex);
  for (std::size_t slot = 0; slot < reaches.size(); ++slot) {
    const RECT& frame = reaches[slot].frame;
    if (point.x >= frame.left && point.x <= frame.right && point.y >= frame.top &&
        point.y <= frame.bottom) {
      slots.push_back(slot);
    }
  }
}
