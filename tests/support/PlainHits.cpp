#include "support/PlainHits.h"

#include <algorithm>
#include <cmath>

#include "support/TestAccess.h"

namespace {

struct Line {
  POINT a, b;
};

POINT PixelAt(const AnnotationPoint& point) {
  return {point.x, point.y};
}

bool IsInRange(float value, int a, int b) {
  return static_cast<float>(std::min(a, b)) <= value && value <= static_cast<float>(std::max(a, b));
}

// Of the same two lines with x and y exchanged, when neither is horizontal.
bool CrossByX(POINT a1, POINT a2, POINT b1, POINT b2) {
  const auto x1 = static_cast<float>(a1.x);
  const auto y1 = static_cast<float>(a1.y);
  const auto x3 = static_cast<float>(b1.x);
  const auto y3 = static_cast<float>(b1.y);
  const float k1 = (static_cast<float>(a2.y) - y1) / (static_cast<float>(a2.x) - x1);
  const float k2 = (static_cast<float>(b2.y) - y3) / (static_cast<float>(b2.x) - x3);
  const float x = (k2 * x3 - y3 - k1 * x1 + y1) / (k2 - k1);
  return IsInRange(x, a1.x, a2.x) && IsInRange(x, b1.x, b2.x);
}

POINT Flipped(POINT p) {
  return {p.y, p.x};
}

bool Has(const Annotation::SubModels& points) {
  return points.contains(0) && points.at(0).size() >= 2;
}

RECT BoxOfTwo(const Annotation::SubModels& points) {
  const POINT a = PixelAt(points.at(0)[0]);
  const POINT b = PixelAt(points.at(0)[1]);
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

int WidthOf(const Annotation& mark) {
  return std::clamp(mark.pen.width, 1, 30);
}

bool IsTriangle(const Annotation& mark) {
  return mark.subType == AnnotationSubTypeTriangle ||
         mark.subType == AnnotationSubTypeRightTriangle;
}

bool IsPath(const Annotation& mark) {
  return mark.type != AnnotationTypePicture && !IsTriangle(mark) &&
         mark.subType != AnnotationSubTypeLine && mark.subType != AnnotationSubTypeEllipse &&
         mark.subType != AnnotationSubTypeRectangle;
}

std::vector<Line> Around(const std::vector<POINT>& corners) {
  std::vector<Line> sides;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
  }
  return sides;
}

std::vector<Line> PathSegments(const Annotation::SubModels& points) {
  std::vector<Line> segments;
  for (unsigned number = 0; points.contains(number); ++number) {
    const auto& list = points.at(number);
    for (std::size_t i = 1; i < list.size(); ++i) {
      segments.push_back({PixelAt(list[i - 1]), PixelAt(list[i])});
    }
  }
  return segments;
}

// What an eraser must cross.
std::vector<Line> Outline(const Annotation& mark) {
  const Annotation::SubModels points = mark.GetPoints();
  if (IsPath(mark)) {
    return PathSegments(points);
  }
  const POINT p = PixelAt(points.at(0)[0]);
  const POINT q = PixelAt(points.at(0)[1]);
  const RECT box = BoxOfTwo(points);
  const LONG midX = (p.x + q.x) / 2;
  const LONG midY = (p.y + q.y) / 2;
  if (mark.type != AnnotationTypePicture) {
    switch (mark.subType) {
      case AnnotationSubTypeLine:
        return {{p, q}};
      case AnnotationSubTypeEllipse:
        return Around({{midX, p.y}, {q.x, midY}, {midX, q.y}, {p.x, midY}});
      case AnnotationSubTypeTriangle:
        return Around({{box.left, box.bottom}, {midX, box.top}, {box.right, box.bottom}});
      case AnnotationSubTypeRightTriangle:
        return Around({{box.left, box.top}, {box.right, box.bottom}, {box.left, box.bottom}});
      default:
        break;
    }
  }
  return Around({p, {q.x, p.y}, q, {p.x, q.y}});
}

bool IsInEllipseOf(const RECT& wide, POINT at) {
  const int cx = (wide.left + wide.right) / 2;
  const int cy = (wide.top + wide.bottom) / 2;
  const double rx = (wide.right - wide.left) / 2;
  const double ry = (wide.bottom - wide.top) / 2;
  const double dx = at.x - cx;
  const double dy = cy - at.y;
  return dx * dx / (rx * rx) + dy * dy / (ry * ry) <= 1.0;
}

bool IsInTriangleOf(const RECT& wide, bool isRight, POINT at) {
  struct Arrow {
    float x, y;
    float operator*(const Arrow& other) const { return x * other.x + y * other.y; }
  };
  const LONG apex = isRight ? wide.left : (wide.left + wide.right) / 2;
  const auto arrow = [&](LONG x, LONG y) {
    return Arrow{static_cast<float>(x) - static_cast<float>(apex),
                 static_cast<float>(y) - static_cast<float>(wide.top)};
  };
  const Arrow e1 = arrow(wide.left, wide.bottom);
  const Arrow e2 = arrow(wide.right, wide.bottom);
  const Arrow q = arrow(at.x, at.y);
  const float inverse = 1 / ((e1 * e1) * (e2 * e2) - (e1 * e2) * (e1 * e2));
  const float u = ((e2 * e2) * (e1 * q) - (e1 * e2) * (e2 * q)) * inverse;
  const float v = ((e1 * e1) * (e2 * q) - (e1 * e2) * (e1 * q)) * inverse;
  return 0 <= u && u <= 1 && 0 <= v && v <= 1 && u + v <= 1;
}

bool IsIn(const RECT& box, POINT at) {
  return box.left <= at.x && at.x <= box.right && box.top <= at.y && at.y <= box.bottom;
}

}  // namespace

