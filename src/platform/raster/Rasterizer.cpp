#include "platform/raster/Rasterizer.h"

#include <algorithm>

#include "platform/raster/Blend.h"
#include "platform/raster/Cover.h"
#include "platform/raster/Stretch.h"
#include "platform/raster/StrokeRules.h"

namespace raster {

void Rasterizer::SetTarget(const PixelSurface& newSurface, const PixelRect& newClip) {
  surface = newSurface;
  clip = Intersect(newClip, surface.Bounds());
  if (!clip.IsEmpty()) {
    mask.SetClip(clip);
  }
}

void Rasterizer::Stroke(std::span<const GridPoint> points, bool closed, float penWidth,
                        std::uint32_t argb, std::span<const PixelRect> parts) {
  const Ink ink = MakeInk(argb);
  if (points.empty() || clip.IsEmpty() || ink.invisible) {
    return;
  }
  const float width = ClampPenWidth(penWidth);
  stroker.Begin(surface.Bounds(), width);
  if (!stroker.Cover(points, closed, parts)) {
    CoverDot(points.front(), width / 2, mask);
  }
  BlendMask(mask, ink, surface);
}

void Rasterizer::StrokeEllipse(const PixelRect& box, float penWidth, std::uint32_t argb) {
  const Ink ink = MakeInk(argb);
  if (clip.IsEmpty() || ink.invisible || box.right < box.left || box.bottom < box.top) {
    return;
  }
  if (box.IsEmpty()) {
    const GridPoint ends[] = {{box.left, box.top}, {box.right, box.bottom}};
    Stroke(ends, false, penWidth, argb);
    return;
  }
  stroker.Begin(surface.Bounds(), ClampPenWidth(penWidth));
  stroker.CoverEllipse(box);
  BlendMask(mask, ink, surface);
}

void Rasterizer::Fill(const PixelRect& rect, std::uint32_t argb) {
  const Ink ink = MakeInk(argb);
  const PixelRect shown = Intersect(rect, clip);
  if (ink.invisible || shown.IsEmpty()) {
    return;
  }
  for (int row = shown.top; row < shown.bottom; ++row) {
    BlendSpan(ink, surface.Row(row) + shown.left, static_cast<std::size_t>(shown.Width()));
  }
}

void Rasterizer::DrawPicture(const PixelSource& picture, const PixelRect& source,
                             const PixelRect& destination) {
  StretchPicture(picture, source, destination, Intersect(destination, clip), surface);
}

void Rasterizer::Clear(std::uint32_t argb) {
  const std::uint32_t value = MakeInk(argb).premultiplied;
  for (int row = clip.top; row < clip.bottom; ++row) {
    std::fill_n(surface.Row(row) + clip.left, std::max<std::int64_t>(0, clip.Width()), value);
  }
}

}  // namespace raster
