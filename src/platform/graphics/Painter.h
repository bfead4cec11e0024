// What a Graphics paints with: a frame of recorded commands on the section selected into its
// context.
#pragma once

#include "platform/gdi/Gdi.h"
#include "platform/graphics/canvas/Frame.h"
#include "platform/graphics/Graphics.h"
#include "platform/graphics/TextPictures.h"

// Owned by one Graphics; one thread at a time. The section must outlive it.
class Gdiplus::Graphics::Painter {
 public:
  explicit Painter(PixelSection& section);

  canvas::Frame& Frame() { return frame; }
  void DrawText(const TextStyle& style, std::wstring_view text, double x, double y);
  // Makes the section's pixels final and notes in it what changed.
  void Flush();

 private:
  PixelSection& section;
  canvas::Frame frame;
  TextPictures texts;
};
