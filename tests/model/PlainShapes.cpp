#include "model/PlainShapes.h"

#include <algorithm>
#include <cmath>

namespace {

using Wide = std::int64_t;

using Line = PlainLine;

// The box of a mark's first two points, widened; in 64 bits, as it may lie past all pixels.
struct WideBox {
  Wide left, top, right, bottom;
};

bool IsBetween(float value, LONG a, LONG b) {
  return static_cast<float>(std::min(a, b)) <= value && value <= static_cast<float>(std::max(a, b));
}

POINT Turned(POINT point) {
  return {point.y, point.x};
}

// Where the lines y = k x + d cross; x is compared. Parallel ones give no number, or none in range.
bool DoSlantedCross(const Line& p, const Line& q) {
  const auto number = [](LONG value) { return static_cast<float>(value); };
  const float k1 = (number(p.b.y) - number(p.a.y)) / (number(p.b.x) - number(p.a.x));
  const float k2 = (number(q.b.y) - number(q.a.y)) / (number(q.b.x) - number(q.a.x));
  const float x =
      (k2 * number(q.a.x) - number(q.a.y) - k1 * number(p.a.x) + number(p.a.y)) / (k2 - k1);
  return IsBetween(x, p.a.x, p.b.x) && IsBetween(x, q.a.x, q.b.x);
}

double Distance(POINT a, POINT b) {
  const double dx = static_cast<double>(Wide{a.x} - b.x);
  const double dy = static_cast<double>(Wide{a.y} - b.y);
  return std::sqrt(dx * dx + dy * dy);
}

int WidthOf(const PlainMark& mark) {
  return std::clamp(mark.pen.width, 1, 30);
}

bool IsOn(POINT at, const WideBox& box) {
  return box.left <= at.x && at.x <= box.right && box.top <= at.y && at.y <= box.bottom;
}

WideBox Spanned(POINT a, POINT b, int half) {
  return {Wide{std::min(a.x, b.x)} - half, Wide{std::min(a.y, b.y)} - half,
          Wide{std::max(a.x, b.x)} + half, Wide{std::max(a.y, b.y)} + half};
}

bool IsTriangle(const PlainMark& mark) {
  return mark.subType == AnnotationSubTypeTriangle ||
         mark.subType == AnnotationSubTypeRightTriangle;
}

std::vector<Line> PathLines(const PlainMark& mark) {
  std::vector<Line> lines;
  for (unsigned number = 0; number < mark.ConnectedCount(); ++number) {
    const std::vector<AnnotationPoint>& list = mark.points.at(number);
    for (std::size_t i = 1; i < list.size(); ++i) {
      lines.push_back({PixelAt(list[i - 1]), PixelAt(list[i])});
    }
  }
  return lines;
}

std::vector<Line> Around(const std::vector<POINT>& corners) {
  std::vector<Line> lines;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    lines.push_back({corners[i], corners[(i + 1) % corners.size()]});
  }
  return lines;
}

LONG Middle(LONG a, LONG b) {
  return static_cast<LONG>((Wide{a} + b) / 2);
}

std::vector<Line> TriangleSides(const PlainMark& mark, POINT a, POINT b) {
  const LONG left = std::min(a.x, b.x);
  const LONG right = std::max(a.x, b.x);
  const LONG top = std::min(a.y, b.y);
  const LONG bottom = std::max(a.y, b.y);
  const LONG apex = mark.subType == AnnotationSubTypeTriangle ? Middle(a.x, b.x) : left;
  if (mark.subType == AnnotationSubTypeRightTriangle) {
    return Around({{apex, top}, {right, bottom}, {left, bottom}});
  }
  return Around({{left, bottom}, {apex, top}, {right, bottom}});
}

// What an eraser must cross.
std::vector<Line> Outline(const PlainMark& mark) {
  const POINT a = PixelAt(mark.points.at(0)[0]);
  const POINT b = PixelAt(mark.points.at(0)[1]);
  std::vector<Line> box = Around({a, {b.x, a.y}, b, {a.x, b.y}});
  if (mark.IsPicture()) {
    return box;
  }
  if (mark.subType == AnnotationSubTypeLine) {
    return {{a, b}};
  }
  if (mark.subType == AnnotationSubTypeRectangle) {
    return box;
  }
  if (mark.subType == AnnotationSubTypeEllipse) {
    const POINT middle = {Middle(a.x, b.x), Middle(a.y, b.y)};
    return Around({{middle.x, a.y}, {b.x, middle.y}, {middle.x, b.y}, {a.x, middle.y}});
  }
  return IsTriangle(mark) ? TriangleSides(mark, a, b) : PathLines(mark);
}

