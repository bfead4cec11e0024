#include "platform/graphics/Painter.h"

#include <utility>

namespace parchlet::graphics {

Graphics::Painter::Painter(PixelSection& section)
    : section(section),
      canvas({section.pixels.get(), section.width, section.height, section.width}) {}

void Graphics::Painter::Flush() {
  const auto changed = canvas.Finish();
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

void Graphics::Painter::DrawPicture(std::shared_ptr<const ::Picture> picture,
                                    const raster::PixelRect& source,
                                    const raster::PixelRect& destination) {
  const raster::PixelSource view = {picture->pixels.data(), picture->width, picture->height};
  Commands().DrawPicture({std::move(picture), view}, source, destination);
}

void Graphics::Painter::DrawText(const TextStyle& style, std::wstring_view text, double x,
                                 double y) {
  const TextPictures::Placed& placed =
      texts.Find(style, text, x, y, {section.width, section.height});
  if (placed.picture != nullptr) {
    const int width = placed.picture->width;
    const int height = placed.picture->height;
    DrawPicture(placed.picture, {0, 0, width, height},
                raster::PixelRect::OfSize(placed.left, placed.top, width, height));
  }
}

}  // namespace parchlet::graphics
