// What is painted, beside the exact coverage of what was meant.
#include <gtest/gtest.h>

#include <hwy/targets.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <numbers>
#include <random>
#include <vector>

#include "platform/raster/Rasterizer.h"
#include "platform/raster/Stretch.h"
#include "platform/raster/StrokeRules.h"
#include "support/ExactCoverage.h"
#include "workload/Workload.h"

namespace {

using raster::GridPoint;
using raster::PixelRect;
using raster::PixelSurface;
using raster::Rasterizer;

// As the rasterizer's points, or as exact corners.
template <class Point, class Number>
std::vector<Point> PointsOf(const BenchMark& mark) {
  std::vector<Point> points;
  points.reserve(mark.points.size());
  for (const POINT& point : mark.points) {
    points.push_back({static_cast<Number>(point.x), static_cast<Number>(point.y)});
  }
  return points;
}

std::vector<std::uint32_t> Paint(const Workload& page) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(page.width) * page.height);
  Rasterizer rasterizer;
  const PixelSurface surface = {pixels.data(), page.width, page.height, page.width};
  rasterizer.SetTarget(surface, surface.Bounds());
  rasterizer.Clear(0xFFFFFFFF);
  for (const BenchMark& mark : page.marks) {
    rasterizer.Stroke(PointsOf<GridPoint, std::int32_t>(mark), false,
                      static_cast<float>(mark.width), mark.color);
  }
  return pixels;
}

std::vector<double> Meant(const BenchMark& mark, int width, int height) {
  return exact::Coverage(exact::StrokePolygons(PointsOf<exact::Corner, double>(mark), mark.width),
                         width, height);
}

struct Error {
  double mean = 0;      // levels a pixel, over the pixels that any mark touches
  double farShare = 0;  // of these, off by more than 32 levels
};

Error ErrorOf(Workload page) {
  std::vector<double> truth(static_cast<std::size_t>(page.width) * page.height, 255);
  for (BenchMark& mark : page.marks) {
    mark.color = 0xFF000000;
    const std::vector<double> covered = Meant(mark, page.width, page.height);
    std::transform(truth.begin(), truth.end(), covered.begin(), truth.begin(),
                   [](double shown, double share) { return shown * (1 - share); });
  }
  const std::vector<std::uint32_t> painted = Paint(page);
  Error error;
  double touched = 0;
  for (std::size_t i = 0; i < truth.size(); ++i) {
    const double off = std::abs((painted[i] & 0xFF) - truth[i]);
    touched += truth[i] < 255 ? 1 : 0;
    error.mean += off;
    error.farShare += off > 32 ? 1 : 0;
  }
  return {error.mean / touched, error.farShare / touched};
}

TEST(QualityTest, InkIsWithinALevelOrSoOfTheTruth) {
  const std::pair<Workload, double> cases[] = {
      {MakePaths("freehand", 640, 400, {120, 200, 6, 0xFF}), 0.5},
      {MakePaths("thin", 640, 400, {120, 200, 2, 0xFF}), 1.5},
      {MakeTorture("zigzags and U-turns", 960, 540, 120), 0.8}};
  for (const auto& [page, mean] : cases) {
    const Error error = ErrorOf(page);
    EXPECT_LE(error.mean, mean) << page.name;
    EXPECT_LE(error.farShare, 0.006) << page.name;
  }
}

// A stroke blends over itself nowhere: a translucent one shows two colours and what lies between.
TEST(QualityTest, ATranslucentStrokeNeverBlendsTwice) {
  Workload page = {"", 200, 200, {}};
  page.marks.push_back({AnnotationSubTypePath,
                        0x80000000,
                        12,
                        {{20, 100}, {180, 100}, {180, 60}, {100, 20}, {100, 180}, {99, 20}}});
  for (const std::uint32_t pixel : Paint(page)) {
    EXPECT_GE(pixel & 0xFF, 127U);
  }
}

struct JointError {
  double hole = 0;   // what is missing where the stroke covers the whole pixel
  double spike = 0;  // what is painted where it covers nothing
};

