#include "platform/graphics/canvas/Frame.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "platform/graphics/Stretch.h"

namespace canvas {
namespace {

constexpr std::size_t kPartSegments = 16;
// Rows a band: short enough that a band of a wide page stays in the processor's second-level cache.
constexpr int kBandRows = 128;
// Fewer pixels than this are painted faster than another thread wakes up.
constexpr int kPixelsWorthSharing = 200'000;
constexpr double kFringe = 2;

std::uint64_t Pair(std::int32_t a, std::int32_t b) {
  return static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) << 32 |
         static_cast<std::uint32_t>(b);
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

raster::PixelRect Frame::Reach(double left, double top, double right, double bottom,
                               double margin) const {
  const auto limit = [](double value, int most) {
    return static_cast<int>(std::clamp(value, 0.0, static_cast<double>(most)));
  };
  return {limit(left - margin, surface.width), limit(top - margin, surface.height),
          limit(right + margin + 1, surface.width), limit(bottom + margin + 1, surface.height)};
}

void Frame::NoteBox(Command& command, std::uint64_t hash, double margin) {
  const Box& box = command.box;
  command.reach = Reach(box.x, box.y, static_cast<double>(box.x) + box.width,
                        static_cast<double>(box.y) + box.height, margin);
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
// end alone.
void Frame::NoteLine(Command& command) {
  const std::size_t last = command.pointCount - 1;
  const std::size_t step = command.shape == Shape::kPolygon ? command.pointCount : kPartSegments;
  command.reach = {surface.width, surface.height, 0, 0};
  tiles.BeginMark(StyleOf(command));
  std::size_t first = 0;
  do {
    NotePart(command, first, std::min(first + step, last));
    first += step;
  } while (first < last);
}

// A part begins with the segment before it: the joint between the two is the business of both.
void Frame::NotePart(Command& command, std::size_t first, std::size_t last) {
  const raster::GridPoint* const line = points.data() + command.firstPoint;
  raster::GridPoint low = line[first];
  raster::GridPoint high = low;
  std::uint64_t hash = first;
  // Where the line turns by more than a right angle, a mitre may reach ten times the half width. A
  // part that cannot see which way the line came expects it.
  bool sharp = command.shape == Shape::kPolygon || (first > 0 && line[first - 1] == line[first]);
  float dx = 0;
  float dy = 0;
  for (std::size_t i = first == 0 ? 0 : first - 1; i <= last; ++i) {
    hash = Mix(hash, Pair(line[i].x, line[i].y));
    low = {std::min(low.x, line[i].x), std::min(low.y, line[i].y)};
    high = {std::max(high.x, line[i].x), std::max(high.y, line[i].y)};
    const raster::GridPoint& next = line[i + 1 < command.pointCount ? i + 1 : i];
    const float nextX = static_cast<float>(next.x) - static_cast<float>(line[i].x);
    const float nextY = static_cast<float>(next.y) - static_cast<float>(line[i].y);
    sharp |= dx * nextX + dy * nextY < 0;
    const bool moves = nextX != 0 || nextY != 0;
    dx = moves ? nextX : dx;
    dy = moves ? nextY : dy;
  }
  const double margin = command.penWidth / 2 * (sharp ? 10 : 1.5) + kFringe;
  const raster::PixelRect reach = Reach(low.x, low.y, high.x, high.y, margin);
  if (!reach.IsEmpty()) {
    tiles.AddPart(reach, hash);
    raster::PixelRect& whole = command.reach;
    whole = {std::min(whole.left, reach.left), std::min(whole.top, reach.top),
             std::max(whole.right, reach.right), std::max(whole.bottom, reach.bottom)};
  }
}

void Frame::StrokeEllipse(const Box& box, float penWidth, std::uint32_t argb) {
  Command& command = Add(Shape::kEllipse, argb, penWidth);
  command.box = box;
  // Where the outline bends tighter than the pen is wide, its joints may be as sharp as any.
  const double wide = std::max(box.width, box.height) / 2.0;
  const double narrow = std::min(box.width, box.height) / 2.0;
  const bool sharp = narrow * narrow < 2 * command.penWidth * wide;
  NoteBox(command, 1, command.penWidth / 2 * (sharp ? 10 : 1.5) + kFringe);
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
    if (Intersect(command.reach, area).IsEmpty()) {
      continue;
    }
    switch (command.shape) {
      case Shape::kPolyline:
      case Shape::kPolygon:
        rasterizer.Stroke({points.data() + command.firstPoint, command.pointCount},
                          command.shape == Shape::kPolygon, command.penWidth, command.argb);
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
      bands.push_back({area.left, top, area.right, std::min(top + kBandRows, area.bottom)});
    }
  }
}

std::span<const raster::PixelRect> Frame::Finish() {
  changed.clear();
  finished = true;
  pictures.clear();
  tiles.TakeChanged(changed);
  if (changed.empty()) {
    return changed;
  }
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
  return changed;
}

}  // namespace canvas
