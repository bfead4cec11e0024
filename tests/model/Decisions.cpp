#include "model/Decisions.h"

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

const std::string& HugeId() {
  static const std::string id(5000, 'h');
  return id;
}

const std::string& ZeroId() {
  static const std::string id("z\0y", 3);
  return id;
}

}  // namespace

std::uint32_t Decisions::Word() {
  std::uint32_t word = 0;
  for (int i = 0; i < 4; ++i) {
    word = word << 8 | next();
  }
  return word;
}

std::string Decisions::DocId() {
  static const std::vector<std::string> ids = {"d1", "d1", "d1", "d1", "d2", "d2", "", HugeId()};
  return OneOf(ids);
}

std::string Decisions::PageId() {
  static const std::vector<std::string> ids = {"p1", "p1", "p1", "p2", "p2", "p3", "", ZeroId()};
  return OneOf(ids);
}

std::string Decisions::UserId() {
  static const std::vector<std::string> ids = {"ada", "ada", "ada", "bob", "bob", "", HugeId()};
  return OneOf(ids);
}

std::string Decisions::UserSubId() {
  static const std::vector<std::string> ids = {"", "", "desk", "desk", "pad"};
  return OneOf(ids);
}

std::string Decisions::MarkId() {
  static const std::vector<std::string> odd = {"", HugeId(), ZeroId()};
  return OneIn(10) ? OneOf(odd) : std::string(1, static_cast<char>('a' + Below(26)));
}

std::string Decisions::Name() {
  static const std::vector<std::string> names = {"", "Ada", "\xE5\xAE\x89", "\xE5", HugeId()};
  return OneOf(names);
}

LONG Decisions::Pixel(int extent) {
  static const std::vector<LONG> far = {kLowest, kHighest, -kHighest, 1 << 20,      -(1 << 20),
                                        1 << 24, 46341,    -1000,     kHighest - 1, 5000};
  return OneIn(64) ? OneOf(far) : Below(extent + 8) - 4;
}

POINT Decisions::Point() {
  const LONG x = Pixel(60);
  return {x, Pixel(40)};
}

double Decisions::Ratio(LONG pixel, LONG extent) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  static const std::vector<double> odd = {
      std::numeric_limits<double>::quiet_NaN(),  kInfinite, -kInfinite,
      std::numeric_limits<double>::max(),        -1e300,    -0.0,
      std::numeric_limits<double>::denorm_min(), -0.004,    3e7};
  return OneIn(64) ? OneOf(odd) : static_cast<double>(pixel) / extent;
}

AnnotationPoint Decisions::PeerPoint(CurrentAnnotPageSize size) {
  const POINT pixel = Point();
  const double x = Ratio(pixel.x, size.width);
  return {pixel.x, pixel.y, x, Ratio(pixel.y, size.height)};
}

std::vector<AnnotationPoint> Decisions::PeerPoints(CurrentAnnotPageSize size) {
  std::vector<AnnotationPoint> points(static_cast<std::size_t>(OneIn(12)  ? Below(80)
                                                               : OneIn(4) ? Below(2)
                                                                          : 2 + Below(4)));
  for (AnnotationPoint& point : points) {
    point = PeerPoint(size);
  }
  return points;
}

std::int32_t Decisions::SubModel() {
  static const std::vector<std::int32_t> numbers = {0, 0, 0,  0,       0,        0, 0, 1,  1,
                                                    2, 3, -1, kLowest, kHighest, 5, 0, -2, 65536};
  return OneOf(numbers);
}

std::int32_t Decisions::Order() {
  static const std::vector<std::int32_t> orders = {0, 0, 1, 1, 2, 3, -1, kLowest, kHighest};
  return OneOf(orders);
}

std::int32_t Decisions::PenWidth() {
  static const std::vector<std::int32_t> widths = {1,  2,  3,  6, 6,       7,
                                                   29, 30, 31, 0, kLowest, kHighest};
  return OneOf(widths);
}

AnnotationSubType Decisions::SubType() {
  static const std::vector<int> subTypes = {0, 0, 0, 0, 10, 14, 15, 19, 20, 5, 22, 24, -1, kLowest};
  return static_cast<AnnotationSubType>(OneOf(subTypes));
}

AnnotationPageInfo Decisions::Geometry() {
  AnnotationPageInfo info = {Below(3), Below(3),     60 + Below(3), 40 + Below(3),
                             OneIn(4), {0, 0, 9, 9}, Word()};
  if (OneIn(8)) {
    info.viewRect = OneIn(2) ? RECT{5, 5, 5, 5} : RECT{kHighest, kHighest, kLowest, kLowest};
  }
  if (OneIn(48)) {
    const int size = OneOf(std::vector<int>{0, -1, kLowest, kHighest});
    info.width = size;
    info.height = size;
  } else if (OneIn(16)) {
    info.height = OneOf(std::vector<int>{0, -5, kLowest});
  }
  return info;
}