bool PlainlyCross(POINT a1, POINT a2, POINT b1, POINT b2) {
  const bool isADot = a1.x == a2.x && a1.y == a2.y;
  const bool isBDot = b1.x == b2.x && b1.y == b2.y;
  if (isADot || isBDot) {
    return false;
  }
  if (a1.x != a2.x && b1.x != b2.x) {
    return CrossByX(a1, a2, b1, b2);
  }
  if (a1.y != a2.y && b1.y != b2.y) {
    return CrossByX(Flipped(a1), Flipped(a2), Flipped(b1), Flipped(b2));
  }
  if (a1.x != a2.x) {
    return PlainlyCross(b1, b2, a1, a2);
  }
  return IsInRange(static_cast<float>(a1.x), b1.x, b2.x) &&
         IsInRange(static_cast<float>(b1.y), a1.y, a2.y);
}

bool PlainlyOnLine(POINT p, POINT a, POINT b, int width) {
  const int half = width / 2;
  const auto distance = [](POINT s, POINT t) {
    const std::int64_t dx = s.x - t.x;
    const std::int64_t dy = s.y - t.y;
    return std::sqrt(static_cast<double>(dx * dx + dy * dy));
  };
  const RECT box = {std::min(a.x, b.x) - half, std::min(a.y, b.y) - half, std::max(a.x, b.x) + half,
                    std::max(a.y, b.y) + half};
  return IsIn(box, p) && static_cast<std::int64_t>(distance(p, a) + distance(p, b)) <=
                             static_cast<std::int64_t>(distance(a, b) + 0.5);
}

bool PlainlyTouches(const Annotation& mark, POINT from, POINT to) {
  if (!Has(mark.GetPoints())) {
    return false;
  }
  const std::vector<Line> outline = Outline(mark);
  const bool crosses = std::any_of(outline.begin(), outline.end(), [&](const Line& side) {
    return PlainlyCross(from, to, side.a, side.b);
  });
  const bool isEllipse =
      mark.type != AnnotationTypePicture && mark.subType == AnnotationSubTypeEllipse;
  return crosses || (isEllipse && (PlainlyHits(mark, to) || PlainlyHits(mark, from)));
}

bool PlainlyHits(const Annotation& mark, POINT at) {
  const Annotation::SubModels points = mark.GetPoints();
  if (!Has(points)) {
    return false;
  }
  const RECT box = BoxOfTwo(points);
  if (mark.type == AnnotationTypePicture) {
    return IsIn(box, at);
  }
  if (IsPath(mark) || mark.subType == AnnotationSubTypeLine) {
    const std::vector<Line> segments = Outline(mark);
    return std::any_of(segments.begin(), segments.end(), [&](const Line& segment) {
      return PlainlyOnLine(at, segment.a, segment.b, WidthOf(mark));
    });
  }
  const int half = WidthOf(mark) / 2;
  const RECT wide = {box.left - half, box.top - half, box.right + half, box.bottom + half};
  if (mark.subType == AnnotationSubTypeEllipse) {
    return IsInEllipseOf(wide, at);
  }
  return IsTriangle(mark) ? IsInTriangleOf(wide, mark.subType == AnnotationSubTypeRightTriangle, at)
                          : IsIn(wide, at);
}

bool PlainlyFramed(const Annotation& mark, POINT at) {
  return Has(mark.GetPoints()) && IsIn(AnnotationTestAccess::FrameOf(mark), at);
}

bool PlainlyInside(const Annotation& mark, const RECT& rect) {
  const Annotation::SubModels points = mark.GetPoints();
  if (mark.erased == 1 || !Has(points)) {
    return false;
  }
  std::vector<AnnotationPoint> counted(points.at(0).begin(), points.at(0).begin() + 2);
  if (mark.type != AnnotationTypePicture && mark.subType == AnnotationSubTypePath) {
    for (const auto& [number, list] : points) {
      counted.insert(counted.end(), list.begin(), list.end());
    }
  }
  const RECT normal = {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
                       std::max(rect.left, rect.right), std::max(rect.top, rect.bottom)};
  return std::all_of(counted.begin(), counted.end(),
                     [&](const AnnotationPoint& point) { return IsIn(normal, PixelAt(point)); });
}
