#include <parchlet/Utils.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

static_assert(std::numeric_limits<float>::is_iec559, "a division by zero must not trap");

struct FloatPoint {
  explicit FloatPoint(POINT point)
      : x(static_cast<float>(point.x)), y(static_cast<float>(point.y)) {}

  friend bool operator==(const FloatPoint&, const FloatPoint&) = default;

  float x;
  float y;
};

// Returns false for NaN, which parallel lines produce.
bool IsBetween(float value, float a, float b) {
  return value >= std::min(a, b) && value <= std::max(a, b);
}

// In double precision: no coordinate overflows, and below 2^26 the squares are exact.
double Distance(POINT a, POINT b) {
  const double dx = static_cast<double>(a.x) - b.x;
  const double dy = static_cast<double>(a.y) - b.y;
  return std::sqrt(dx * dx + dy * dy);
}

bool IsWithin(LONG value, LONG a, LONG b, int margin) {
  return value >= std::int64_t{std::min(a, b)} - margin &&
         value <= std::int64_t{std::max(a, b)} + margin;
}

}  // namespace

bool Utils::IsLineIntersect(POINT a1, POINT a2, POINT b1, POINT b2) {
  const FloatPoint p1(a1);
  const FloatPoint p2(a2);
  const FloatPoint p3(b1);
  const FloatPoint p4(b2);
  if (p1 == p2 || p3 == p4) {
    return false;
  }
  if (p1.x != p2.x && p3.x != p4.x) {
    const float k1 = (p2.y - p1.y) / (p2.x - p1.x);
    const float k2 = (p4.y - p3.y) / (p4.x - p3.x);
    const float x = (k2 * p3.x - p3.y - k1 * p1.x + p1.y) / (k2 - k1);
    return IsBetween(x, p1.x, p2.x) && IsBetween(x, p3.x, p4.x);
  }
  if (p1.y != p2.y && p3.y != p4.y) {
    const float m1 = (p2.x - p1.x) / (p2.y - p1.y);
    const float m2 = (p4.x - p3.x) / (p4.y - p3.y);
    const float y = (m2 * p3.y - p3.x - m1 * p1.y + p1.x) / (m2 - m1);
    return IsBetween(y, p1.y, p2.y) && IsBetween(y, p3.y, p4.y);
  }
  if (p1.x == p2.x) {
    return IsBetween(p1.x, p3.x, p4.x) && IsBetween(p3.y, p1.y, p2.y);
  }
  return IsBetween(p3.x, p1.x, p2.x) && IsBetween(p1.y, p3.y, p4.y);
}

bool Utils::IsPointOnLine(POINT p, POINT a, POINT b, int width) {
  const int half = static_cast<int>(static_cast<float>(width) * 0.5F);
  if (!IsWithin(p.x, a.x, b.x, half) || !IsWithin(p.y, a.y, b.y, half)) {
    return false;
  }
  return std::trunc(Distance(p, a) + Distance(p, b)) <= std::trunc(Distance(a, b) + 0.5);
}

void Utils::CalcLineEquation(POINT p1, POINT p2, float& slope, float& intercept) {
  slope = 0;
  if (p1.x != p2.x) {
    const double dx = static_cast<double>(p1.x) - p2.x;
    const double dy = static_cast<double>(p1.y) - p2.y;
    slope = static_cast<float>(dy / dx);
  }
  intercept = static_cast<float>(p1.y) - static_cast<float>(p1.x) * slope;
}
