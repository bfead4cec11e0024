#include "platform/graphics/Painter.h"

namespace Gdiplus {

Graphics::Painter::Painter(PixelSection& section)
    : section(section),
      frame({section.pixels.get(), section.width, section.height, section.width}) {}

void Graphics::Painter::Flush() {
  const auto changed = frame.Finish();
  texts.EndFrame();
  if (changed.empty()) {
    return;
  }
  section.BeginChange();
  try {
    for (const raster::PixelRect& area : changed) {
      section.changed.push_back({area.left, area.top, area.right, area.bottom});
    }
  } catch (...) {
    section.BeginChange();  // two versions on, a window takes the whole section
    throw;
  }
}

void Graphics::Painter::DrawText(const TextStyle& style, std::wstring_view text, double x,
                                 double y) {
  const TextPictures::Placed& placed =
      texts.Find(style, text, x, y, {section.width, section.height});
  if (placed.picture != nullptr) {
    const int width = placed.picture->width;
    const int height = placed.picture->height;
    frame.DrawPicture(placed.picture, {0, 0, width, height},
                      {placed.left, placed.top, width, height});
  }
}

}  // namespace Gdiplus
