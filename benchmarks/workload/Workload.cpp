#include "workload/Workload.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "workload/Random.h"

namespace {

constexpr std::uint64_t kSeed = 20;

// A heading as a unit vector. It turns by the tangent of half the angle, so that no function of the
// system's mathematics library, which need not agree with another's, has a say in where points
// fall.
struct Heading {
  double x = 1.0;
  double y = 0.0;

  void Turn(double halfTangent) {
    const double square = halfTangent * halfTangent;
    const double cosine = (1.0 - square) / (1.0 + square);
    const double sine = 2.0 * halfTangent / (1.0 + square);
    const double turnedX = x * cosine - y * sine;
    y = x * sine + y * cosine;
    x = turnedX;
  }
};

int RoundToInt(double value) {
  return static_cast<int>(std::lround(value));
}

std::uint32_t RandomColor(Random& random, std::uint32_t alpha) {
  constexpr std::uint32_t kColors = 0x1000000;
  return alpha << 24U | random.Below(kColors);
}

// Turns the heading by a bend that drifts around straight on, and once in a while sharply.
void TurnSmoothly(Random& random, Heading& heading, double& bend) {
  constexpr std::uint32_t kStepsPerSharpTurn = 80;
  constexpr double kKeptBend = 0.95;
  constexpr double kMaxDrift = 0.025;
  bend = kKeptBend * bend + random.Uniform(-kMaxDrift, kMaxDrift);
  heading.Turn(bend);
  if (random.Below(kStepsPerSharpTurn) == 0) {
    const double side = random.Below(2) == 0 ? -1.0 : 1.0;
    heading.Turn(side * random.Uniform(0.7, 1.8));  // 70 to 120 degrees
  }
}

// Keeps a path on the page: it bounces off the edges.
void Bounce(double position, double limit, double& direction) {
  if ((position < 0 && direction < 0) || (position > limit && direction > 0)) {
    direction = -direction;
  }
}

std::vector<POINT> MakePath(Random& random, int width, int height, std::size_t pointCount) {
  constexpr double kMinStep = 2.0;
  constexpr double kMaxStep = 6.0;
  double x = random.Uniform(0, width);
  double y = random.Uniform(0, height);
  Heading heading;
  heading.Turn(random.Uniform(-4.0, 4.0));
  double bend = 0.0;
  std::vector<POINT> points;
  points.reserve(pointCount);
  while (points.size() < pointCount) {
    points.push_back({std::clamp(RoundToInt(x), 0, width), std::clamp(RoundToInt(y), 0, height)});
    TurnSmoothly(random, heading, bend);
    Bounce(x, width, heading.x);
    Bounce(y, height, heading.y);
    const double step = random.Uniform(kMinStep, kMaxStep);
    x += step * heading.x;
    y += step * heading.y;
  }
  return points;
}

// Soft waves of colour, everywhere as transparent as opaque.
std::shared_ptr<const Picture> MakePicture(Random& random) {
  auto picture = std::make_shared<Picture>();
  picture->format = PictureFormat::kPng;
  picture->width = 400;
  picture->height = 300;
  const std::uint32_t slope[3] = {1 + random.Below(4), 1 + random.Below(4), 1 + random.Below(4)};
  for (std::uint32_t y = 0; y < 300; ++y) {
    for (std::uint32_t x = 0; x < 400; ++x) {
      const auto wave = [&](std::uint32_t phase) {
        const std::uint32_t step = phase & 0xFF;
        return step < 0x80 ? step : 0xFF - step;
      };
      picture->pixels.push_back(0x80U << 24U | wave(slope[0] * x) << 16U |
                                wave(slope[1] * y) << 8U | wave(slope[2] * (x + y)));
    }
  }
  return picture;
}

// One step's turn: a zigzag, a gentle bend or all but straight back. The tangent of half the angle.
double TortureTurn(Random& random, std::size_t step) {
  constexpr double kUturn = 10.0;  // 169 degrees
  const double kind = random.Uniform(0.0, 1.0);
  if (kind < 0.35) {
    return (step % 2 == 0 ? 1.0 : -1.0) * random.Uniform(0.55, 8.0);
  }
  return kind < 0.85 ? random.Uniform(-0.25, 0.25) : random.Uniform(kUturn, 10 * kUturn);
}

std::vector<POINT> MakeTorturePath(Random& random, int width, int height) {
  constexpr std::size_t kPoints = 60;
  const double longest = random.Uniform(0.4, 45.0);
  double x = random.Uniform(0, width);
  double y = random.Uniform(0, height);
  Heading heading;
  std::vector<POINT> points;
  for (std::size_t i = 0; i < kPoints; ++i) {
    points.push_back({std::clamp(RoundToInt(x), 0, width), std::clamp(RoundToInt(y), 0, height)});
    heading.Turn(TortureTurn(random, i));
    Bounce(x, width, heading.x);
    Bounce(y, height, heading.y);
    const double step = random.Uniform(0.4, longest);
    x += step * heading.x;
    y += step * heading.y;
  }
  return points;
}

}  // namespace

