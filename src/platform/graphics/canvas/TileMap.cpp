#include "platform/graphics/canvas/TileMap.h"

#include <algorithm>

#include "platform/graphics/canvas/Hash.h"

namespace canvas {

TileMap::TileMap(int width, int height)
    : width(width),
      height(height),
      columns((width + kTileSide - 1) / kTileSide),
      rows((height + kTileSide - 1) / kTileSide),
      tiles(static_cast<std::size_t>(columns) * rows) {}

void TileMap::StartOver() {
  constexpr std::uint64_t kCleared = 1;
  for (Tile& tile : tiles) {
    tile.drawn = kCleared;
  }
}

void TileMap::BeginMark(std::uint64_t newStyle) {
  style = newStyle;
  ++marks;
}

void TileMap::AddPart(const raster::PixelRect& reach, std::uint64_t hash) {
  if (reach.IsEmpty()) {
    return;
  }
  const std::uint64_t part = Finish(hash);
  const int firstColumn = reach.left / kTileSide;
  const int lastColumn = (reach.right - 1) / kTileSide;
  for (int row = reach.top / kTileSide; row <= (reach.bottom - 1) / kTileSide; ++row) {
    Tile* const line = tiles.data() + static_cast<std::ptrdiff_t>(row) * columns;
    for (int column = firstColumn; column <= lastColumn; ++column) {
      Tile& tile = line[column];
      if (tile.mark != marks) {
        // Two parts of one translucent mark look unlike the same two as marks of their own.
        tile.mark = marks;
        tile.drawn = Mix(tile.drawn, style);
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

void TileMap::FindRuns(int row) {
  runs.clear();
  Tile* const line = tiles.data() + static_cast<std::ptrdiff_t>(row) * columns;
  for (int column = 0; column < columns; ++column) {
    Tile& tile = line[column];
    if (tile.shown == tile.drawn) {
      continue;
    }
    tile.shown = tile.drawn;
    if (!runs.empty() && runs.back().last == column - 1) {
      runs.back().last = column;
    } else {
      runs.push_back({column, column});
    }
  }
}

// A run under an equal run makes that one's rectangle taller.
void TileMap::TakeChanged(std::vector<raster::PixelRect>& areas) {
  runsAbove.clear();
  std::size_t firstAbove = areas.size();
  for (int row = 0; row < rows; ++row) {
    FindRuns(row);
    const int bottom = std::min((row + 1) * kTileSide, height);
    const bool same = std::equal(
        runs.begin(), runs.end(), runsAbove.begin(), runsAbove.end(),
        [](const Run& a, const Run& b) { return a.first == b.first && a.last == b.last; });
    if (same) {
      for (std::size_t i = firstAbove; i < areas.size(); ++i) {
        areas[i].bottom = bottom;
      }
      continue;
    }
    firstAbove = areas.size();
    for (const Run& run : runs) {
      areas.push_back({run.first * kTileSide, row * kTileSide,
                       std::min((run.last + 1) * kTileSide, width), bottom});
    }
    runs.swap(runsAbove);
  }
}

}  // namespace canvas
