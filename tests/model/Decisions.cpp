#include "model/Decisions.h"

LONG Decisions::Pixel(int extent) {
  if (!OneIn(64)) {
    return Below(extent + 8) - 4;
  }
  return OneOf<LONG>({kLowest, kHighest, -kHighest, 1 << 20, -(1 << 20), 1 << 24, 46341, -1000,
                      kHighest - 1, 5000});
}

POINT Decisions::Point() {
  const LONG x = Pixel(60);
  return {x, Pixel(40)};
}

double Decisions::Ratio(LONG pixel, LONG extent) {
  using Limits = std::numeric_limits<double>;
  if (!OneIn(64)) {
    return static_cast<double>(pixel) / extent;
  }
  return OneOf({Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(), -1e300,
                -0.0, Limits::denorm_min(), -0.004, 3e7});
}

AnnotationPoint Decisions::PeerPoint(CurrentAnnotPageSize size) {
  const POINT pixel = Point();
  const double x = Ratio(pixel.x, size.width);
  return {pixel.x, pixel.y, x, Ratio(pixel.y, size.height)};
}

std::vector<AnnotationPoint> Decisions::PeerPoints(CurrentAnnotPageSize size) {
  const int count = OneIn(12) ? Below(80) : OneIn(4) ? Below(2) : 2 + Below(4);
  std::vector<AnnotationPoint> points(static_cast<std::size_t>(count));
  for (AnnotationPoint& point : points) {
    point = PeerPoint(size);
  }
  return points;
}

AnnotationPageInfo Decisions::Geometry() {
  AnnotationPageInfo info = {Below(3), Below(3),     60 + Below(3), 40 + Below(3),
                             OneIn(4), {0, 0, 9, 9}, Word()};
  if (OneIn(8)) {
    info.viewRect = OneIn(2) ? RECT{5, 5, 5, 5} : RECT{kHighest, kHighest, kLowest, kLowest};
  }
  if (OneIn(48)) {
    const int size = OneOf({0, -1, kLowest, kHighest});
    info.width = size;
    info.height = size;
  } else if (OneIn(16)) {
    info.height = OneOf({0, -5, kLowest});
  }
  return info;
}
