#include "annotation/HitShapes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

#include <parchlet/Utils.h>

#include "annotation/PixelMath.h"

namespace {

// In 64 bits, so that a widened box never overflows.
struct WideBox {
  WideBox(const RECT& box, int half)
      : left(std::int64_t{box.left} - half),
        top(std::int64_t{box.top} - half),
        right(std::int64_t{box.right} + half),
        bottom(std::int64_t{box.bottom} + half) {}

  std::int64_t left;
  std::int64_t top;
  std::int64_t right;
  std::int64_t bottom;
};

// The corners in the order of the walk around; the last one closes it.
bool CrossesSides(POINT from, POINT to, std::span<const POINT> corners) {
  for (std::size_t i = 1; i < corners.size(); ++i) {
    if (Utils::IsLineIntersect(from, to, corners[i - 1], corners[i])) {
      return true;
    }
  }
  return false;
}

struct Vector {
  float x;
  float y;
};

float Dot(Vector a, Vector b) {
  return a.x * b.x + a.y * b.y;
}

}  // namespace

std::int64_t Farthest(const RECT& box) {
  const auto distance = [](LONG value) { return std::abs(std::int64_t{value}); };
  return std::max(
      {distance(box.left), distance(box.top), distance(box.right), distance(box.bottom)});
}

std::int64_t Extents(const RECT& box) {
  return std::int64_t{box.right} - box.left + (std::int64_t{box.bottom} - box.top);
}

RECT CrossableArea(const RECT& eraser, std::int64_t farthest, std::int64_t extents) {
  farthest = std::max(farthest, Farthest(eraser));
  return farthest > kFarthestExact
             ? kEverywhere
             : Widened(eraser, CrossingMargin(farthest, extents + Extents(eraser)));
}

bool IsInBox(POINT point, const RECT& box, int margin) {
  const WideBox wide(box, margin);
  return point.x >= wide.left && point.x <= wide.right && point.y >= wide.top &&
         point.y <= wide.bottom;
}

bool Contains(const RECT& outer, const RECT& inner) {
  return outer.left <= inner.left && inner.right <= outer.right && outer.top <= inner.top &&
         inner.bottom <= outer.bottom;
}

bool CrossesBox(POINT from, POINT to, POINT corner, POINT opposite) {
  const POINT corners[] = {
      corner, {opposite.x, corner.y}, opposite, {corner.x, opposite.y}, corner};
  return CrossesSides(from, to, corners);
}

bool CrossesDiamond(POINT from, POINT to, POINT corner, POINT opposite) {
  const LONG middleX = Middle(corner.x, opposite.x);
  const LONG middleY = Middle(corner.y, opposite.y);
  const POINT corners[] = {{middleX, corner.y},
                           {opposite.x, middleY},
                           {middleX, opposite.y},
                           {corner.x, middleY},
                           {middleX, corner.y}};
  return CrossesSides(from, to, corners);
}

bool CrossesTriangle(POINT from, POINT to, const RECT& box, bool isRight) {
  if (isRight) {
    const POINT corners[] = {
        {box.left, box.top}, {box.right, box.bottom}, {box.left, box.bottom}, {box.left, box.top}};
    return CrossesSides(from, to, corners);
  }
  const POINT corners[] = {{box.left, box.bottom},
                           {Middle(box.left, box.right), box.top},
                           {box.right, box.bottom},
                           {box.left, box.bottom}};
  return CrossesSides(from, to, corners);
}

bool IsInEllipse(POINT point, const RECT& box, int half) {
  const WideBox wide(box, half);
  const std::int64_t width = wide.right - wide.left;
  const std::int64_t height = wide.bottom - wide.top;
  const std::int64_t centreX = (wide.left + wide.right) / 2;
  const std::int64_t centreY = (wide.top + wide.bottom) / 2;
  const std::int64_t major = std::max(width, height) / 2;
  const std::int64_t minor = std::min(width, height) / 2;
  const auto dx = static_cast<double>(point.x - centreX);
  const auto dy = static_cast<double>(centreY - point.y);
  // In double, where the squares of the largest semi-axes fit.
  const auto a = static_cast<double>(major);
  const auto b = static_cast<double>(minor);
  const double t = width >= height ? dx * dx / (a * a) + dy * dy / (b * b)
                                   : dy * dy / (a * a) + dx * dx / (b * b);
  return t <= 1.0;  // false for the infinite or undefined t of a semi-axis of 0
}

bool IsInTriangle(POINT point, const RECT& box, int half, bool isRight) {
  const WideBox wide(box, half);
  const auto asFloat = [](std::int64_t value) { return static_cast<float>(value); };
  const float left = asFloat(wide.left);
  const float bottom = asFloat(wide.bottom);
  if (left == asFloat(wide.right) || bottom == asFloat(wide.top)) {
    return false;  // rounding may give a wide one a divisor other than 0, and any weights
  }
  const float apexX = isRight ? left : asFloat((wide.left + wide.right) / 2);
  const float apexY = asFloat(wide.top);
  const Vector e1 = {left - apexX, bottom - apexY};
  const Vector e2 = {asFloat(wide.right) - apexX, bottom - apexY};
  const Vector q = {asFloat(point.x) - apexX, asFloat(point.y) - apexY};
  const float d11 = Dot(e1, e1);
  const float d12 = Dot(e1, e2);
  const float d1q = Dot(e1, q);
  const float d22 = Dot(e2, e2);
  const float d2q = Dot(e2, q);
  const float inverse = 1 / (d11 * d22 - d12 * d12);
  const float u = (d22 * d1q - d12 * d2q) * inverse;
  const float v = (d11 * d2q - d12 * d1q) * inverse;
  return u >= 0 && u <= 1 && v >= 0 && v <= 1 && u + v <= 1;
}
