// Who paints: cuts what changed into bands and shares them among threads.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <vector>

#include "platform/canvas/CommandList.h"
#include "platform/raster/Rasterizer.h"
#include "platform/threads/WorkerPool.h"

namespace canvas {

// Owned by one Canvas; one thread at a time. The surface must outlive it.
class BandPainter {
 public:
  BandPainter(const raster::PixelSurface& surface, std::shared_ptr<WorkerPool> pool);

  // Paints what the frame shows on the areas, which do not overlap. The pixels do not depend on how
  // they are cut into bands, nor on how many threads the pool has.
  void Paint(const CommandList& frame, std::span<const raster::PixelRect> areas);

 private:
  void CutIntoBands(std::span<const raster::PixelRect> areas);
  raster::Rasterizer& RasterizerOf(int worker);
  void PaintBand(const CommandList& frame, const raster::PixelRect& band,
                 raster::Rasterizer& rasterizer) const;

  raster::PixelSurface surface;
  std::vector<raster::PixelRect> bands;
  std::shared_ptr<WorkerPool> pool;
  // One for each worker that has painted here.
  std::array<std::unique_ptr<raster::Rasterizer>, WorkerPool::kMostThreads> rasterizers;
};

}  // namespace canvas
