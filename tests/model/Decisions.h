// What a generated host decides, read from a string of bytes: equal bytes, equal calls.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <parchlet/AnnotationTypes.h>

// Decisions of a host that means no good: ids that are empty or huge, points off the page, numbers
// at the ends of their ranges and no numbers at all, among many that are sound.
class Decisions {
 public:
  // `next` gives the next byte, and any byte once they are spent.
  explicit Decisions(std::function<std::uint8_t()> next) : next(std::move(next)) {}

  // `count` is 1 to 256.
  int Below(int count) { return count <= 1 ? 0 : next() % count; }
  bool OneIn(int chances) { return Below(chances) == 0; }
  std::uint32_t Word();
  template <class T>
  const T& OneOf(const std::vector<T>& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))];
  }

  std::string DocId();
  std::string PageId();
  std::string UserId();
  std::string UserSubId();
  std::string MarkId();
  std::string Name();
  // Mostly on a page of 60 x 40 pixels.
  POINT Point();
  AnnotationPoint PeerPoint(CurrentAnnotPageSize size);
  std::vector<AnnotationPoint> PeerPoints(CurrentAnnotPageSize size);
  std::int32_t SubModel();
  std::int32_t Order();
  std::int32_t PenWidth();
  AnnotationSubType SubType();
  // Never half huge: a section that is only large could be had or not.
  AnnotationPageInfo Geometry();

 private:
  LONG Pixel(int extent);
  double Ratio(LONG pixel, LONG extent);

  std::function<std::uint8_t()> next;
};
