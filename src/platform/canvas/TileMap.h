// Which parts of the page changed: the page cut into tiles, each with a hash of the commands that
// touch it, in order. Equal hashes mean equal pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/canvas/CommandList.h"
#include "platform/raster/Geometry.h"

namespace canvas {

inline constexpr int kTileSide = 64;

// Owned by one Canvas.
class TileMap {
 public:
  TileMap(int width, int height);

  // Hashes the commands of a frame; those of a frame without a Clear on top of what was there. The
  // clear colour is left out.
  void Add(const CommandList& frame);

  // Lists the areas whose hash is not that of the pixels shown, as rectangles that do not overlap,
  // and takes them as shown from now on.
  void TakeChanged(std::vector<raster::PixelRect>& areas);

  // Forgets what pixels are shown: all of them count as changed.
  void ForgetShown();

 private:
  struct Tile {
    std::uint64_t shown = 0;
    std::uint64_t drawn = 0;
    std::uint64_t lastCommand = 0;  // that touched the tile
  };
  struct TileRange {
    int first, last;

    friend bool operator==(const TileRange&, const TileRange&) = default;
  };

  void StartOver();
  void BeginCommand(const Command& command);
  void AddPart(const raster::PixelRect& bounds, std::uint64_t hash);
  void FindChangedRanges(int row);

  int width, height;
  int columns, rows;
  std::uint64_t commandCount = 0;
  std::uint64_t styleHash = 0;  // of the command that is being added
  std::vector<Tile> tiles;
  std::vector<TileRange> ranges;  // of changed tiles in a row
  std::vector<TileRange> rangesAbove;
};

}  // namespace canvas
