#include "platform/graphics/canvas/Frame.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
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

// Of everything but lines; the style, which tells the shapes apart, is hashed besides.
std::uint64_t HashOf(const Command& command) {
  const auto picture = reinterpret_cast<std::uintptr_t>(command.picture.get());
  return Mix(Mix(HashOf(command.box), picture), HashOf(command.part));
}

Command CommandOf(Shape shape, std::uint32_t argb, float penWidth, const Box& box) {
  Command command;
  command.shape = shape;
  command.argb = argb;
  command.penWidth = raster::UsableWidth(penWidth);
  command.box = box;
  return command;
}

std::uint64_t StyleOf(const Command& command) {
  const auto shape = static_cast<std::uint64_t>(command.shape);
  return Finish(Mix(Mix(shape + 1, command.argb), std::bit_cast<std::uint32_t>(command.penWidth)));
}

}  // namespace

Frame::Frame(const raster::PixelSurface& surface, std::shared_ptr<WorkerPool> pool)
    : surface(surface), tiles(surface.width, surface.height), pool(std::move(pool)) {}

void Frame::Restart() {
  used = 0;
  usedPoints = 0;
  usedParts = 0;
  finished = false;
}

void Frame::Clear(std::uint32_t argb) {
  Restart();
  cleared = true;
  clearColor = argb;
  if (!repeating) {
    tiles.StartOver();
  }
}

// A command after a finished frame lies on top of it.
void Frame::BeginCommand() {
  if (finished) {
    Restart();
    cleared = false;
    repeating = false;
  }
}

// Whether the frame before went on like this.
bool Frame::Repeats(const Command& next, std::span<const raster::GridPoint> line) const {
  if (used == commands.size()) {
    return false;
  }
  const Command& old = commands[used];
  return old.shape == next.shape && old.argb == next.argb && old.penWidth == next.penWidth &&
         old.box == next.box && old.part == next.part && old.picture == next.picture &&
         old.pointCount == line.size() &&
         (line.empty() ||
          std::memcmp(line.data(), points.data() + usedPoints, line.size_bytes()) == 0);
}

// This frame goes another way than the one shown: the tiles hear of what they had in common.
void Frame::Depart() {
  if (repeating) {
    repeating = false;
    tiles.StartOver();
    std::for_each_n(commands.begin(), used, [this](const Command& command) { Note(command); });
  }
}

// Forgets what is left of the frame before.
void Frame::Truncate() {
  for (std::size_t i = used; i < commands.size(); ++i) {
    if (commands[i].picture != nullptr) {
      pictures.push_back(std::move(commands[i].picture));
    }
  }
  commands.resize(used);
  points.resize(usedPoints);
  parts.resize(usedParts);
  partHashes.resize(usedParts);
}

// Goes on behind the command, the first one that was not used yet.
void Frame::Take(const Command& command) {
  if (!repeating) {
    Note(command);
  }
  ++used;
  usedPoints += command.pointCount;
  usedParts += command.partCount;
}

// Records a command without points.
void Frame::AddBox(Command next, int margin) {
  BeginCommand();
  if (!Repeats(next, {})) {
    Depart();
    Truncate();
    const Box& box = next.box;
    next.reach = Reach(box.x, box.y, std::int64_t{box.x} + box.width,
                       std::int64_t{box.y} + box.height, margin);
    commands.push_back(std::move(next));
  }
  Take(commands[used]);
}

raster::PixelRect Frame::Reach(std::int64_t left, std::int64_t top, std::int64_t right,
                               std::int64_t bottom, int margin) const {
  const auto limit = [](std::int64_t value, int most) {
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, most));
  };
  return {limit(left - margin, surface.width), limit(top - margin, surface.height),
          limit(right + margin + 1, surface.width), limit(bottom + margin + 1, surface.height)};
}

void Frame::Stroke(std::span<const raster::GridPoint> line, bool closed, float penWidth,
                   std::uint32_t argb) {
  if (line.empty()) {
    return;
  }
  BeginCommand();
  Command next = CommandOf(closed ? Shape::kPolygon : Shape::kPolyline, argb, penWidth, {});
  if (!Repeats(next, line)) {
    Depart();
    Truncate();
    next.firstPoint = usedPoints;
    next.pointCount = line.size();
    points.insert(points.end(), line.begin(), line.end());
    MeasureLine(next);
    commands.push_back(std::move(next));
  }
  Take(commands[used]);
}

