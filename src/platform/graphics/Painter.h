// The one room that turns shapes into pixels. It stands on Cairo, which shows nowhere else.
#pragma once

#include <cairo.h>

#include <cstdint>

#include "platform/gdi/Gdi.h"
#include "platform/graphics/Graphics.h"
#include "platform/graphics/Outline.h"
#include "platform/text/TextPainter.h"

// Paints on one bitmap, which must outlive it. One thread at a time. Colours are ARGB, not
// premultiplied; what lies off the bitmap is left out.
class Gdiplus::Graphics::Painter {
 public:
  explicit Painter(const PixelView& pixels);
  ~Painter();
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  // False when there is nothing to paint on.
  bool IsUsable() const;

  void Clear(ARGB color);
  // Begins a stroke of that width; the caller adds the points to the outline and ends it with
  // Stroke.
  Outline& BeginStroke(double penWidth);
  Status Stroke(ARGB color, double penWidth, bool closed);
  Status FillRectangle(ARGB color, const Rect& area);
  // Stretches a part of the picture, which must lie within it, into `destination`, bilinearly.
  void DrawPicture(const Picture& picture, const Rect& part, const Rect& destination);
  void DrawText(const TextStyle& style, std::wstring_view text, double x, double y);

 private:
  void Open();
  void Close();
  void TraceRuns();

  PixelView pixels;
  cairo_surface_t* surface = nullptr;
  cairo_t* context = nullptr;
  Outline outline;
};
