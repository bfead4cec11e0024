// A surface that is drawn anew frame by frame and painted only where a frame differs from the one
// before.
//
// Drawing calls are recorded in a CommandList. Finish asks a TileMap which tiles they changed and
// has a BandPainter paint those. A frame that repeats the one shown never gets that far.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "platform/canvas/BandPainter.h"
#include "platform/canvas/CommandList.h"
#include "platform/canvas/TileMap.h"
#include "platform/threads/WorkerPool.h"

namespace canvas {

// Owned by the painter of one surface, which must outlive it; one thread at a time. Coordinates may
// lie anywhere.
class Canvas {
 public:
  // The pixels do not depend on the pool.
  explicit Canvas(const raster::PixelSurface& surface,
                  std::shared_ptr<WorkerPool> pool = WorkerPool::Shared());

  // What the frame draws; drawing calls are made on it.
  CommandList& Commands() { return commands; }

  // Makes the pixels final. Returns the areas that may have changed since the last Finish, none
  // when nothing did; valid until the next call. When memory runs out, std::bad_alloc; the next
  // frame that starts from a Clear is whole again.
  std::span<const raster::PixelRect> Finish();

 private:
  CommandList commands;
  TileMap tiles;
  BandPainter painter;
  std::uint32_t shownColor = 0;  // what the frame shown was cleared to
  std::vector<raster::PixelRect> changed;
};

}  // namespace canvas
