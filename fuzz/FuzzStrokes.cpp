// Feeds the painter with marks of any geometry. Ink stays on the surface, near its mark and within
// its colour, and the pixels are the same whether the page is painted at once or in tiles.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

#include "platform/raster/Rasterizer.h"
#include "platform/raster/StrokeRules.h"

namespace {

using raster::GridPoint;
using raster::PixelRect;

constexpr int kWidth = 75;
constexpr int kHeight = 41;
constexpr int kStride = kWidth + 9;  // what lies past a row's end is nobody's
constexpr std::uint32_t kUntouched = 0x12345678;
constexpr std::size_t kMostPoints = 40;
// A mitre reaches ten half widths; smoothing another pixel or so.
constexpr float kReach = 10;
constexpr std::int64_t kFringe = 2;

void Require(bool isTrue) {
  if (!isTrue) {
    std::abort();
  }
}

// The fuzzer's bytes, and zeros after them.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : left(data, size) {}

  bool IsEmpty() const { return left.empty(); }
  template <class Value>
  Value Take() {
    Value value{};
    const std::size_t count = std::min(sizeof(Value), left.size());
    std::memcpy(&value, left.data(), count);
    left = left.subspan(count);
    return value;
  }
  // Mostly near the surface, sometimes anywhere.
  std::int32_t TakeCoordinate(int extent) {
    const auto kind = Take<std::uint8_t>();
    return kind < 16 ? Take<std::int32_t>() : Take<std::uint8_t>() % (2 * extent) - extent / 2;
  }

 private:
  std::span<const std::uint8_t> left;
};

struct Shape {
  enum Kind { kOpen, kClosed, kEllipse, kFilled };
  int kind;
  float width;
  std::uint32_t color;
  std::vector<GridPoint> points;

  void Paint(raster::Rasterizer& rasterizer) const {
    const GridPoint at = points[0];
    const GridPoint extent = points[1];
    if (kind == kEllipse) {
      rasterizer.StrokeEllipse(PixelRect::OfSize(at.x, at.y, extent.x, extent.y), width, color);
    } else if (kind == kFilled) {
      rasterizer.Fill(PixelRect::OfSize(at.x, at.y, extent.x, extent.y), color);
    } else {
      rasterizer.Stroke(points, kind == kClosed, width, color);
    }
  }

  // The pixels that a stroke may show on; all of them for what is no stroke.
  PixelRect Reach() const {
    const PixelRect all = {0, 0, kWidth, kHeight};
    if (kind > kClosed) {
      return all;
    }
    const auto reach =
        static_cast<std::int64_t>(raster::ClampPenWidth(width) / 2 * kReach) + kFringe;
    std::int64_t left = kWidth, right = 0, top = kHeight, bottom = 0;
    for (const GridPoint& point : points) {
      left = std::min(left, point.x - reach);
      right = std::max(right, point.x + reach + 1);
      top = std::min(top, point.y - reach);
      bottom = std::max(bottom, point.y + reach + 1);
    }
    const auto limit = [](std::int64_t value, int most) {
      return static_cast<int>(std::clamp<std::int64_t>(value, 0, most));
    };
    return {limit(left, kWidth), limit(top, kHeight), limit(right, kWidth), limit(bottom, kHeight)};
  }
};

Shape TakeShape(Bytes& bytes) {
  Shape shape{bytes.Take<std::uint8_t>() % 4, bytes.Take<float>(), bytes.Take<std::uint32_t>(), {}};
  const std::size_t count = 2 + bytes.Take<std::uint8_t>() % (kMostPoints - 1);
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t x = bytes.TakeCoordinate(kWidth);
    shape.points.push_back({x, bytes.TakeCoordinate(kHeight)});
  }
  return shape;
}

class Sheet {
 public:
  void Paint(const std::vector<Shape>& shapes, const PixelRect& clip) {
    rasterizer.SetTarget({pixels.data(), kWidth, kHeight, kStride}, clip);
    rasterizer.Clear(0);
    for (const Shape& shape : shapes) {
      shape.Paint(rasterizer);
    }
  }
  std::uint32_t At(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * kStride + static_cast<std::size_t>(x)];
  }
  bool operator==(const Sheet& other) const { return pixels == other.pixels; }

 private:
  raster::Rasterizer rasterizer;
  std::vector<std::uint32_t> pixels =
      std::vector<std::uint32_t>(std::size_t{kStride} * kHeight, kUntouched);
};

void RequirePixels(const Sheet& sheet, const std::vector<Shape>& shapes) {
  PixelRect reach = shapes[0].Reach();
  for (const Shape& shape : shapes) {
    reach = raster::Unite(reach, shape.Reach());
  }
  for (int y = 0; y < kHeight; ++y) {
    for (int x = kWidth; x < kStride; ++x) {
      Require(sheet.At(x, y) == kUntouched);
    }
    for (int x = 0; x < kWidth; ++x) {
      const std::uint32_t pixel = sheet.At(x, y);
      const std::uint32_t alpha = pixel >> 24;
      Require(std::max({pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF}) <= alpha);
      const bool isNear = x >= reach.left && x < reach.right && y >= reach.top && y < reach.bottom;
      Require(isNear || pixel == 0);
      // A mark never blends over itself.
      Require(shapes.size() > 1 || alpha <= shapes[0].color >> 24);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  const int splitX = bytes.Take<std::uint8_t>() % kWidth;
  const int splitY = bytes.Take<std::uint8_t>() % kHeight;
  std::vector<Shape> shapes;
  do {
    shapes.push_back(TakeShape(bytes));
  } while (!bytes.IsEmpty());
  Sheet whole;
  whole.Paint(shapes, {0, 0, kWidth, kHeight});
  RequirePixels(whole, shapes);
  Sheet tiled;
  tiled.Paint(shapes, {0, 0, splitX, splitY});
  tiled.Paint(shapes, {splitX, 0, kWidth, splitY});
  tiled.Paint(shapes, {0, splitY, splitX, kHeight});
  tiled.Paint(shapes, {splitX, splitY, kWidth, kHeight});
  Require(whole == tiled);
  return 0;
}
