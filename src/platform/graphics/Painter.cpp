#include "platform/graphics/Painter.h"

#include <utility>

namespace parchlet::graphics {

Graphics::Painter::Painter(const DevicePixels& pixels)
    : pixels(pixels),
      canvas(
          {pixels.View().pixels, pixels.View().width, pixels.View().height, pixels.View().width}) {}

void Graphics::Painter::Flush() {
  pixels.Settle();
  const auto changed = canvas.Finish();
  texts.EndFrame();
  if (changed.empty()) {
    return;
  }
  pixels.BeginChange();
  try {
    for (const raster::PixelRect& area : changed) {
      pixels.AddChanged({area.left, area.top, area.right, area.bottom});
    }
  } catch (...) {
    pixels.BeginChange();  // two versions on, a window takes the whole surface
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
      texts.Find(style, text, x, y, {pixels.View().width, pixels.View().height});
  if (placed.picture != nullptr) {
    const int width = placed.picture->width;
    const int height = placed.picture->height;
    DrawPicture(placed.picture, {0, 0, width, height},
                raster::PixelRect::OfSize(placed.left, placed.top, width, height));
  }
}

}  // namespace parchlet::graphics