// A long line is noted part by part, so that a point added to its end changes the tiles around that
// end alone, and so that a band passes over the parts that it does not show.
void Frame::MeasureLine(Command& command) {
  const std::span line = std::span(points).subspan(command.firstPoint, command.pointCount);
  const bool closed = command.shape == Shape::kPolygon;
  MeasureParts(line, closed ? line.size() : raster::kPartSegments, lineParts);
  command.firstPart = usedParts;
  command.partCount = lineParts.size();
  command.reach = {surface.width, surface.height, 0, 0};
  command.isNear = !closed;
  for (const LinePart& part : lineParts) {
    const raster::PixelRect reach = Reach(part.low.x, part.low.y, part.high.x, part.high.y,
                                          MarginOf(command.penWidth, part.sharp || closed));
    parts.push_back(reach);
    partHashes.push_back(part.hash);
    command.isNear = command.isNear && raster::IsNear(part.low, part.high, surface.Bounds());
    if (!reach.IsEmpty()) {
      command.reach = Unite(command.reach, reach);
    }
  }
}

void Frame::Note(const Command& command) {
  tiles.BeginMark(StyleOf(command));
  if (command.partCount == 0) {
    tiles.AddPart(command.reach, HashOf(command));
  }
  for (std::size_t i = command.firstPart; i < command.firstPart + command.partCount; ++i) {
    tiles.AddPart(parts[i], partHashes[i]);
  }
}

void Frame::StrokeEllipse(const Box& box, float penWidth, std::uint32_t argb) {
  Command next = CommandOf(Shape::kEllipse, argb, penWidth, box);
  // Where the outline bends tighter than the pen is wide, its joints may be as sharp as any.
  const double wide = std::max(box.width, box.height) / 2.0;
  const double narrow = std::min(box.width, box.height) / 2.0;
  const bool sharp = narrow * narrow < 2 * next.penWidth * wide;
  const int margin = MarginOf(next.penWidth, sharp);
  AddBox(std::move(next), margin);
}

void Frame::Fill(const Box& box, std::uint32_t argb) {
  AddBox(CommandOf(Shape::kFill, argb, 1, box), 0);
}

void Frame::DrawPicture(std::shared_ptr<const Picture> picture, const Box& part, const Box& box) {
  Command next = CommandOf(Shape::kPicture, 0, 1, box);
  next.part = part;
  next.picture = std::move(picture);
  AddBox(std::move(next), 0);
}

void Frame::Paint(raster::Rasterizer& painter, const raster::PixelRect& area) const {
  painter.SetTarget(surface, area);
  if (cleared) {
    painter.Clear(clearColor);
  }
  for (const Command& command : std::span(commands).first(used)) {
    const Box& box = command.box;
    const raster::PixelRect clip = Intersect(WholeColumns(command.reach), area);
    if (clip.IsEmpty()) {
      continue;
    }
    // A small clip keeps the coverage of a mark in the processor's first cache.
    painter.SetTarget(surface, clip);
    switch (command.shape) {
      case Shape::kPolyline:
      case Shape::kPolygon:
        painter.Stroke({points.data() + command.firstPoint, command.pointCount},
                       command.shape == Shape::kPolygon, command.penWidth, command.argb,
                       {parts.data() + command.firstPart, command.isNear ? command.partCount : 0});
        break;
      case Shape::kEllipse:
        painter.StrokeEllipse(box.x, box.y, box.width, box.height, command.penWidth, command.argb);
        break;
      case Shape::kFill:
        painter.Fill(box.x, box.y, box.width, box.height, command.argb);
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

raster::Rasterizer& Frame::RasterizerOf(int worker) {
  std::unique_ptr<raster::Rasterizer>& own = rasterizers[static_cast<std::size_t>(worker)];
  if (own == nullptr) {
    own = std::make_unique<raster::Rasterizer>();
  }
  return *own;
}

void Frame::PaintBands() {
  CutIntoBands();
  std::int64_t pixels = 0;
  for (const raster::PixelRect& area : changed) {
    pixels += std::int64_t{area.Width()} * area.Height();
  }
  const int count = static_cast<int>(bands.size());
  const auto paint = [this](int worker, int band) {
    Paint(RasterizerOf(worker), bands[static_cast<std::size_t>(band)]);
  };
  if (pixels < kPixelsWorthSharing) {
    for (int band = 0; band < count; ++band) {
      paint(0, band);
    }
  } else {
    pool->Run(count, paint);
  }
}

std::span<const raster::PixelRect> Frame::Finish() {
  changed.clear();
  if (used < commands.size()) {
    Depart();
    Truncate();
  }
  finished = true;
  if (cleared) {
    pictures.clear();
  }
  const bool recolored = cleared && clearColor != shownColor;
  if (repeating && !recolored) {
    return changed;
  }
  repeating = false;
  try {
    if (recolored) {
      tiles.ForgetShown();
      shownColor = clearColor;
    }
    tiles.TakeChanged(changed);
    PaintBands();
  } catch (...) {
    tiles.ForgetShown();  // the tiles that were not reached are none the less taken for painted
    throw;
  }
  repeating = cleared;
  return changed;
}

}  // namespace canvas
