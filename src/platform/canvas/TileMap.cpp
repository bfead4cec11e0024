#include "platform/canvas/TileMap.h"

#include <algorithm>
#include <bit>
#include <span>

#include "platform/canvas/Hash.h"

namespace canvas {
namespace {

std::uint64_t HashOf(const raster::PixelRect& rect) {
  return Mix(Mix(1, Pair(rect.left, rect.top)), Pair(rect.right, rect.bottom));
}

// Of everything but lines; the style, which tells the shapes apart, is hashed besides.
std::uint64_t HashOf(const Command& command) {
  const auto picture = reinterpret_cast<std::uintptr_t>(command.picture.owner.get());
  return Mix(Mix(HashOf(command.box), picture), HashOf(command.source));
}

std::uint64_t HashOf(const Style& style) {
  const auto shape = static_cast<std::uint64_t>(style.shape);
  return Finish(Mix(Mix(shape + 1, style.argb), std::bit_cast<std::uint32_t>(style.penWidth)));
}

}  // namespace

TileMap::TileMap(int width, int height)
    : width(width),
      height(height),
      columns((width + kTileSide - 1) / kTileSide),
      rows((height + kTileSide - 1) / kTileSide),
      tiles(static_cast<std::size_t>(columns) * rows) {}

void TileMap::Add(const CommandList& frame) {
  if (frame.IsCleared()) {
    StartOver();
  }
  for (const Command& command : frame.Commands()) {
    BeginCommand(command);
    if (command.partCount == 0) {
      AddPart(command.bounds, HashOf(command));
    }
    const std::span bounds = frame.PartBoundsOf(command);
    const std::span hashes = frame.PartHashesOf(command);
    for (std::size_t i = 0; i < bounds.size(); ++i) {
      AddPart(bounds[i], hashes[i]);
    }
  }
}

void TileMap::StartOver() {
  constexpr std::uint64_t kCleared = 1;
  for (Tile& tile : tiles) {
    tile.drawn = kCleared;
  }
}

void TileMap::BeginCommand(const Command& command) {
  styleHash = HashOf(command.style);
  ++commandCount;
}

void TileMap::AddPart(const raster::PixelRect& bounds, std::uint64_t hash) {
  if (bounds.IsEmpty()) {
    return;
  }
  const std::uint64_t part = Finish(hash);
  const int firstColumn = bounds.left / kTileSide;
  const int lastColumn = (bounds.right - 1) / kTileSide;
  for (int row = bounds.top / kTileSide; row <= (bounds.bottom - 1) / kTileSide; ++row) {
    Tile* const line = tiles.data() + static_cast<std::ptrdiff_t>(row) * columns;
    for (int column = firstColumn; column <= lastColumn; ++column) {
      Tile& tile = line[column];
      if (tile.lastCommand != commandCount) {
        // Two parts of one translucent stroke look unlike the same two as strokes of their own.
        tile.lastCommand = commandCount;
        tile.drawn = Mix(tile.drawn, styleHash);
      }
      tile.drawn = Mix(tile.drawn, part);
    }
  }
}

void TileMap::ForgetShown() {
  for (Tile& tile : tiles) {
    tile.shown = ~tile.drawn;
  }
}

void TileMap::FindChangedRanges(int row) {
  ranges.clear();
  Tile* const line = tiles.data() + static_cast<std::ptrdiff_t>(row) * columns;
  for (int column = 0; column < columns; ++column) {
    Tile& tile = line[column];
    if (tile.shown == tile.drawn) {
      continue;
    }
    tile.shown = tile.drawn;
    if (!ranges.empty() && ranges.back().last == column - 1) {
      ranges.back().last = column;
    } else {
      ranges.push_back({column, column});
    }
  }
}

// Rows with equal ranges share their rectangles.
void TileMap::TakeChanged(std::vector<raster::PixelRect>& areas) {
  rangesAbove.clear();
  std::size_t firstAbove = areas.size();
  for (int row = 0; row < rows; ++row) {
    FindChangedRanges(row);
    const int bottom = std::min((row + 1) * kTileSide, height);
    if (ranges == rangesAbove) {
      for (std::size_t i = firstAbove; i < areas.size(); ++i) {
        areas[i].bottom = bottom;
      }
      continue;
    }
    firstAbove = areas.size();
    for (const TileRange& range : ranges) {
      areas.push_back({range.first * kTileSide, row * kTileSide,
                       std::min((range.last + 1) * kTileSide, width), bottom});
    }
    ranges.swap(rangesAbove);
  }
}

}  // namespace canvas
