#include "platform/canvas/CommandList.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/raster/StrokeRules.h"

namespace canvas {
namespace {

int MarginOf(const Style& style, const raster::PixelRect& box) {
  return style.shape == Shape::kEllipse ? raster::EllipseMargin(box, style.penWidth) : 0;
}

bool IsNear(const LinePart& part, const raster::PixelRect& guard) {
  return raster::IsWithin(guard, part.low.x, part.low.y) &&
         raster::IsWithin(guard, part.high.x, part.high.y);
}

}  // namespace

void CommandList::Rewind() {
  used = 0;
  usedPoints = 0;
  usedParts = 0;
  hasEnded = false;
}

void CommandList::Clear(std::uint32_t argb) {
  Rewind();
  isCleared = true;
  clearColor = argb;
}

void CommandList::BeginCommand() {
  if (hasEnded) {
    Rewind();
    isCleared = false;
    repeatsShown = false;
  }
}

// Returns the next command of the frame before if it has this style, else null.
const Command* CommandList::NextOld(const Style& style) const {
  const bool isAlike = used < commands.size() && commands[used].style == style;
  return isAlike ? &commands[used] : nullptr;
}

// Drops what is left of the frame before.
void CommandList::DropRest() {
  repeatsShown = false;
  for (std::size_t i = used; i < commands.size(); ++i) {
    if (commands[i].picture.owner != nullptr) {
      pictures.push_back(std::move(commands[i].picture.owner));
    }
  }
  commands.resize(used);
  points.resize(usedPoints);
  partBounds.resize(usedParts);
  partHashes.resize(usedParts);
}

// Takes the command after the recorded ones into the frame.
void CommandList::Advance() {
  const Command& command = commands[used];
  ++used;
  usedPoints += command.pointCount;
  usedParts += command.partCount;
}

void CommandList::AddBox(const Style& style, const raster::PixelRect& box) {
  BeginCommand();
  const Command* const old = NextOld(style);
  if (old == nullptr || old->box != box) {
    DropRest();
    Command command;
    command.style = style;
    command.box = box;
    command.bounds = BoundsOf(box, MarginOf(style, box));
    commands.push_back(std::move(command));
  }
  Advance();
}

// The pixels of the page from edge to edge, both included, and `margin` further.
raster::PixelRect CommandList::BoundsOf(const raster::PixelRect& edges, int margin) const {
  const auto limit = [](std::int64_t value, int most) {
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, most));
  };
  return {limit(std::int64_t{edges.left} - margin, page.right),
          limit(std::int64_t{edges.top} - margin, page.bottom),
          limit(std::int64_t{edges.right} + margin + 1, page.right),
          limit(std::int64_t{edges.bottom} + margin + 1, page.bottom)};
}

void CommandList::Stroke(std::span<const raster::GridPoint> line, bool closed, float penWidth,
                         std::uint32_t argb) {
  if (line.empty()) {
    return;
  }
  BeginCommand();
  const Style style = {closed ? Shape::kPolygon : Shape::kPolyline, argb,
                       raster::ClampPenWidth(penWidth)};
  const Command* const old = NextOld(style);
  if (old == nullptr || old->pointCount != line.size() ||
      std::memcmp(line.data(), points.data() + usedPoints, line.size_bytes()) != 0) {
    DropRest();
    Command command;
    command.style = style;
    command.firstPoint = usedPoints;
    command.pointCount = line.size();
    points.insert(points.end(), line.begin(), line.end());
    MeasureLine(command);
    commands.push_back(std::move(command));
  }
  Advance();
}

// Measures a long line part by part: a point added to its end then changes only the tiles around
// that end, and a band passes over the parts that do not touch it.
void CommandList::MeasureLine(Command& command) {
  const bool closed = command.style.shape == Shape::kPolygon;
  MeasureParts(PointsOf(command), closed ? command.pointCount : raster::kPartSegments, lineParts);
  command.firstPart = usedParts;
  command.partCount = lineParts.size();
  command.bounds = {page.right, page.bottom, 0, 0};
  command.isNear = !closed;
  const raster::PixelRect guard = raster::GuardBand(page);
  for (const LinePart& part : lineParts) {
    const raster::PixelRect bounds =
        BoundsOf({part.low.x, part.low.y, part.high.x, part.high.y},
                 raster::InkMargin(command.style.penWidth, part.sharp || closed));
    partBounds.push_back(bounds);
    partHashes.push_back(part.hash);
    command.isNear = command.isNear && IsNear(part, guard);
    if (!bounds.IsEmpty()) {
      command.bounds = Unite(command.bounds, bounds);
    }
  }
}

void CommandList::StrokeEllipse(const raster::PixelRect& box, float penWidth, std::uint32_t argb) {
  AddBox({Shape::kEllipse, argb, raster::ClampPenWidth(penWidth)}, box);
}

void CommandList::Fill(const raster::PixelRect& rect, std::uint32_t argb) {
  AddBox({Shape::kFill, argb, 1}, rect);
}

void CommandList::DrawPicture(const SharedPicture& picture, const raster::PixelRect& source,
                              const raster::PixelRect& destination) {
  BeginCommand();
  const Style style = {Shape::kPicture, 0, 1};
  const Command* const old = NextOld(style);
  if (old == nullptr || old->box != destination || old->source != source ||
      old->picture.owner != picture.owner) {
    DropRest();
    Command command;
    command.style = style;
    command.box = destination;
    command.source = source;
    command.picture = picture;
    command.bounds = BoundsOf(destination, 0);
    commands.push_back(std::move(command));
  }
  Advance();
}

bool CommandList::End() {
  if (used < commands.size()) {
    DropRest();
  }
  if (isCleared) {
    pictures.clear();
  }
  return !std::exchange(hasEnded, true);
}

}  // namespace canvas
