#include "platform/graphics/Painter.h"

namespace Gdiplus {

Graphics::Painter::Painter(PixelSection& section)
    : section(section),
      frame({section.pixels.get(), section.width, section.height, section.width}) {}

void Graphics::Painter::Flush() {
  const auto changed = frame.Finish();
  if (changed.empty()) {
    return;
  }
  ++section.version;
  section.changed.clear();
  for (const raster::PixelRect& area : changed) {
    section.changed.push_back({area.left, area.top, area.right, area.bottom});
  }
}

}  // namespace Gdiplus
