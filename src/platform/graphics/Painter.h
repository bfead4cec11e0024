// What a Graphics paints with: a canvas on the pixels of its context.
#pragma once

#include "platform/canvas/Canvas.h"
#include "platform/gdi/DevicePixels.h"
#include "platform/graphics/Graphics.h"
#include "platform/graphics/TextPictures.h"

// Owned by one Graphics; one thread at a time. The pixels must outlive it.
class parchlet::graphics::Graphics::Painter {
 public:
  explicit Painter(const DevicePixels& pixels);

  canvas::CommandList& Commands() { return canvas.Commands(); }
  void DrawPicture(std::shared_ptr<const ::Picture> picture, const raster::PixelRect& source,
                   const raster::PixelRect& destination);
  void DrawText(const TextStyle& style, std::wstring_view text, double x, double y);
  // Makes the pixels final and reports which changed.
  void Flush();

 private:
  DevicePixels pixels;
  canvas::Canvas canvas;
  TextPictures texts;
};
