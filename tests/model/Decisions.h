// What a generated host decides, read from a string of bytes: equal bytes, equal calls.
#pragma once

#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include <parchlet/AnnotationTypes.h>

// Decisions of a host that means no good: ids that are empty or huge, points off the page, numbers
// at the ends of their ranges and no numbers at all, among many that are sound.
class Decisions {
 public:
  using Id = std::string;

  // `next` gives the next byte, and any byte once they are spent.
  explicit Decisions(std::function<std::uint8_t()> next) : next(std::move(next)) {}

  // `count` is 1 to 256.
  int Below(int count) { return count <= 1 ? 0 : next() % count; }
  bool OneIn(int chances) { return Below(chances) == 0; }
  std::uint32_t Word() { return static_cast<std::uint32_t>(next()) << 24 | next() << 8 | next(); }
  template <class Choices>
  const auto& OneOf(const Choices& choices) {
    return *std::next(choices.begin(), Below(static_cast<int>(choices.size())));
  }
  template <class T>
  T OneOf(std::initializer_list<T> choices) {
    return *(choices.begin() + Below(static_cast<int>(choices.size())));
  }
  void DoOneOf(std::initializer_list<std::function<void()>> acts) { OneOf(acts)(); }

  Id DocId() { return OneOf<Id>({"d1", "d1", "d1", "d1", "d2", "d2", "", HugeId()}); }
  Id PageId() { return OneOf<Id>({"p1", "p1", "p1", "p2", "p2", "p3", "", ZeroId()}); }
  Id UserId() { return OneOf<Id>({"ada", "ada", "ada", "bob", "bob", "", HugeId()}); }
  Id UserSubId() { return OneOf<Id>({"", "", "desk", "desk", "pad"}); }
  Id MarkId() {
    return OneIn(10) ? OneOf<Id>({"", HugeId(), ZeroId()})
                     : Id(1, static_cast<char>('a' + Below(26)));
  }
  Id Name() { return OneOf<Id>({"", "Ada", "\xE5\xAE\x89", "\xE5", HugeId()}); }

  std::int32_t SubModel() {
    return OneOf({0, 0, 0, 0, 0, 0, 0, 1, 1, 2, 3, -1, kLowest, kHighest, 5, 0, -2, 65536});
  }
  std::int32_t Order() { return OneOf({0, 0, 1, 1, 2, 3, -1, kLowest, kHighest}); }
  std::int32_t PenWidth() { return OneOf({1, 2, 3, 6, 6, 7, 29, 30, 31, 0, kLowest, kHighest}); }
  AnnotationSubType SubType() {
    return static_cast<AnnotationSubType>(
        OneOf({0, 0, 0, 0, 10, 14, 15, 19, 20, 5, 22, 24, -1, kLowest}));
  }

  // Mostly on a page of 60 x 40 pixels.
  POINT Point() {
    const LONG x = Pixel(60);
    return {x, Pixel(40)};
  }
  AnnotationPoint PeerPoint(CurrentAnnotPageSize size) {
    const POINT pixel = Point();
    const double x = Ratio(pixel.x, size.width);
    return {pixel.x, pixel.y, x, Ratio(pixel.y, size.height)};
  }
  std::vector<AnnotationPoint> PeerPoints(CurrentAnnotPageSize size) {
    const int count = OneIn(12) ? Below(80) : OneIn(4) ? Below(2) : 2 + Below(4);
    std::vector<AnnotationPoint> points(static_cast<std::size_t>(count));
    for (AnnotationPoint& point : points) {
      point = PeerPoint(size);
    }
    return points;
  }
  // Never half huge: a section that is only large could be had or not.
  AnnotationPageInfo Geometry() {
    AnnotationPageInfo info = {Below(3), Below(3),     60 + Below(3), 40 + Below(3),
                               OneIn(4), {0, 0, 9, 9}, Word()};
    if (OneIn(8)) {
      info.viewRect = OneIn(2) ? RECT{5, 5, 5, 5} : RECT{kHighest, kHighest, kLowest, kLowest};
    }
    if (OneIn(48)) {
      info.width = info.height = OneOf({0, -1, kLowest, kHighest});
    } else if (OneIn(16)) {
      info.height = OneOf({0, -5, kLowest});
    }
    return info;
  }

 private:
  static constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
  static constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

  static Id HugeId() { return Id(5000, 'h'); }
  static Id ZeroId() { return {"z\0y", 3}; }
  LONG Pixel(int extent) {
    return !OneIn(64) ? Below(extent + 8) - 4
                      : OneOf<LONG>({kLowest, kHighest, -kHighest, 1 << 20, -(1 << 20), 1 << 24,
                                     46341, -1000, kHighest - 1, 5000});
  }
  double Ratio(LONG pixel, LONG extent) {
    using Limits = std::numeric_limits<double>;
    return !OneIn(64) ? static_cast<double>(pixel) / extent
                      : OneOf({Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                               Limits::max(), -1e300, -0.0, Limits::denorm_min(), -0.004, 3e7});
  }

  std::function<std::uint8_t()> next;
};
