#include "platform/graphics/Painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/graphics/Stretch.h"

namespace Gdiplus {

namespace {

constexpr double kMitreLimit = 10.0;
// Integer coordinates name pixel centres; Cairo's name pixel corners.
constexpr double kToCentre = 0.5;

double Channel(ARGB color, int shift) {
  return ((color >> shift) & 0xFF) / 255.0;
}

void SetColor(cairo_t* context, ARGB color) {
  cairo_set_source_rgba(context, Channel(color, 16), Channel(color, 8), Channel(color, 0),
                        Channel(color, 24));
}

std::uint32_t Premultiplied(ARGB color) {
  const std::uint32_t alpha = color >> 24;
  const auto channel = [&](int shift) {
    return ((((color >> shift) & 0xFF) * alpha + 127) / 255) << shift;
  };
  return (alpha << 24) | channel(16) | channel(8) | channel(0);
}

}  // namespace

Graphics::Painter::Painter(const PixelView& pixels) : pixels(pixels) {
  if (pixels.pixels != nullptr) {
    Open();
  }
}

Graphics::Painter::~Painter() {
  Close();
}

void Graphics::Painter::Open() {
  surface = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.pixels),
                                                CAIRO_FORMAT_ARGB32, pixels.width, pixels.height,
                                                static_cast<int>(pixels.StrideBytes()));
  context = cairo_create(surface);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
  cairo_set_miter_limit(context, kMitreLimit);
}

void Graphics::Painter::Close() {
  if (context != nullptr) {
    cairo_destroy(context);
    cairo_surface_destroy(surface);
  }
}

bool Graphics::Painter::IsUsable() const {
  return context != nullptr && cairo_status(context) == CAIRO_STATUS_SUCCESS;
}

void Graphics::Painter::Clear(ARGB color) {
  if (!IsUsable()) {
    // A context keeps an error for good. A frame that ran out of memory must not blind the next.
    Close();
    Open();
  }
  cairo_surface_flush(surface);
  const auto count =
      static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height);
  std::fill_n(pixels.pixels, count, Premultiplied(color));
  cairo_surface_mark_dirty(surface);
}

Outline& Graphics::Painter::BeginStroke(double penWidth) {
  outline.Begin(OutlineBounds::Around(pixels.width, pixels.height, penWidth));
  return outline;
}

Status Graphics::Painter::Stroke(ARGB color, double penWidth, bool closed) {
  outline.End(closed);
  SetColor(context, color);
  if (outline.IsDot()) {
    const OutlinePoint dot = outline.Dot();
    const double reach = penWidth / 2 + 1;
    if (dot.x > -reach && dot.y > -reach && dot.x < pixels.width + reach &&
        dot.y < pixels.height + reach) {
      cairo_arc(context, dot.x + kToCentre, dot.y + kToCentre, penWidth / 2, 0,
                2 * std::numbers::pi);
      cairo_fill(context);
    }
  } else if (!outline.Runs().empty()) {
    TraceRuns();
    cairo_set_line_width(context, penWidth);
    cairo_stroke(context);
  }
  return IsUsable() ? Ok : OutOfMemory;
}

void Graphics::Painter::TraceRuns() {
  for (const OutlineRun& run : outline.Runs()) {
    cairo_new_sub_path(context);
    for (const OutlinePoint& point : run.points) {
      cairo_line_to(context, point.x + kToCentre, point.y + kToCentre);
    }
    if (run.closed) {
      cairo_close_path(context);
    }
  }
}

Status Graphics::Painter::FillRectangle(ARGB color, const Rect& area) {
  const PixelArea shown = ClipToSurface(area.X, area.Y, area.Width, area.Height, pixels);
  if (shown.IsEmpty()) {
    return Ok;
  }
  SetColor(context, color);
  cairo_set_antialias(context, CAIRO_ANTIALIAS_NONE);
  cairo_rectangle(context, shown.left, shown.top, shown.right - shown.left,
                  shown.bottom - shown.top);
  cairo_fill(context);
  cairo_set_antialias(context, CAIRO_ANTIALIAS_DEFAULT);
  return IsUsable() ? Ok : OutOfMemory;
}

void Graphics::Painter::DrawPicture(const Picture& picture, const Rect& part,
                                    const Rect& destination) {
  cairo_surface_flush(surface);
  const PixelArea shown =
      ClipToSurface(destination.X, destination.Y, destination.Width, destination.Height, pixels);
  StretchPicture(picture, {part.X, part.Y, part.Width, part.Height},
                 {destination.X, destination.Y, destination.Width, destination.Height}, shown,
                 pixels);
  cairo_surface_mark_dirty(surface);
}

void Graphics::Painter::DrawText(const TextStyle& style, std::wstring_view text, double x,
                                 double y) {
  cairo_surface_flush(surface);
  PaintText(pixels, style, text, x, y);
  cairo_surface_mark_dirty(surface);
}

}  // namespace Gdiplus