// At a joint behind which the stroke goes straight on to each of these distances.
JointError ErrorAt(int pen, int degrees, std::initializer_list<int> distances) {
  constexpr int kSide = 96;
  constexpr int kMiddle = 48;
  constexpr int kLength = 34;
  const double from = 0.3 + pen * 0.37;
  const double to = from + degrees * std::numbers::pi / 180;
  const auto at = [](double angle, int distance) {
    return POINT{kMiddle + static_cast<int>(std::lround(distance * std::cos(angle))),
                 kMiddle + static_cast<int>(std::lround(distance * std::sin(angle)))};
  };
  BenchMark line = {
      AnnotationSubTypePath, 0xFF000000, pen, {at(from, -kLength), {kMiddle, kMiddle}}};
  for (const int distance : distances) {
    line.points.push_back(at(to, distance));
  }
  const std::vector<std::uint32_t> pixels = Paint({"", kSide, kSide, {line}});
  const std::vector<double> truth = Meant(line, kSide, kSide);
  JointError error;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const double painted = 255 - static_cast<double>(pixels[i] & 0xFF);
    error.hole = std::max(error.hole, truth[i] > 0.9999 ? 255 - painted : 0);
    error.spike = std::max(error.spike, truth[i] == 0 ? painted : 0);
  }
  return error;
}

// A quarter of full coverage on one pixel of an edge is not seen; a seam through a stroke or a
// mitre that is a pixel too long would be more.
constexpr double kSeen = 64;

TEST(QualityTest, NoJointAtAnyAngleShowsAGapOrASpike) {
  constexpr int kLong = 34;
  for (int pen = 1; pen <= 30; ++pen) {
    for (int degrees = 0; degrees <= 180; ++degrees) {
      const JointError error = ErrorAt(pen, degrees, {kLong});
      EXPECT_LT(error.hole, kSeen) << "pen " << pen << ", " << degrees << " degrees";
      EXPECT_LT(error.spike, kSeen) << "pen " << pen << ", " << degrees << " degrees";
    }
  }
}

// A seam cuts off a corner of either segment, which lies on the other one only when that is long
// enough.
TEST(QualityTest, AStrokeThatEndsRightBehindAJointShowsNoGap) {
  for (const int pen : {6, 16, 30}) {
    for (int degrees = 5; degrees <= 90; degrees += 5) {
      for (int length = 1; length <= pen / 2; ++length) {
        const JointError atOnce = ErrorAt(pen, degrees, {length});
        const JointError stepLater = ErrorAt(pen, degrees, {length, length + 2});
        EXPECT_LT(std::max(atOnce.hole, stepLater.hole), kSeen)
            << "pen " << pen << ", " << degrees << " degrees, " << length << " px";
      }
    }
  }
}

TEST(QualityTest, EveryInstructionSetPaintsTheSame) {
  const Workload page = MakeTorture("", 640, 400, 90);
  const std::vector<std::uint32_t> best = Paint(page);
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    hwy::SetSupportedTargetsForTest(target);
    EXPECT_EQ(Paint(page), best) << hwy::TargetName(target);
  }
  hwy::SetSupportedTargetsForTest(0);
}

TEST(QualityTest, ALineFromFarAwayIsPaintedFromWhereItComesNear) {
  constexpr int kSide = 64;
  const auto paint = [](const std::vector<POINT>& points) {
    return Paint({"", kSide, kSide, {{AnnotationSubTypePath, 0xFF000000, 9, points}}});
  };
  const std::vector<std::uint32_t> whole = paint({{kSide + 100, 30}, {10, 30}, {10, 50}});
  for (int at = kSide + raster::kGuardBand - 1; at <= kSide + raster::kGuardBand + 1; ++at) {
    EXPECT_EQ(paint({{at + 100, 30}, {at, 30}, {10, 30}, {10, 50}}), whole) << at;
  }
}

