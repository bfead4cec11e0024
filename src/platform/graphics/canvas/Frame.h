// A surface that is drawn anew frame by frame and painted only where a frame differs from the one
// before.
//
// Drawing calls are recorded; Finish paints them. A Clear drops what came before it. Every tile of
// the page knows the hash of the commands that touched it, in order; a tile whose hash is that of
// the pixels shown keeps them. As long as a frame goes like the one before, not even the tiles are
// told of it.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <vector>

#include "platform/graphics/canvas/Command.h"
#include "platform/graphics/canvas/LinePart.h"
#include "platform/graphics/canvas/TileMap.h"
#include "platform/graphics/raster/Rasterizer.h"
#include "platform/threads/WorkerPool.h"

namespace canvas {

// Owned by the painter of one surface, which must outlive it; one thread at a time. Coordinates may
// lie anywhere. Memory is kept from frame to frame.
class Frame {
 public:
  // The pixels do not depend on who shares the work.
  explicit Frame(const raster::PixelSurface& surface,
                 std::shared_ptr<WorkerPool> pool = WorkerPool::Shared());

  void Clear(std::uint32_t argb);
  void Stroke(std::span<const raster::GridPoint> points, bool closed, float penWidth,
              std::uint32_t argb);
  void StrokeEllipse(const Box& box, float penWidth, std::uint32_t argb);
  void Fill(const Box& box, std::uint32_t argb);
  // Stretches a part of the picture into `box`; nothing for a part that reaches over its edge.
  void DrawPicture(std::shared_ptr<const Picture> picture, const Box& part, const Box& box);

  // Makes the pixels final. Gives the areas that may have changed since the last Finish, none when
  // nothing did; valid until the next call. When memory runs out, std::bad_alloc; the next frame
  // that starts from a Clear is whole again.
  std::span<const raster::PixelRect> Finish();

 private:
  void Restart();
  void BeginCommand();
  bool Repeats(const Command& next, std::span<const raster::GridPoint> line) const;
  void Depart();
  void Truncate();
  void Take(const Command& command);
  void AddBox(Command next, int margin);
  raster::PixelRect Reach(std::int64_t left, std::int64_t top, std::int64_t right,
                          std::int64_t bottom, int margin) const;
  void MeasureLine(Command& command);
  void Note(const Command& command);
  raster::Rasterizer& RasterizerOf(int worker);
  void Paint(raster::Rasterizer& painter, const raster::PixelRect& area) const;
  void PaintPicture(const Command& command, const raster::PixelRect& area) const;
  void PaintBands();
  void CutIntoBands();

  raster::PixelSurface surface;
  TileMap tiles;
  // The recorded commands are the first `used` ones. Behind them stand those of the frame before
  // that have not been overwritten yet: what is drawn again as it was need not be measured again.
  std::vector<Command> commands;
  std::vector<raster::GridPoint> points;
  std::vector<raster::PixelRect> parts;   // what each part of the lines may touch
  std::vector<std::uint64_t> partHashes;  // and what it looks like
  std::size_t used = 0;
  std::size_t usedPoints = 0;
  std::size_t usedParts = 0;
  std::vector<LinePart> lineParts;  // of the line that is being measured
  // The pictures of the frames since the Clear before: they live on while this one is recorded, so
  // that equal addresses mean equal pictures.
  std::vector<std::shared_ptr<const Picture>> pictures;
  bool cleared = false;   // the commands start from a Clear
  bool finished = false;  // the commands are painted; the next one starts a new list
  // All commands, those behind the used ones included, are the frame that is shown, which started
  // from a Clear; the tiles are as that frame left them.
  bool repeating = false;
  std::uint32_t clearColor = 0;
  std::uint32_t shownColor = 0;  // what the frame shown was cleared to
  std::vector<raster::PixelRect> changed;
  std::vector<raster::PixelRect> bands;
  std::shared_ptr<WorkerPool> pool;
  // One for each worker that has painted here.
  std::array<std::unique_ptr<raster::Rasterizer>, WorkerPool::kMostThreads> rasterizers;
};

}  // namespace canvas
