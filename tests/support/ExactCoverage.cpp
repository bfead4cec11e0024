#include "support/ExactCoverage.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace exact {
namespace {

constexpr int kSamples = 16;
constexpr double kMitreLimit = 10;

Corner operator+(Corner a, Corner b) {
  return {a.x + b.x, a.y + b.y};
}
Corner operator-(Corner a, Corner b) {
  return {a.x - b.x, a.y - b.y};
}
Corner operator*(double k, Corner c) {
  return {k * c.x, k * c.y};
}
double Dot(Corner a, Corner b) {
  return a.x * b.x + a.y * b.y;
}
double Cross(Corner a, Corner b) {
  return a.x * b.y - a.y * b.x;
}

Corner Direction(Corner from, Corner to) {
  const Corner d = to - from;
  return (1 / std::hypot(d.x, d.y)) * d;
}

void AddSegment(Corner from, Corner to, double half, std::vector<Polygon>& polygons) {
  const Corner t = Direction(from, to);
  const Corner n = half * Corner{-t.y, t.x};
  polygons.push_back({from + n, to + n, to - n, from - n});
}

void AddJoint(Corner at, Corner before, Corner after, double half, std::vector<Polygon>& polygons) {
  const double cross = Cross(before, after);
  const double side = cross > 0 ? -half : half;
  const Corner a = at + side * Corner{-before.y, before.x};
  const Corner b = at + side * Corner{-after.y, after.x};
  // The mitre's length over the pen's width is 1 / cos(turn / 2).
  const double halfCosine = std::sqrt(std::max(0.0, (1 + Dot(before, after)) / 2));
  if (halfCosine * kMitreLimit >= 1) {
    const Corner middle = 0.5 * (a + b) - at;
    const Corner tip = at + (half * half / Dot(middle, middle)) * middle;
    polygons.push_back({at, a, tip, b});
  } else {
    polygons.push_back({at, a, b});
  }
}

std::vector<Corner> Distinct(std::vector<Corner> line, bool closed) {
  line.erase(std::unique(line.begin(), line.end()), line.end());
  while (closed && line.size() > 1 && line.back() == line.front()) {
    line.pop_back();
  }
  return line;
}

struct Range {
  double low = 1e300;
  double high = -1e300;
};

// Where the horizontal line at `y` meets a convex polygon.
Range Across(const Polygon& polygon, double y) {
  Range range;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Corner& a = polygon[i];
    const Corner& b = polygon[(i + 1) % polygon.size()];
    if ((a.y <= y) != (b.y <= y)) {
      const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x);
      range.low = std::min(range.low, x);
      range.high = std::max(range.high, x);
    }
  }
  return range;
}

// One line of sample points over the page, a bit each.
class SampleLine {
 public:
  explicit SampleLine(int width) : bits(static_cast<std::size_t>(width)) {}

  void Clear() { std::fill(bits.begin(), bits.end(), std::uint16_t{0}); }
  // Sets the points between the two places; pixel p reaches from p - 1/2 to p + 1/2.
  void Set(const Range& range) {
    const double count = static_cast<double>(bits.size()) * kSamples;
    const auto index = [&](double x) {
      return static_cast<long>(std::clamp(std::ceil((x + 0.5) * kSamples - 0.5), 0.0, count));
    };
    for (long i = index(range.low), end = index(range.high); i < end;) {
      if (i % kSamples == 0 && i + kSamples <= end) {
        bits[static_cast<std::size_t>(i / kSamples)] = 0xFFFF;
        i += kSamples;
      } else {
        bits[static_cast<std::size_t>(i / kSamples)] |=
            static_cast<std::uint16_t>(1U << (i % kSamples));
        ++i;
      }
    }
  }
  int Count(int pixel) const { return std::popcount(bits[static_cast<std::size_t>(pixel)]); }

 private:
  std::vector<std::uint16_t> bits;
};

