#include "support/StrokeArea.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace {

using Spot = StrokeArea::Spot;

constexpr double kHalfDiagonal = 0.7072;  // of a pixel: farther off, no edge can cross it
constexpr double kMitreLimit = 10;

Spot Minus(Spot a, Spot b) {
  return {a.x - b.x, a.y - b.y};
}

double Dot(Spot a, Spot b) {
  return a.x * b.x + a.y * b.y;
}

double Length(Spot a) {
  return std::hypot(a.x, a.y);
}

double Distance(Spot pixel, Spot from, Spot to) {
  const Spot along = Minus(to, from);
  const double length = Dot(along, along);
  const double t = length == 0 ? 0 : std::clamp(Dot(Minus(pixel, from), along) / length, 0.0, 1.0);
  return Length(Minus(pixel, {from.x + t * along.x, from.y + t * along.y}));
}

}  // namespace

StrokeArea& StrokeArea::Add(Polyline polyline) {
  polylines.push_back(std::move(polyline));
  return *this;
}

StrokeArea& StrokeArea::Ellipse(double left, double top, double right, double bottom) {
  constexpr int kChords = 180;
  std::vector<Spot> spots;
  for (int i = 0; i < kChords; ++i) {
    const double angle = 2 * std::numbers::pi * i / kChords;
    spots.push_back({(left + right) / 2 + (right - left) / 2 * std::cos(angle),
                     (top + bottom) / 2 + (bottom - top) / 2 * std::sin(angle)});
  }
  return Closed(std::move(spots));
}

StrokeArea::Cover StrokeArea::At(int x, int y) const {
  Cover cover = Cover::kNone;
  for (const Polyline& polyline : polylines) {
    cover = std::max(cover, CoverOf(polyline, {static_cast<double>(x), static_cast<double>(y)}));
  }
  return cover;
}

StrokeArea::Cover StrokeArea::CoverOf(const Polyline& polyline, Spot pixel) const {
  const std::vector<Spot>& spots = polyline.spots;
  double nearest = INFINITY;
  for (std::size_t i = polyline.closed ? 0 : 1; i < spots.size(); ++i) {
    nearest =
        std::min(nearest, Distance(pixel, spots[i == 0 ? spots.size() - 1 : i - 1], spots[i]));
  }
  if (!polyline.closed) {
    for (const auto& [end, neighbour] :
         {std::pair(spots.front(), spots[1]), std::pair(spots.back(), spots[spots.size() - 2])}) {
      if (Length(Minus(pixel, end)) <= half + kHalfDiagonal) {
        return NearAnEnd(end, neighbour, pixel);
      }
    }
  }
  const Cover cover = nearest <= half - kHalfDiagonal  ? Cover::kFull
                      : nearest < half + kHalfDiagonal ? Cover::kSome
                                                       : Cover::kNone;
  return AtJoins(polyline, pixel, cover);
}

// The flat cap cuts the stroke off right at its end.
StrokeArea::Cover StrokeArea::NearAnEnd(Spot end, Spot neighbour, Spot pixel) const {
  const Spot inward = Minus(neighbour, end);
  const Spot offset = Minus(pixel, end);
  const double along = Dot(offset, inward) / Length(inward);
  const double across = std::sqrt(std::max(0.0, Dot(offset, offset) - along * along));
  if (along < -kHalfDiagonal) {
    return Cover::kNone;
  }
  const bool isWithin = along > kHalfDiagonal && across < half - kHalfDiagonal;
  return isWithin ? Cover::kFull : Cover::kSome;
}

StrokeArea::Cover StrokeArea::AtJoins(const Polyline& polyline, Spot pixel, Cover cover) const {
  const std::vector<Spot>& spots = polyline.spots;
  const std::size_t count = spots.size();
  const std::size_t skipped = polyline.closed ? 0 : 1;
  for (std::size_t i = skipped; i + skipped < count; ++i) {
    const Spot back = Minus(spots[(i + count - 1) % count], spots[i]);
    const Spot on = Minus(spots[(i + 1) % count], spots[i]);
    const double cosine = Dot(back, on) / (Length(back) * Length(on));
    const double sineOfHalf = std::sqrt(std::max(0.0, (1 - cosine) / 2));
    const bool isBevelled = sineOfHalf * kMitreLimit < 1;
    const double reach = (isBevelled ? half : half / sineOfHalf) + kHalfDiagonal;
    if (Length(Minus(pixel, spots[i])) < reach && (isBevelled || cover == Cover::kNone)) {
      return Cover::kSome;
    }
  }
  return cover;
}

namespace {

// Pixels that a slanted stroke just covers: the painter measures their coverage in steps of 1 / 255
// and may round it down by one.
constexpr int kCoverageStep = 1;

bool IsColor(std::uint32_t actual, std::uint32_t expected, int tolerance) {
  for (unsigned shift = 0; shift < 32; shift += 8) {
    const int difference =
        static_cast<int>(actual >> shift & 0xFFU) - static_cast<int>(expected >> shift & 0xFFU);
    if (std::abs(difference) > tolerance) {
      return false;
    }
  }
  return true;
}

}  // namespace

testing::AssertionResult IsInked(const Frame& frame, const StrokeArea& area, std::uint32_t ink,
                                 std::uint32_t background) {
  for (int y = 0; y < frame.height; ++y) {
    for (int x = 0; x < frame.width; ++x) {
      const StrokeArea::Cover cover = area.At(x, y);
      const bool isFull = cover == StrokeArea::Cover::kFull;
      const std::uint32_t expected = isFull ? ink : background;
      if (cover != StrokeArea::Cover::kSome &&
          !IsColor(frame.At(x, y), expected, isFull ? kCoverageStep : 0)) {
        return testing::AssertionFailure()
               << "pixel (" << x << ", " << y << ") is 0x" << std::hex << frame.At(x, y)
               << " instead of 0x" << expected << " in " << testing::PrintToString(frame);
      }
    }
  }
  return testing::AssertionSuccess();
}
