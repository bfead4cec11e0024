#include "platform/graphics/Stretch.h"

#include <hwy/cache_control.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/graphics/raster/StretchRows.h"

namespace {

// Two neighbouring source positions, counted from the part's first one, and the second one's share
// in 256ths: 0 for the last position, which has no neighbour.
struct Tap {
  int first;
  int weight;
};

// The destination pixel at `index` has its centre at (index + 0.5) * source / destination of the
// source, whose pixel i has its own at i + 0.5. Past the outermost centres the edge pixel counts
// alone.
Tap TapFor(std::int64_t index, int sourceLength, int destinationLength) {
  const double centre = (static_cast<double>(index) + 0.5) * sourceLength / destinationLength - 0.5;
  const double clamped = std::clamp(centre, 0.0, static_cast<double>(sourceLength - 1));
  const int first = static_cast<int>(clamped);
  return {first, static_cast<int>((clamped - first) * 256.0)};
}

// The part of a picture, its rows widened to the columns that are shown. Keeps the last two: going
// down the destination, every source row is widened once.
class WideRows {
 public:
  WideRows(const Picture& picture, const PixelBox& source, const PixelBox& destination, int left,
           int right)
      : picture(picture), source(source) {
    const auto shown = static_cast<std::size_t>(right - left);
    count = (shown + raster::kStretchStep - 1) / raster::kStretchStep * raster::kStretchStep;
    first.resize(count);
    shares.resize(count + raster::kStretchStep);
    for (std::size_t i = 0; i < count; ++i) {
      const auto x = static_cast<std::int64_t>(left) + static_cast<std::int64_t>(i);
      const Tap tap = TapFor(x - destination.x, source.width, destination.width);
      first[i] = tap.first;
      shares[i] = static_cast<std::uint8_t>(tap.weight);
    }
    latest.pixels.resize(count);
    earlier.pixels.resize(count);
  }

  // A row of the part; one past the last is the last. Valid until the second call after this one.
  const std::uint32_t* Get(int index) {
    const int wanted = std::min(index, source.height - 1);
    if (latest.index != wanted) {
      std::swap(latest, earlier);
    }
    if (latest.index != wanted) {
      Widen(wanted, latest);
    }
    return latest.pixels.data();
  }

 private:
  struct Row {
    int index = -1;
    std::vector<std::uint32_t> pixels;
  };

  void Widen(int index, Row& row) {
    const auto start =
        static_cast<std::size_t>(source.y + index) * static_cast<std::size_t>(picture.width) +
        static_cast<std::size_t>(source.x);
    const auto width = static_cast<std::size_t>(source.width);
    const std::uint32_t* pixels = picture.pixels.data() + start;
    if (start + width + raster::kStretchStep > picture.pixels.size()) {
      // What lies behind the last pixel is read, though it counts for nothing.
      padded.assign(pixels, pixels + width);
      padded.resize(width + raster::kStretchStep);
      pixels = padded.data();
    }
    // The row that is wanted next but one: rows lie too far apart for the processor to foresee.
    const std::size_t ahead = start + 2 * static_cast<std::size_t>(picture.width);
    if (ahead + width <= picture.pixels.size()) {
      constexpr std::size_t kCacheLine = 16;  // pixels
      for (std::size_t i = 0; i < width; i += kCacheLine) {
        hwy::Prefetch(picture.pixels.data() + ahead + i);
      }
    }
    raster::WidenRow(pixels, first.data(), shares.data(), count, row.pixels.data());
    row.index = index;
  }

  const Picture& picture;
  PixelBox source;
  std::size_t count = 0;
  std::vector<std::int32_t> first;
  std::vector<std::uint8_t> shares;
  std::vector<std::uint32_t> padded;
  Row latest, earlier;
};

bool IsWithin(const PixelBox& part, const Picture& picture) {
  return part.x >= 0 && part.y >= 0 && part.width > 0 && part.height > 0 &&
         part.width <= picture.width - part.x && part.height <= picture.height - part.y;
}

}  // namespace

PixelArea ClipToSurface(int x, int y, int width, int height, const PixelView& surface) {
  if (width <= 0 || height <= 0) {
    return {};
  }
  const auto limit = [](std::int64_t value, int most) {
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, most));
  };
  return {limit(x, surface.width), limit(y, surface.height),
          limit(std::int64_t{x} + width, surface.width),
          limit(std::int64_t{y} + height, surface.height)};
}

void StretchPicture(const Picture& picture, const PixelBox& source, const PixelBox& destination,
                    const PixelArea& shown, const PixelView& surface) {
  if (shown.IsEmpty() || !IsWithin(source, picture)) {
    return;
  }
  WideRows rows(picture, source, destination, shown.left, shown.right);
  const auto width = static_cast<std::size_t>(shown.right - shown.left);
  for (int y = shown.top; y < shown.bottom; ++y) {
    const Tap tap = TapFor(std::int64_t{y} - destination.y, source.height, destination.height);
    const std::uint32_t* upper = rows.Get(tap.first);
    const std::uint32_t* lower = tap.weight == 0 ? upper : rows.Get(tap.first + 1);
    std::uint32_t* out = surface.pixels +
                         static_cast<std::size_t>(y) * static_cast<std::size_t>(surface.width) +
                         shown.left;
    raster::BlendMixedRows(upper, lower, tap.weight, out, width);
  }
}
