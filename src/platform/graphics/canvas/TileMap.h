// The page cut into tiles, each with a hash of everything that was drawn on it, in order. Equal
// hashes mean equal pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/graphics/raster/Geometry.h"

namespace canvas {

inline constexpr int kTileSide = 64;

// Owned by one Frame.
class TileMap {
 public:
  TileMap(int width, int height);

  // Everything is cleared: what was drawn before no longer counts. The hashes leave out to which
  // colour.
  void StartOver();
  // A new mark begins; `style` is what its pixels depend on besides its parts.
  void BeginMark(std::uint64_t style);
  // The mark draws a part, of that hash, within `reach`, which lies on the page.
  void AddPart(const raster::PixelRect& reach, std::uint64_t hash);

  // Lists the areas whose hash is not that of the pixels shown, as rectangles that do not overlap,
  // and takes them as shown from now on.
  void TakeChanged(std::vector<raster::PixelRect>& areas);

  // Forgets what pixels are shown: all of them count as changed.
  void ForgetShown();

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