bool IsInEllipse(POINT at, const WideBox& box) {
  const Wide cx = (box.left + box.right) / 2;
  const Wide cy = (box.top + box.bottom) / 2;
  const Wide halfWidth = (box.right - box.left) / 2;
  const Wide halfHeight = (box.bottom - box.top) / 2;
  const auto rx = static_cast<double>(halfWidth);
  const auto ry = static_cast<double>(halfHeight);
  const auto dx = static_cast<double>(at.x - cx);
  const auto dy = static_cast<double>(cy - at.y);
  const double alongX = dx * dx / (rx * rx);
  const double alongY = dy * dy / (ry * ry);
  return alongX + alongY <= 1.0;
}

bool IsInTriangle(POINT at, const WideBox& box, bool isRight) {
  const auto isSame = [](Wide a, Wide b) { return static_cast<float>(a) == static_cast<float>(b); };
  if (isSame(box.left, box.right) || isSame(box.top, box.bottom)) {
    return false;
  }
  struct Arrow {
    float x, y;
    float operator*(const Arrow& other) const { return x * other.x + y * other.y; }
  };
  const Wide apex = isRight ? box.left : (box.left + box.right) / 2;
  const auto arrow = [&](Wide x, Wide y) {
    return Arrow{static_cast<float>(x) - static_cast<float>(apex),
                 static_cast<float>(y) - static_cast<float>(box.top)};
  };
  const Arrow e1 = arrow(box.left, box.bottom);
  const Arrow e2 = arrow(box.right, box.bottom);
  const Arrow q = arrow(at.x, at.y);
  const float inverse = 1 / ((e1 * e1) * (e2 * e2) - (e1 * e2) * (e1 * e2));
  const float u = ((e2 * e2) * (e1 * q) - (e1 * e2) * (e2 * q)) * inverse;
  const float v = ((e1 * e1) * (e2 * q) - (e1 * e2) * (e1 * q)) * inverse;
  return 0 <= u && u <= 1 && 0 <= v && v <= 1 && u + v <= 1;
}

}  // namespace

POINT PixelAt(const AnnotationPoint& point) {
  return {point.x, point.y};
}

bool DoCross(const Line& p, const Line& q) {
  // Positions are compared as they are computed with: in single precision.
  const auto isSame = [](LONG a, LONG b) { return static_cast<float>(a) == static_cast<float>(b); };
  const bool isPUpright = isSame(p.a.x, p.b.x);
  const bool isQUpright = isSame(q.a.x, q.b.x);
  const bool isPLevel = isSame(p.a.y, p.b.y);
  const bool isQLevel = isSame(q.a.y, q.b.y);
  if ((isPUpright && isPLevel) || (isQUpright && isQLevel)) {
    return false;
  }
  if (!isPUpright && !isQUpright) {
    return DoSlantedCross(p, q);
  }
  if (!isPLevel && !isQLevel) {
    return DoSlantedCross({Turned(p.a), Turned(p.b)}, {Turned(q.a), Turned(q.b)});
  }
  const Line& upright = isPUpright ? p : q;
  const Line& level = isPUpright ? q : p;
  return IsBetween(static_cast<float>(upright.a.x), level.a.x, level.b.x) &&
         IsBetween(static_cast<float>(level.a.y), upright.a.y, upright.b.y);
}

bool IsOnLine(POINT at, const Line& line, int width) {
  return IsOn(at, Spanned(line.a, line.b, width / 2)) &&
         std::trunc(Distance(at, line.a) + Distance(at, line.b)) <=
             std::trunc(Distance(line.a, line.b) + 0.5);
}

bool IsWithinBox(POINT at, const RECT& box) {
  return box.left <= at.x && at.x <= box.right && box.top <= at.y && at.y <= box.bottom;
}

bool IsPlainlyTouched(const PlainMark& mark, POINT from, POINT to) {
  for (const Line& line : Outline(mark)) {
    if (DoCross({from, to}, line)) {
      return true;
    }
  }
  const bool isEllipse = !mark.IsPicture() && mark.subType == AnnotationSubTypeEllipse;
  return isEllipse && (IsPlainlyHit(mark, to) || IsPlainlyHit(mark, from));
}

bool IsPlainlyHit(const PlainMark& mark, POINT at) {
  const POINT a = PixelAt(mark.points.at(0)[0]);
  const POINT b = PixelAt(mark.points.at(0)[1]);
  const int width = WidthOf(mark);
  if (mark.IsPicture()) {
    return IsOn(at, Spanned(a, b, 0));
  }
  const WideBox box = Spanned(a, b, width / 2);
  if (mark.subType == AnnotationSubTypeRectangle) {
    return IsOn(at, box);
  }
  if (mark.subType == AnnotationSubTypeEllipse) {
    return IsInEllipse(at, box);
  }
  if (IsTriangle(mark)) {
    return IsInTriangle(at, box, mark.subType == AnnotationSubTypeRightTriangle);
  }
  const std::vector<Line> lines = Outline(mark);
  return std::any_of(lines.begin(), lines.end(),
                     [&](const Line& line) { return IsOnLine(at, line, width); });
}
