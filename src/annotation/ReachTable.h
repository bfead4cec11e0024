#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <parchlet/Mutex.h>
#include <parchlet/Platform.h>

// Where a page's confirmed marks are, in one flat table, so that a search asks only the marks near
// it. Slots are numbered from 0 and stay until all marks go.
//
// Owned by the page. The marks write to it, on the host and the refresh thread, under their own
// lock; its lock is the last in the lock order.
class ReachTable {
 public:
  // A box, ends included; left > right for a mark that cannot be hit at all.
  struct Reach {
    RECT hit;    // no search that stays out of it, by the margin of `FindTouched`, can hit the mark
    RECT frame;  // the mark's selection frame
  };

  static constexpr RECT kEverywhere = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};

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
  std::int64_t Margin(const RECT& box) const PARCHLET_REQUIRES(mutex);

  mutable Mutex mutex;
  std::vector<Reach> reaches PARCHLET_GUARDED_BY(mutex);
  // The farthest coordinate and the largest extent of all boxes there ever were, kEverywhere left
  // out.
  std::int64_t farthest PARCHLET_GUARDED_BY(mutex) = 0;
  std::int64_t largest PARCHLET_GUARDED_BY(mutex) = 0;
};

// Crossings of segments are computed in single precision (e = 2^-24). For coordinates up to C and
// slopes up to k1 and k2 the error of a crossing, seen across the lines, stays below 9 e C (k1 + k2
// + 1), and a slope between integer points is at most the segment's extent. So two segments whose
// boxes lie farther apart than this cannot be found crossing: nothing is lost by not asking.
// `extents` is the sum of both boxes' extents. Holds where coordinates are exact in single
// precision.
inline std::int64_t CrossingMargin(std::int64_t farthest, std::int64_t extents) {
  return 1 + ((farthest * (extents + 1)) >> 20);
}

// Past it, marks are asked every time; C * extents fits, and so do coordinates in single precision.
inline constexpr LONG kFarthestTabled = 1 << 20;
