#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <parchlet/Platform.h>
#include "platform/threads/Mutex.h"

// Where a page's confirmed marks are, in one flat table, so that a search asks only the marks near
// it. Slots are numbered from 0 and stay until all marks go.
//
// Owned by the page. The marks write to it, on the host and the refresh thread, under their own
// lock; its lock is the last in the lock order.
class ReachTable {
 public:
  // A box, ends included; left > right for a mark that cannot be hit at all.
  struct Reach {
    RECT hit;    // a search that stays out of it, by the margin of FindTouched, cannot hit the mark
    RECT frame;  // the mark's selection frame
  };

  // Adds a slot that reaches nowhere.
  std::size_t Add() PARCHLET_EXCLUDES(mutex);
  // Forgets all slots; no mark must report to them any more.
  void Clear() PARCHLET_EXCLUDES(mutex);
  void Set(std::size_t slot, const Reach& reach) PARCHLET_EXCLUDES(mutex);

  // Appends the slots, ascending, of the marks that an eraser segment with this box may touch, or a
  // point: a box of one pixel.
  void FindTouched(const RECT& box, std::vector<std::size_t>& slots) const PARCHLET_EXCLUDES(mutex);
  // Appends the slots, ascending, of the marks whose frame holds the point.
  void FindFramed(POINT point, std::vector<std::size_t>& slots) const PARCHLET_EXCLUDES(mutex);

 private:
  mutable Mutex mutex;
  std::vector<Reach> reaches PARCHLET_GUARDED_BY(mutex);
  // The farthest coordinate and the largest extent of all boxes there ever were, kEverywhere left
  // out.
  std::int64_t farthest PARCHLET_GUARDED_BY(mutex) = 0;
  std::int64_t largest PARCHLET_GUARDED_BY(mutex) = 0;
};