// The pixels around the surface stand in for whoever owns the memory there.
TEST(QualityTest, HostileGeometryNeverLeavesTheSurface) {
  constexpr int kSide = 64;
  constexpr int kFrame = 16;
  constexpr int kStride = kSide + 2 * kFrame;
  constexpr std::int32_t kLow = INT32_MIN;
  constexpr std::int32_t kHigh = INT32_MAX;
  std::vector<std::uint32_t> pixels(kStride * kStride, 0xCAFEBABE);
  Rasterizer rasterizer;
  rasterizer.SetTarget({pixels.data() + kFrame * kStride + kFrame, kSide, kSide, kStride},
                       {-5, -5, kSide + 5, kSide + 5});
  const std::vector<std::vector<GridPoint>> lines = {
      {{kLow, kLow}, {kHigh, kHigh}, {kLow, kHigh}, {kHigh, kLow}},
      {{kLow, 30}, {kHigh, 30}},
      {{-1, -1}, {64, 64}, {63, 0}, {kHigh, 1}, {0, 63}},
      {{kHigh, kHigh}, {kHigh, kHigh}},
      {{63, 63}},
      std::vector<GridPoint>(1'000'000, {32, 32})};
  for (const auto& line : lines) {
    for (const float pen : {1.0F, 30.0F, -4.0F, 1e30F, std::nanf("")}) {
      rasterizer.Stroke(line, false, pen, 0x40FF0000);
      rasterizer.Stroke(line, true, pen, 0x40FF0000);
    }
  }
  rasterizer.StrokeEllipse({kLow, kLow, kHigh, kHigh}, 30, 0xFF000000);
  rasterizer.StrokeEllipse({10, kLow, 40, -1}, 30, 0xFF000000);
  rasterizer.StrokeEllipse({-1000000000, 20, 1000000000, 29}, 3, 0xFF000000);
  rasterizer.Fill({kLow, kLow, kHigh, kHigh}, 0xFF00FF00);
  rasterizer.Fill(PixelRect::OfSize(kHigh, kHigh, kHigh, kHigh), 0xFF00FF00);
  for (int y = 0; y < kStride; ++y) {
    for (int x = 0; x < kStride; ++x) {
      const bool inside = x >= kFrame && x < kFrame + kSide && y >= kFrame && y < kFrame + kSide;
      EXPECT_TRUE(inside || pixels[static_cast<std::size_t>(y) * kStride + x] == 0xCAFEBABE);
    }
  }
}

// Where the middle of a destination's pixel lies among `count` source pixels.
double SourcePlace(int index, std::int64_t count, std::int64_t length) {
  const auto sourceCount = static_cast<double>(count);
  const double place = (index + 0.5) * sourceCount / static_cast<double>(length) - 0.5;
  return std::clamp(place, 0.0, sourceCount - 1);
}

TEST(QualityTest, AStretchedPictureIsBilinear) {
  constexpr int kWidth = 13;
  constexpr int kHeight = 9;
  std::mt19937 random(5);
  std::vector<std::uint32_t> picture(std::size_t{kWidth} * kHeight);
  std::generate(picture.begin(), picture.end(), [&] { return 0xFF000000 | random(); });
  std::vector<std::uint32_t> pixels(64 * 48);
  const PixelSurface surface = {pixels.data(), 64, 48, 64};
  for (const PixelRect& from : {PixelRect{0, 0, kWidth, kHeight}, {3, 2, 12, 8}, {5, 4, 6, 5}}) {
    const auto channel = [&](double x, double y, int shift) {
      const int row = std::min(from.top + static_cast<int>(y), from.bottom - 1);
      const int column = std::min(from.left + static_cast<int>(x), from.right - 1);
      return static_cast<double>(picture[std::size_t{kWidth} * row + column] >> shift & 255);
    };
    for (const PixelRect& to : {PixelRect{-7, -5, 60, 47}, {4, 3, 11, 10}, {0, 0, 13, 9}}) {
      const PixelRect shown = Intersect(to, {2, 1, 50, 40});
      raster::StretchPicture({picture.data(), kWidth, kHeight}, from, to, shown, surface);
      for (int y = shown.top; y < shown.bottom; ++y) {
        for (int x = shown.left; x < shown.right; ++x) {
          const double column = SourcePlace(x - to.left, from.Width(), to.Width());
          const double row = SourcePlace(y - to.top, from.Height(), to.Height());
          const int shift = 8 * (x % 4);
          const double upper = std::lerp(channel(column, row, shift),
                                         channel(column + 1, row, shift), std::fmod(column, 1));
          const double lower = std::lerp(channel(column, row + 1, shift),
                                         channel(column + 1, row + 1, shift), std::fmod(column, 1));
          ASSERT_NEAR(std::lerp(upper, lower, std::fmod(row, 1)), surface.Row(y)[x] >> shift & 255,
                      3)
              << x << ", " << y;
        }
      }
    }
  }
}

}  // namespace
