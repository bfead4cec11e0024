#include "annotation/ReachTable.h"

#include <algorithm>

#include "annotation/HitShapes.h"
#include "annotation/PixelMath.h"

std::size_t ReachTable::Add() {
  MutexLock lock(mutex);
  reaches.push_back({kNoBox, kNoBox});
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
  if (!IsEmptyBox(reach.hit) && Farthest(reach.hit) <= kFarthestExact) {
    farthest = std::max(farthest, Farthest(reach.hit));
    largest = std::max(largest, Extents(reach.hit));
  }
}

void ReachTable::FindTouched(const RECT& box, std::vector<std::size_t>& slots) const {
  MutexLock lock(mutex);
  const RECT area = CrossableArea(box, farthest, largest);
  for (std::size_t slot = 0; slot < reaches.size(); ++slot) {
    if (DoMeet(reaches[slot].hit, area)) {
      slots.push_back(slot);
    }
  }
}

void ReachTable::FindFramed(POINT point, std::vector<std::size_t>& slots) const {
  MutexLock lock(mutex);
  for (std::size_t slot = 0; slot < reaches.size(); ++slot) {
    if (IsInBox(point, reaches[slot].frame, 0)) {
      slots.push_back(slot);
    }
  }
}
