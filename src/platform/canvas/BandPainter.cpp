#include "platform/canvas/BandPainter.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace canvas {
namespace {

// Small enough that a band stays in the processor's second-level cache while command after command
// is painted on it; large enough that few strokes reach into several.
constexpr int kBandHeight = 192;
constexpr int kBandWidth = 960;
// Fewer pixels than this are painted faster than another thread wakes up.
constexpr std::int64_t kPixelsWorthSharing = 200'000;

// Widened to whole columns of pixels, as coverage is kept in.
raster::PixelRect WholeColumns(const raster::PixelRect& rect) {
  constexpr int kLast = raster::kGroup - 1;
  return {rect.left & ~kLast, rect.top, (rect.right + kLast) & ~kLast, rect.bottom};
}

void PaintCommand(const CommandList& frame, const Command& command,
                  raster::Rasterizer& rasterizer) {
  const Style& style = command.style;
  switch (style.shape) {
    case Shape::kPolyline:
    case Shape::kPolygon:
      rasterizer.Stroke(frame.PointsOf(command), style.shape == Shape::kPolygon, style.penWidth,
                        style.argb,
                        frame.PartBoundsOf(command).first(command.isNear ? command.partCount : 0));
      break;
    case Shape::kEllipse:
      rasterizer.StrokeEllipse(command.box, style.penWidth, style.argb);
      break;
    case Shape::kFill:
      rasterizer.Fill(command.box, style.argb);
      break;
    case Shape::kPicture:
      rasterizer.DrawPicture(command.picture.view, command.source, command.box);
      break;
  }
}

}  // namespace

BandPainter::BandPainter(const raster::PixelSurface& surface, std::shared_ptr<WorkerPool> pool)
    : surface(surface), pool(std::move(pool)) {}

void BandPainter::Paint(const CommandList& frame, std::span<const raster::PixelRect> areas) {
  CutIntoBands(areas);
  std::int64_t pixels = 0;
  for (const raster::PixelRect& area : areas) {
    pixels += area.Width() * area.Height();
  }
  const int count = static_cast<int>(bands.size());
  const auto paint = [&](int worker, int band) {
    PaintBand(frame, bands[static_cast<std::size_t>(band)], RasterizerOf(worker));
  };
  if (pixels < kPixelsWorthSharing) {
    for (int band = 0; band < count; ++band) {
      paint(0, band);
    }
  } else {
    pool->Run(count, paint);
  }
}

void BandPainter::CutIntoBands(std::span<const raster::PixelRect> areas) {
  bands.clear();
  for (const raster::PixelRect& area : areas) {
    for (int top = area.top; top < area.bottom; top += kBandHeight) {
      for (int left = area.left; left < area.right; left += kBandWidth) {
        bands.push_back({left, top, std::min(left + kBandWidth, area.right),
                         std::min(top + kBandHeight, area.bottom)});
      }
    }
  }
}

raster::Rasterizer& BandPainter::RasterizerOf(int worker) {
  std::unique_ptr<raster::Rasterizer>& own = rasterizers[static_cast<std::size_t>(worker)];
  if (own == nullptr) {
    own = std::make_unique<raster::Rasterizer>();
  }
  return *own;
}

void BandPainter::PaintBand(const CommandList& frame, const raster::PixelRect& band,
                            raster::Rasterizer& rasterizer) const {
  if (frame.IsCleared()) {
    rasterizer.SetTarget(surface, band);
    rasterizer.Clear(frame.ClearColor());
  }
  for (const Command& command : frame.Commands()) {
    // A small clip keeps a command's coverage in the processor's first-level cache.
    const raster::PixelRect clip = Intersect(WholeColumns(command.bounds), band);
    if (!clip.IsEmpty()) {
      rasterizer.SetTarget(surface, clip);
      PaintCommand(frame, command, rasterizer);
    }
  }
}

}  // namespace canvas