// The polygons by the rows of pixels that they reach into.
std::vector<std::vector<const Polygon*>> ByRow(std::span<const Polygon> polygons, int height) {
  std::vector<std::vector<const Polygon*>> rows(static_cast<std::size_t>(height));
  for (const Polygon& polygon : polygons) {
    Range range;
    for (const Corner& corner : polygon) {
      range = {std::min(range.low, corner.y), std::max(range.high, corner.y)};
    }
    const double top = std::clamp(std::floor(range.low), 0.0, static_cast<double>(height));
    const double bottom = std::clamp(std::ceil(range.high) + 1, 0.0, static_cast<double>(height));
    for (auto row = static_cast<std::size_t>(top); row < static_cast<std::size_t>(bottom); ++row) {
      rows[row].push_back(&polygon);
    }
  }
  return rows;
}

}  // namespace

std::vector<Polygon> StrokePolygons(const std::vector<Corner>& points, bool closed, double width) {
  std::vector<Polygon> polygons;
  const std::vector<Corner> line = Distinct(points, closed);
  const std::size_t count = line.size();
  if (count < 2) {
    return polygons;
  }
  const auto at = [&](std::size_t i) { return line[i % count]; };
  for (std::size_t i = 0; i + 1 < count + (closed ? 1 : 0); ++i) {
    AddSegment(at(i), at(i + 1), width / 2, polygons);
  }
  for (std::size_t i = closed ? 0 : 1; i < count - (closed ? 0 : 1); ++i) {
    AddJoint(at(i), Direction(at(i + count - 1), at(i)), Direction(at(i), at(i + 1)), width / 2,
             polygons);
  }
  return polygons;
}

std::vector<double> Coverage(std::span<const Polygon> polygons, int width, int height) {
  std::vector<double> coverage(static_cast<std::size_t>(width) * height);
  const auto rows = ByRow(polygons, height);
  SampleLine line(width);
  for (int y = 0; y < height; ++y) {
    const auto& here = rows[static_cast<std::size_t>(y)];
    for (int sample = 0; sample < kSamples && !here.empty(); ++sample) {
      line.Clear();
      for (const Polygon* polygon : here) {
        line.Set(Across(*polygon, y - 0.5 + (sample + 0.5) / kSamples));
      }
      for (int x = 0; x < width; ++x) {
        coverage[static_cast<std::size_t>(y) * width + x] +=
            line.Count(x) / static_cast<double>(kSamples * kSamples);
      }
    }
  }
  return coverage;
}

Canvas::Canvas(int width, int height, std::uint32_t argb)
    : width(width),
      height(height),
      pixels(static_cast<std::size_t>(width) * height),
      touched(pixels.size()) {
  Blend(std::vector<double>(pixels.size(), 1.0), argb);
  std::fill(touched.begin(), touched.end(), char{0});
}

void Canvas::Blend(std::span<const double> coverage, std::uint32_t argb) {
  const double alpha = (argb >> 24) / 255.0;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    if (coverage[i] == 0) {
      continue;
    }
    touched[i] = 1;
    for (std::size_t channel = 0; channel < 4; ++channel) {
      const double value = channel == 3 ? 255 : argb >> (8 * channel) & 0xFF;
      pixels[i][channel] += coverage[i] * alpha * (value - pixels[i][channel]);
    }
  }
}

Error Compare(const Canvas& truth, const raster::PixelSurface& painted) {
  Error error;
  double pixels = 0;
  double far = 0;
  for (int y = 0; y < truth.Height(); ++y) {
    for (int x = 0; x < truth.Width(); ++x) {
      if (!truth.IsTouched(x, y)) {
        continue;
      }
      double most = 0;
      for (unsigned channel = 0; channel < 3; ++channel) {
        const double value = painted.Row(y)[x] >> (8 * channel) & 0xFF;
        const double off = std::abs(value - truth.At(x, y)[channel]);
        error.mean += off;
        most = std::max(most, off);
      }
      pixels += 1;
      far += most > 32 ? 1 : 0;
      error.worst = std::max(error.worst, most);
    }
  }
  if (pixels > 0) {
    error.mean /= 3 * pixels;
    error.farShare = far / pixels;
  }
  return error;
}

}  // namespace exact
