#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <parchlet/Annotation.h>

#include "annotation/PixelMath.h"
#include "platform/Platform.h"

// The points of one mark: its sub-models, and what is derived from them.
//
// Connected sub-models are the unbroken run from 0. Owned by the mark, which guards it with its
// lock; no thread of its own. When memory runs out, an operation throws std::bad_alloc and leaves
// points, pixels and boxes in agreement.
class MarkPoints {
 public:
  using List = std::vector<AnnotationPoint>;
  using SubModels = Annotation::SubModels;

  const SubModels& All() const { return lists; }
  std::size_t Count() const { return span.count; }
  // Whether sub-model 0 has the two points that every mark needs to show.
  bool HasTwo() const { return firstCount >= 2; }
  // The stored pixel of the point at that position of sub-model 0, which there must be.
  POINT PixelAt(std::size_t position) const;
  // The box of the first two points of sub-model 0, which there must be: of their stored pixels, or
  // of their place on a surface of `size`.
  RECT FirstTwoBox() const;
  RECT FirstTwoBoxOn(CurrentAnnotPageSize size) const;
  // The same of all points; an empty box without points.
  RECT PixelBox() const { return {span.low.x, span.low.y, span.high.x, span.high.y}; }
  RECT BoxOn(CurrentAnnotPageSize size) const;
  // Whether points or stored pixels have changed since the last call.
  bool TakeChange() { return std::exchange(isChanged, false); }
  // A copy of the connected sub-models that are not empty.
  SubModels Connected() const;

  // Appends a point to sub-model 0. With `keepsTwo` a third point replaces the second one.
  void Add(const AnnotationPoint& point, bool keepsTwo);
  // All sub-models become `all`, which takes what was there. Does not throw.
  void SetAll(SubModels& all);
  // Takes the sub-models of `fresh` in place of those of like numbers. Does not throw.
  void Merge(SubModels& fresh);
  // Sub-model 0 gets another number and replaces what was there. Without a sub-model 0 there is an
  // empty one of that number. Does not throw.
  void MoveFirstTo(unsigned int number);
  // Makes an empty sub-model 0 when there is none; false when there is no memory for it.
  bool EnsureFirst();
  // Adds to the fractions of every connected point; pixels follow with the next conversion.
  void Shift(double dx, double dy);
  // Removes sub-models, and points, past these numbers, the highest sub-models first.
  void Limit(std::size_t mostSubModels, std::size_t mostPoints);

  // Store the pixels that the points have on a surface of `size`: of the first two of sub-model 0,
  // which there must be; or of all connected sub-models. A connected sub-model of one point gets a
  // copy of it, so that it is drawn as a dot.
  RECT ConvertFirstTwo(CurrentAnnotPageSize size);
  void ConvertPath(CurrentAnnotPageSize size);
  // Calls `draw` with the pixels of each polyline of a path, converted before: of every connected
  // sub-model, and of the join from one to the next.
  template <class Draw>
  void EachPolyline(const Draw& draw) const;

  // Whether `isHit` says yes to a segment of a connected sub-model near `area`. Joins between
  // sub-models are not asked about.
  template <class IsHit>
  bool AnySegment(const RECT& area, const IsHit& isHit) const;

 private:
  // The least and the greatest of each number of all points, and how many points there are. NaN
  // counts as 0: that is the pixel it is drawn at.
  struct Span {
    AnnotationPoint low = {INT32_MAX, INT32_MAX, HUGE_VAL, HUGE_VAL};
    AnnotationPoint high = {INT32_MIN, INT32_MIN, -HUGE_VAL, -HUGE_VAL};
    std::size_t count = 0;

    void Extend(const AnnotationPoint& point);
  };

  static constexpr std::size_t kSegmentsABox = 16;

  // Declares all pixels, and what is derived from the points, out of date.
  void Replaced();
  void Recompute();
  void ConvertTail(CurrentAnnotPageSize size);
  void FillSegmentBoxes() const;

  // The first five fields are all that a frame reads of most paths on a page at rest.

  // The pixels of the connected sub-models are those of this surface size, except for the points of
  // sub-model 0 past the first `pixels.size()`. {0, 0}: no pixels are.
  CurrentAnnotPageSize convertedSize = {0, 0};
  // The first points of sub-model 0 as the painter takes them. Meaningless while `convertedSize` is
  // {0, 0}.
  std::vector<Gdiplus::Point> pixels;
  std::size_t firstCount = 0;  // points in sub-model 0
  bool isChanged = false;
  SubModels lists;
  Span span;
  // The polyline past sub-model 0 that is being drawn; kept, so that a frame does not allocate.
  mutable std::vector<Gdiplus::Point> further;
  // Boxes of the connected segments, kSegmentsABox each, list by list. Filled by the first search
  // that comes near the mark; empty when out of date.
  mutable std::vector<RECT> segmentBoxes;
};

// Calls `visit` with every connected list until it returns true; returns whether it did.
template <class SubModels, class Visit>
bool AnyConnected(SubModels& lists, const Visit& visit) {
  unsigned int next = 0;
  for (auto& [number, list] : lists) {
    if (number != next++) {
      return false;
    }
    if (visit(list)) {
      return true;
    }
  }
  return false;
}

template <class Draw>
void MarkPoints::EachPolyline(const Draw& draw) const {
  if (!pixels.empty()) {
    draw(pixels);
  }
  if (lists.size() == 1) {
    return;
  }
  const List* before = nullptr;
  AnyConnected(lists, [&](const List& list) {
    if (before != nullptr && !list.empty()) {
      if (!before->empty()) {
        further.assign({{before->back().x, before->back().y}, {list.front().x, list.front().y}});
        draw(further);
      }
      further.clear();
      for (const AnnotationPoint& point : list) {
        further.emplace_back(point.x, point.y);
      }
      draw(further);
    }
    before = &list;
    return false;
  });
}

template <class IsHit>
bool MarkPoints::AnySegment(const RECT& area, const IsHit& isHit) const {
  if (!DoMeet(area, PixelBox())) {
    return false;
  }
  if (segmentBoxes.empty()) {
    FillSegmentBoxes();
  }
  auto box = segmentBoxes.begin();
  return AnyConnected(lists, [&](const List& list) {
    for (std::size_t start = 0; start + 1 < list.size(); start += kSegmentsABox) {
      if (!DoMeet(area, *box++)) {
        continue;
      }
      const std::size_t last = std::min(start + kSegmentsABox, list.size() - 1);
      for (std::size_t i = start; i < last; ++i) {
        if (isHit(StoredPixel(list[i]), StoredPixel(list[i + 1]))) {
          return true;
        }
      }
    }
    return false;
  });
}
