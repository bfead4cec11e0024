#include "platform/graphics/canvas/Frame.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "platform/graphics/canvas/Hash.h"
#include "platform/graphics/canvas/LinePart.h"
#include "platform/graphics/Stretch.h"

namespace canvas {
namespace {

// Small enough that a band stays in the processor's second-level cache while mark after mark is
// painted on it; large enough that few marks reach into several.
constexpr int kBandRows = 192;
constexpr int kBandColumns = 960;
// Fewer pixels than this are painted faster than another thread wakes up.
constexpr int kPixelsWorthSharing = 200'000;

// How far ink reaches beyond the points that it goes through.
int MarginOf(float penWidth, bool sharp) {
  constexpr int kFringe = 2;
  return static_cast<int>(std::ceil(penWidth / 2 * (sharp ? 10.0F : 1.5F))) + kFringe;
}

// Widened to whole columns of pixels as coverage is kept in.
raster::PixelRect WholeColumns(const raster::PixelRect& rect) {
  constexpr int kLast = raster::kGroup - 1;
  return {rect.left & ~kLast, rect.top, (rect.right + kLast) & ~kLast, rect.bottom};
}

std::uint64_t HashOf(const Box& box) {
  return Mix(Mix(1, Pair(box.x, box.y)), Pair(box.width, box.height));
}

std::uint64_t StyleOf(const Command& command) {
  const auto shape = static_cast<std::uint64_t>(command.shape);
  return Finish(Mix(Mix(shape + 1, command.argb), std::bit_cast<std::uint32_t>(command.penWidth)));
}

}  // namespace

Frame::Frame(const raster::PixelSurface& surface, int threads)
    : surface(surface), tiles(surface.width, surface.height), pool(threads) {
  for (int i = 0; i < pool.Threads(); ++i) {
    rasterizers.push_back(std::make_unique<raster::Rasterizer>());
  }
}

Frame::~Frame() = default;

void Frame::DropCommands() {
  for (Command& command : commands) {
    if (command.picture != nullptr) {
      pictures.push_back(std::move(command.picture));
    }
  }
  commands.clear();
  points.clear();
  parts.clear();
}

void Frame::Clear(std::uint32_t argb) {
  DropCommands();
  cleared = true;
  finished = false;
  clearColor = argb;
  tiles.StartOver(canvas::Finish(Mix(1, argb)));
}

Command& Frame::Add(Shape shape, std::uint32_t argb, float penWidth) {
  if (finished) {
    DropCommands();
    cleared = false;
    finished = false;
  }
  Command& command = commands.emplace_back();
  command.shape = shape;
  command.argb = argb;
  command.penWidth = raster::UsableWidth(penWidth);
  command.firstPoint = points.size();
  return command;
}

raster::PixelRect Frame::Reach(std::int64_t left, std::int64_t top, std::int64_t right,
                               std::int64_t bottom, int margin) const {
  const auto limit = [](std::int64_t value, int most) {
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, most));
  };
  return {limit(left - margin, surface.width), limit(top - margin, surface.height),
          limit(right + margin + 1, surface.width), limit(bottom + margin + 1, surface.height)};
}

void Frame::NoteBox(Command& command, std::uint64_t hash, int margin) {
  const Box& box = command.box;
  command.reach = Reach(box.x, box.y, std::int64_t{box.x} + box.width,
                        std::int64_t{box.y} + box.height, margin);
  tiles.BeginMark(StyleOf(command));
  tiles.AddPart(command.reach, Mix(hash, HashOf(box)));
}

void Frame::Stroke(std::span<const raster::GridPoint> line, bool closed, float penWidth,
                   std::uint32_t argb) {
  if (line.empty()) {
    return;
  }
  Command& command = Add(closed ? Shape::kPolygon : Shape::kPolyline, argb, penWidth);
  points.insert(points.end(), line.begin(), line.end());
  command.pointCount = line.size();
  NoteLine(command);
}

// A long line is noted part by part, so that a point added to its end changes the tiles around that
// end alone, and so that a band passes over the parts that it does not show.
void Frame::NoteLine(Command& command) {
  const std::span line = std::span(points).subspan(command.firstPoint, command.pointCount);
  const bool closed = command.shape == Shape::kPolygon;
  MeasureParts(line, closed ? line.size() : raster::kPartSegments, lineParts);
  tiles.BeginMark(StyleOf(command));
  command.firstPart = parts.size();
  command.reach = {surface.width, surface.height, 0, 0};
  bool isNear = !closed;
  for (const LinePart& part : lineParts) {
    const raster::PixelRect reach = Reach(part.low.x, part.low.y, part.high.x, part.high.y,
                                          MarginOf(command.penWidth, part.sharp || closed));
    parts.push_back(reach);
    isNear = isNear && raster::IsNear(part.low, part.high, surface.Bounds());
    if (!reach.IsEmpty()) {
      tiles.AddPart(reach, part.hash);
      command.reach = Unite(command.reach, reach);
    }
  }
  if (!isNear) {
    parts.resize(command.firstPart);
  }
  command.partCount = parts.size() - command.firstPart;
}

