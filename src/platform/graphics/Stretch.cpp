#include "platform/graphics/Stretch.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

// Two neighbouring source positions and the second one's weight in 256ths.
struct Tap {
  int first;
  int second;
  std::uint32_t weight;
};

// The destination pixel at `index` has its centre at (index + 0.5) * source / destination of the
// source, whose pixel i has its own at i + 0.5. Past the outermost centres the edge pixel counts
// alone.
Tap TapFor(std::int64_t index, int sourceStart, int sourceLength, int destinationLength) {
  const double centre = (static_cast<double>(index) + 0.5) * sourceLength / destinationLength - 0.5;
  const double clamped = std::clamp(centre, 0.0, static_cast<double>(sourceLength - 1));
  const int first = static_cast<int>(clamped);
  const int second = std::min(first + 1, sourceLength - 1);
  const auto weight = static_cast<std::uint32_t>((clamped - first) * 256.0);
  return {sourceStart + first, sourceStart + second, weight};
}

// Mixes two premultiplied pixels, two channels at a time.
std::uint32_t Mix(std::uint32_t a, std::uint32_t b, std::uint32_t weight) {
  constexpr std::uint32_t kMask = 0x00FF00FF;
  constexpr std::uint32_t kHalf = 0x00800080;
  const auto mix = [&](std::uint32_t p, std::uint32_t q) {
    return ((p * (256 - weight) + q * weight + kHalf) >> 8) & kMask;
  };
  return mix(a & kMask, b & kMask) | (mix((a >> 8) & kMask, (b >> 8) & kMask) << 8);
}

std::uint32_t Over(std::uint32_t above, std::uint32_t below) {
  const std::uint32_t rest = 255 - (above >> 24);
  const auto scale = [&](std::uint32_t channels) {
    const std::uint32_t product = channels * rest + 0x00800080;
    return ((product + ((product >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF;
  };
  return above + (scale(below & 0x00FF00FF) | (scale((below >> 8) & 0x00FF00FF) << 8));
}

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
  std::vector<Tap> columns;
  columns.reserve(static_cast<std::size_t>(shown.right - shown.left));
  for (int x = shown.left; x < shown.right; ++x) {
    columns.push_back(
        TapFor(std::int64_t{x} - destination.x, source.x, source.width, destination.width));
  }
  const auto rowOf = [&](int y) {
    return picture.pixels.data() +
           static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
  };
  for (int y = shown.top; y < shown.bottom; ++y) {
    const Tap row =
        TapFor(std::int64_t{y} - destination.y, source.y, source.height, destination.height);
    const std::uint32_t* upper = rowOf(row.first);
    const std::uint32_t* lower = rowOf(row.second);
    std::uint32_t* out = surface.pixels +
                         static_cast<std::size_t>(y) * static_cast<std::size_t>(surface.width) +
                         shown.left;
    for (const Tap& column : columns) {
      const std::uint32_t top = Mix(upper[column.first], upper[column.second], column.weight);
      const std::uint32_t bottom = Mix(lower[column.first], lower[column.second], column.weight);
      *out = Over(Mix(top, bottom, row.weight), *out);
      ++out;
    }
  }
}
