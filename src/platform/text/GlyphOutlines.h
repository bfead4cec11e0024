// Text too large to be drawn glyph by glyph: its outlines, scaled and filled.
#pragma once

#include <cairo.h>
#include <pango/pango.h>

// Fills the layout's outlines, `scale` times as large, with the context's source. The layout's top
// left corner lies at (x, y); `width` and `height` are the surface's. Outlines off the surface are
// skipped.
void FillGlyphOutlines(cairo_t* context, PangoLayout* layout, double scale, double x, double y,
                       int width, int height);