void Frame::StrokeEllipse(const Box& box, float penWidth, std::uint32_t argb) {
  Command& command = Add(Shape::kEllipse, argb, penWidth);
  command.box = box;
  // Where the outline bends tighter than the pen is wide, its joints may be as sharp as any.
  const double wide = std::max(box.width, box.height) / 2.0;
  const double narrow = std::min(box.width, box.height) / 2.0;
  const bool sharp = narrow * narrow < 2 * command.penWidth * wide;
  NoteBox(command, 1, MarginOf(command.penWidth, sharp));
}

void Frame::Fill(const Box& box, std::uint32_t argb) {
  Command& command = Add(Shape::kFill, argb, 1);
  command.box = box;
  NoteBox(command, 2, 0);
}

void Frame::DrawPicture(std::shared_ptr<const Picture> picture, const Box& part, const Box& box) {
  const auto address = reinterpret_cast<std::uintptr_t>(picture.get());
  Command& command = Add(Shape::kPicture, 0, 1);
  command.box = box;
  command.part = part;
  command.picture = std::move(picture);
  NoteBox(command, Mix(Mix(3, address), HashOf(part)), 0);
}

void Frame::Paint(raster::Rasterizer& rasterizer, const raster::PixelRect& area) const {
  rasterizer.SetTarget(surface, area);
  if (cleared) {
    rasterizer.Clear(clearColor);
  }
  for (const Command& command : commands) {
    const Box& box = command.box;
    const raster::PixelRect clip = Intersect(WholeColumns(command.reach), area);
    if (clip.IsEmpty()) {
      continue;
    }
    // A small clip keeps the coverage of a mark in the processor's first cache.
    rasterizer.SetTarget(surface, clip);
    switch (command.shape) {
      case Shape::kPolyline:
      case Shape::kPolygon:
        rasterizer.Stroke({points.data() + command.firstPoint, command.pointCount},
                          command.shape == Shape::kPolygon, command.penWidth, command.argb,
                          {parts.data() + command.firstPart, command.partCount});
        break;
      case Shape::kEllipse:
        rasterizer.StrokeEllipse(box.x, box.y, box.width, box.height, command.penWidth,
                                 command.argb);
        break;
      case Shape::kFill:
        rasterizer.Fill(box.x, box.y, box.width, box.height, command.argb);
        break;
      case Shape::kPicture:
        PaintPicture(command, area);
        break;
    }
  }
}

void Frame::PaintPicture(const Command& command, const raster::PixelRect& area) const {
  const Box& box = command.box;
  const Box& part = command.part;
  const PixelView view = {surface.pixels, surface.width, surface.height};
  const PixelArea whole = ClipToSurface(box.x, box.y, box.width, box.height, view);
  const PixelArea shown = {std::max(whole.left, area.left), std::max(whole.top, area.top),
                           std::min(whole.right, area.right), std::min(whole.bottom, area.bottom)};
  StretchPicture(*command.picture, {part.x, part.y, part.width, part.height},
                 {box.x, box.y, box.width, box.height}, shown, view);
}

void Frame::CutIntoBands() {
  bands.clear();
  for (const raster::PixelRect& area : changed) {
    for (int top = area.top; top < area.bottom; top += kBandRows) {
      for (int left = area.left; left < area.right; left += kBandColumns) {
        bands.push_back({left, top, std::min(left + kBandColumns, area.right),
                         std::min(top + kBandRows, area.bottom)});
      }
    }
  }
}

void Frame::PaintBands() {
  CutIntoBands();
  std::int64_t pixels = 0;
  for (const raster::PixelRect& area : changed) {
    pixels += std::int64_t{area.Width()} * area.Height();
  }
  const auto paint = [this](int thread, int band) {
    Paint(*rasterizers[static_cast<std::size_t>(thread)], bands[static_cast<std::size_t>(band)]);
  };
  const int count = static_cast<int>(bands.size());
  if (pixels < kPixelsWorthSharing) {
    for (int band = 0; band < count; ++band) {
      paint(0, band);
    }
  } else {
    pool.Run(count, paint);
  }
}

std::span<const raster::PixelRect> Frame::Finish() {
  changed.clear();
  finished = true;
  if (cleared) {
    pictures.clear();
  }
  tiles.TakeChanged(changed);
  try {
    PaintBands();
  } catch (...) {
    // A rasterizer that was interrupted may keep coverage; whatever it painted is painted anew.
    for (auto& rasterizer : rasterizers) {
      rasterizer = std::make_unique<raster::Rasterizer>();
    }
    tiles.ForgetShown();
    throw;
  }
  return changed;
}

}  // namespace canvas
