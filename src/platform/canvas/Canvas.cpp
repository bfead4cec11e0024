#include "platform/canvas/Canvas.h"

#include <utility>

namespace canvas {

Canvas::Canvas(const raster::PixelSurface& surface, std::shared_ptr<WorkerPool> pool)
    : commands(surface.width, surface.height),
      tiles(surface.width, surface.height),
      painter(surface, std::move(pool)) {}

std::span<const raster::PixelRect> Canvas::Finish() {
  changed.clear();
  const bool isNew = commands.End();
  const bool isRecolored = commands.IsCleared() && commands.ClearColor() != shownColor;
  const bool repeats = commands.RepeatsShown();
  if (repeats && !isRecolored) {
    return changed;
  }
  commands.SetShown(false);
  if (isNew && !repeats) {
    tiles.Add(commands);
  }
  try {
    if (isRecolored) {
      tiles.ForgetShown();
      shownColor = commands.ClearColor();
    }
    tiles.TakeChanged(changed);
    painter.Paint(commands, changed);
  } catch (...) {
    tiles.ForgetShown();  // some tiles count as shown that were not painted
    throw;
  }
  commands.SetShown(true);
  return changed;
}

}  // namespace canvas
