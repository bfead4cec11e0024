#include "platform/graphics/raster/Rasterizer.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/raster/Blend.h"
#include "platform/graphics/raster/Dot.h"

namespace raster {

float UsableWidth(float penWidth) {
  return std::isnan(penWidth) ? kThinnestPen : std::clamp(penWidth, kThinnestPen, kWidestPen);
}

void Rasterizer::SetTarget(const PixelSurface& newSurface, const PixelRect& newClip) {
  surface = newSurface;
  clip = Intersect(newClip, surface.Bounds());
  if (!clip.IsEmpty()) {
    plane.SetClip(clip);
  }
}

void Rasterizer::Stroke(std::span<const GridPoint> points, bool closed, float penWidth,
                        std::uint32_t argb, std::span<const PixelRect> parts) {
  const Ink ink = MakeInk(argb);
  if (points.empty() || clip.IsEmpty() || ink.invisible) {
    return;
  }
  const float width = UsableWidth(penWidth);
  stroker.Begin(surface.Bounds(), width);
  if (!stroker.Cover(points, closed, parts)) {
    CoverDot(points.front(), width / 2, plane);
  }
  BlendMark(plane, ink, surface);
}

void Rasterizer::StrokeEllipse(std::int32_t x, std::int32_t y, std::int32_t width,
                               std::int32_t height, float penWidth, std::uint32_t argb) {
  const Ink ink = MakeInk(argb);
  if (clip.IsEmpty() || ink.invisible || width < 0 || height < 0) {
    return;
  }
  if (width == 0 || height == 0) {
    const auto end = [](std::int32_t from, std::int32_t extent) {
      return static_cast<std::int32_t>(
          std::min<std::int64_t>(std::int64_t{from} + extent, INT32_MAX));
    };
    const GridPoint ends[] = {{x, y}, {end(x, width), end(y, height)}};
    Stroke(ends, false, penWidth, argb);
    return;
  }
  stroker.Begin(surface.Bounds(), UsableWidth(penWidth));
  stroker.CoverEllipse(x, y, width, height);
  BlendMark(plane, ink, surface);
}

void Rasterizer::Fill(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                      std::uint32_t argb) {
  const Ink ink = MakeInk(argb);
  const auto cut = [](std::int64_t value, int low, int high) {
    return static_cast<int>(std::clamp<std::int64_t>(value, low, high));
  };
  const int left = cut(x, clip.left, clip.right);
  const int right = cut(std::int64_t{x} + width, clip.left, clip.right);
  const int top = cut(y, clip.top, clip.bottom);
  const int bottom = cut(std::int64_t{y} + height, clip.top, clip.bottom);
  if (ink.invisible || left >= right) {
    return;
  }
  for (int row = top; row < bottom; ++row) {
    BlendRun(ink, surface.Row(row) + left, static_cast<std::size_t>(right - left));
  }
}

void Rasterizer::Clear(std::uint32_t argb) {
  const std::uint32_t value = MakeInk(argb).premultiplied;
  for (int row = clip.top; row < clip.bottom; ++row) {
    std::fill_n(surface.Row(row) + clip.left, std::max(0, clip.Width()), value);
  }
}

}  // namespace raster