std::size_t Workload::PointCount() const {
  std::size_t count = 0;
  for (const BenchMark& mark : marks) {
    count += mark.points.size();
  }
  return count;
}

Workload MakePaths(const std::string& name, int width, int height, const PathStyle& style) {
  Random random(kSeed);
  Workload workload = {name, width, height, {}};
  for (std::size_t i = 0; i < style.pathCount; ++i) {
    const std::uint32_t color = RandomColor(random, style.alpha);
    workload.marks.push_back({AnnotationSubTypePath, color, style.penWidth,
                              MakePath(random, width, height, style.pointCount)});
  }
  return workload;
}

Workload MakeShapes(const std::string& name, int width, int height, std::size_t count,
                    int penWidth) {
  constexpr std::array kKinds = {AnnotationSubTypeLine, AnnotationSubTypeEllipse,
                                 AnnotationSubTypeRectangle, AnnotationSubTypeTriangle,
                                 AnnotationSubTypeRightTriangle};
  constexpr double kMinSide = 50.0;
  constexpr double kMaxSide = 400.0;
  constexpr std::uint32_t kOpaque = 0xFF;
  Random random(kSeed);
  Workload workload = {name, width, height, {}};
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t color = RandomColor(random, kOpaque);
    const int boxWidth = RoundToInt(random.Uniform(kMinSide, kMaxSide));
    const int boxHeight = RoundToInt(random.Uniform(kMinSide, kMaxSide));
    const int left = RoundToInt(random.Uniform(0, width - boxWidth));
    const int top = RoundToInt(random.Uniform(0, height - boxHeight));
    workload.marks.push_back({kKinds[i % kKinds.size()],
                              color,
                              penWidth,
                              {{left, top}, {left + boxWidth, top + boxHeight}}});
  }
  return workload;
}

Workload MakeTorture(const std::string& name, int width, int height, std::size_t pathCount) {
  constexpr std::uint32_t kOpaque = 0xFF;
  Random random(kSeed);
  Workload workload = {name, width, height, {}};
  for (std::size_t i = 0; i < pathCount; ++i) {
    const std::uint32_t color = RandomColor(random, kOpaque);
    workload.marks.push_back({AnnotationSubTypePath, color, static_cast<int>(1 + i % 30),
                              MakeTorturePath(random, width, height)});
  }
  return workload;
}

Workload MakePictures(const std::string& name, int width, int height, std::size_t count) {
  Random random(kSeed);
  Workload workload = {name, width, height, {}};
  for (std::size_t i = 0; i < count; ++i) {
    const int left = static_cast<int>(random.Below(static_cast<std::uint32_t>(width - 600)));
    const int top = static_cast<int>(random.Below(static_cast<std::uint32_t>(height - 400)));
    workload.marks.push_back(
        {AnnotationSubTypePng, 0, 1, {{left, top}, {left + 600, top + 400}}, MakePicture(random)});
  }
  return workload;
}
