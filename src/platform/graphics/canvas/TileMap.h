// The page cut into tiles, each with a hash of everything that was drawn on it, in order. Equal
// hashes mean equal pixels.
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

#include "platform/graphics/raster/Geometry.h"

namespace canvas {

inline constexpr int kTileSide = 64;

inline std::uint64_t Mix(std::uint64_t hash, std::uint64_t value) {
  return std::rotl(hash ^ value, 29) * 0x9E3779B97F4A7C15U;
}

// Spreads every bit over all others, as the last step of a hash.
inline std::uint64_t Finish(std::uint64_t hash) {
  hash = (hash ^ hash >> 31) * 0xBF58476D1CE4E5B9U;
  return hash ^ hash >> 29;
}

// Owned by one Frame.
class TileMap {
 public:
  TileMap(int width, int height);

  // Everything is painted over: what was drawn before no longer counts.
  void StartOver(std::uint64_t hash);
  // A new mark begins; `style` is what its pixels depend on besides its parts.
  void BeginMark(std::uint64_t style);
  // The mark draws a part, of that hash, within `reach`, which lies on the page.
  void AddPart(const raster::PixelRect& reach, std::uint64_t hash);

  // Lists the areas whose hash is not that of the pixels shown, as rectangles that do not overlap,
  // and takes them as shown from now on.
  void TakeChanged(std::vector<raster::PixelRect>& areas);

 private:
  struct Tile {
    std::uint64_t shown = 0;
    std::uint64_t drawn = 0;
    std::uint64_t mark = 0;  // the last one that touched the tile
  };
  struct Run {
    int first, last;
  };

  void FindRuns(int row);

  int width, height;
  int columns, rows;
  std::uint64_t marks = 0;
  std::uint64_t style = 0;
  std::vector<Tile> tiles;
  std::vector<Run> runs;
  std::vector<Run> runsAbove;
};

}  // namespace canvas
