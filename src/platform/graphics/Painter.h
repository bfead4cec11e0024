// What a Graphics paints with: a canvas on the section selected into its context.
#pragma once

#include "platform/canvas/Canvas.h"
#include "platform/gdi/Gdi.h"
#include "platform/graphics/Graphics.h"
#include "platform/graphics/TextPictures.h"

// Owned by one Graphics; one thread at a time. The section must outlive it.
class parchlet::graphics::Graphics::Painter {
 public:
  explicit Painter(PixelSection& section);

  canvas::CommandList& Commands() { return canvas.Commands(); }
  void DrawPicture(std::shared_ptr<const ::Picture> picture, const raster::PixelRect& source,
                   const raster::PixelRect& destination);
  void DrawText(const TextStyle& style, std::wstring_view text, double x, double y);
  // Makes the section's pixels final and lists in it what changed.
  void Flush();

 private:
  PixelSection& section;
  canvas::Canvas canvas;
  TextPictures texts;
};
