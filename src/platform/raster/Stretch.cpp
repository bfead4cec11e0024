#include "platform/raster/Stretch.h"

#include <hwy/cache_control.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/raster/StretchRows.h"

namespace raster {
namespace {

// Two neighbouring source positions, counted from the source rectangle's first one, and the second
// one's weight in 256ths: 0 for the last position, which has no neighbour.
struct Tap {
  int first;
  int weight;
};

// The destination pixel at `index` has its centre at (index + 0.5) * source / destination of the
// source, whose pixel i has its own at i + 0.5. Past the outermost centres the edge pixel counts
// alone.
Tap TapFor(std::int64_t index, std::int64_t sourceLength, std::int64_t destinationLength) {
  const double length = static_cast<double>(sourceLength);
  const double centre =
      (static_cast<double>(index) + 0.5) * length / static_cast<double>(destinationLength) - 0.5;
  const double clamped = std::clamp(centre, 0.0, length - 1);
  const int first = static_cast<int>(clamped);
  return {first, static_cast<int>((clamped - first) * 256.0)};
}

// A rectangle of a picture, its rows stretched to the columns that are shown. Keeps the last two:
// going down the destination, every source row is stretched once.
class StretchedRows {
 public:
  StretchedRows(const PixelSource& picture, const PixelRect& source, const PixelRect& destination,
                const PixelRect& shown)
      : picture(picture), source(source) {
    const auto columns = static_cast<std::size_t>(shown.Width());
    count = (columns + kStretchStep - 1) / kStretchStep * kStretchStep;
    first.resize(count);
    weights.resize(count + kStretchStep);
    const std::int64_t offset = std::int64_t{shown.left} - destination.left;
    const std::int64_t sourceWidth = source.Width();
    const std::int64_t width = destination.Width();
    for (std::size_t i = 0; i < count; ++i) {
      const Tap tap = TapFor(offset + static_cast<std::int64_t>(i), sourceWidth, width);
      first[i] = tap.first;
      weights[i] = static_cast<std::uint8_t>(tap.weight);
    }
    latest.pixels.resize(count);
    earlier.pixels.resize(count);
  }

  // Returns a row of the source rectangle; past the last one, the last. Valid until the second call
  // after this.
  const std::uint32_t* Get(int index) {
    const int wanted = std::min(source.top + index, source.bottom - 1);
    if (latest.y != wanted) {
      std::swap(latest, earlier);
    }
    if (latest.y != wanted) {
      Fill(latest, wanted);
    }
    return latest.pixels.data();
  }

 private:
  struct Row {
    int y = -1;
    std::vector<std::uint32_t> pixels;
  };

  void Fill(Row& row, int y) {
    const auto pictureWidth = static_cast<std::size_t>(picture.width);
    const std::size_t size = pictureWidth * static_cast<std::size_t>(picture.height);
    const std::size_t start =
        static_cast<std::size_t>(y) * pictureWidth + static_cast<std::size_t>(source.left);
    const auto width = static_cast<std::size_t>(source.Width());
    const std::uint32_t* pixels = picture.pixels + start;
    if (start + width + kStretchStep > size) {
      // Pixels past the last one are read, with weight 0.
      padded.assign(pixels, pixels + width);
      padded.resize(width + kStretchStep);
      pixels = padded.data();
    }
    // Fetches the row after the next: rows lie too far apart for the processor to predict.
    const std::size_t ahead = start + 2 * pictureWidth;
    if (ahead + width <= size) {
      constexpr std::size_t kCacheLine = 16;  // pixels
      for (std::size_t i = 0; i < width; i += kCacheLine) {
        hwy::Prefetch(picture.pixels + ahead + i);
      }
    }
    StretchRow(pixels, first.data(), weights.data(), count, row.pixels.data());
    row.y = y;
  }

  PixelSource picture;
  PixelRect source;
  std::size_t count = 0;
  std::vector<std::int32_t> first;
  std::vector<std::uint8_t> weights;
  std::vector<std::uint32_t> padded;
  Row latest, earlier;
};

}  // namespace

void StretchPicture(const PixelSource& picture, const PixelRect& source,
                    const PixelRect& destination, const PixelRect& shown,
                    const PixelSurface& surface) {
  if (shown.IsEmpty() || source.IsEmpty() || Intersect(source, picture.Bounds()) != source) {
    return;
  }
  StretchedRows rows(picture, source, destination, shown);
  const auto width = static_cast<std::size_t>(shown.Width());
  for (int y = shown.top; y < shown.bottom; ++y) {
    const Tap tap =
        TapFor(std::int64_t{y} - destination.top, source.Height(), destination.Height());
    const std::uint32_t* upper = rows.Get(tap.first);
    const std::uint32_t* lower = tap.weight == 0 ? upper : rows.Get(tap.first + 1);
    BlendMixedRows(upper, lower, tap.weight, surface.Row(y) + shown.left, width);
  }
}

}  // namespace raster
