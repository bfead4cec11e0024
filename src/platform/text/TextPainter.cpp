#include "platform/text/TextPainter.h"

#include <dlfcn.h>
#include <pango/pangocairo.h>
#include "platform/threads/Mutex.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "platform/text/GlyphOutlines.h"
#include "platform/text/Unicode.h"

namespace {

// Glyphs of these sizes are drawn one by one, fitted to the pixels; others as scaled outlines.
constexpr double kSmallestFitted = 1;
constexpr double kLargestFitted = 256;
// Past this size a stem is wider than any surface.
constexpr double kLargest = 1 << 19;
// Text is cut where it is past the widest surface, counting a quarter of an em a character. That
// also keeps it within Pango's coordinates, which end at 2^21 pixels.
constexpr double kMaxWidth = 4 * 32768;
constexpr double kMaxUnits = 16384;
constexpr double kMinUnits = 64;
// Smoothing and fitting move an edge by less than this, in pixels.
constexpr double kFringe = 2;

template <class Object>
struct Unref {
  void operator()(Object* object) const { g_object_unref(object); }
};
using Layout = std::unique_ptr<PangoLayout, Unref<PangoLayout>>;

double Channel(std::uint32_t color, int shift) {
  return (color >> shift & 0xFF) / 255.0;
}

// A Cairo context on the pixels, with the text's colour as its source.
class Canvas {
 public:
  Canvas(const PixelView& pixels, std::uint32_t color)
      : surface(cairo_image_surface_create_for_data(
            reinterpret_cast<unsigned char*>(pixels.pixels), CAIRO_FORMAT_ARGB32, pixels.width,
            pixels.height, static_cast<int>(pixels.StrideBytes()))),
        context(cairo_create(surface)) {
    cairo_set_source_rgba(context, Channel(color, 16), Channel(color, 8), Channel(color, 0),
                          Channel(color, 24));
  }
  ~Canvas() {
    cairo_destroy(context);
    cairo_surface_destroy(surface);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  cairo_t* Context() const { return context; }

 private:
  cairo_surface_t* surface;
  cairo_t* context;
};

// A context that lays text out in fonts of that hinting, grey at their edges.
PangoContext* MakeContext(PangoFontMap* fonts, cairo_hint_style_t hinting) {
  PangoContext* context = pango_font_map_create_context(fonts);
  pango_context_set_base_dir(context, PANGO_DIRECTION_LTR);
  // Chooses between the Chinese, Japanese and Korean forms of a character, whatever the
  // environment's language is.
  pango_context_set_language(context, pango_language_from_string("zh-cn"));
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, hinting);
  const bool isFitted = hinting != CAIRO_HINT_STYLE_NONE;
  cairo_font_options_set_hint_metrics(options,
                                      isFitted ? CAIRO_HINT_METRICS_ON : CAIRO_HINT_METRICS_OFF);
  pango_context_set_round_glyph_positions(context, isFitted);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
  return context;
}

struct Text {
  Layout layout;
  double scale;   // from the layout's size to the text's
  bool isFitted;  // drawn glyph by glyph
};

// Keeps Pango loaded when a host unloads this library. GLib never forgets the types that Pango made
// known to it: a Pango that is loaded a second time cannot work.
void KeepPangoLoaded() {
  Dl_info pango{};
  if (dladdr(reinterpret_cast<void*>(&pango_cairo_font_map_new), &pango) != 0) {
    dlopen(pango.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);  // never closed
  }
}

// Pango's state, one for the process: fonts stay loaded between frames, whichever thread draws.
class TextRoom {
 public:
  TextRoom()
      : fonts(pango_cairo_font_map_new()),
        fitted(MakeContext(fonts, CAIRO_HINT_STYLE_SLIGHT)),
        outlined(MakeContext(fonts, CAIRO_HINT_STYLE_NONE)) {
    KeepPangoLoaded();
  }

  // Frees the fonts, for good: no text is drawn after it.
  void Close() PARCHLET_EXCLUDES(mutex) {
    MutexLock lock(mutex);
    g_object_unref(fitted);
    g_object_unref(outlined);
    g_object_unref(fonts);
    isClosed = true;
  }

  void Paint(const PixelView& pixels, const TextStyle& style, std::wstring_view text, double x,
             double y) PARCHLET_EXCLUDES(mutex) {
    MutexLock lock(mutex);
    if (isClosed) {
      return;
    }
    const Text laidOut = LayOut(style, text);
    const RECT area = InkArea(laidOut, x, y, {pixels.width, pixels.height});
    if (area.left >= area.right || area.top >= area.bottom) {
      return;
    }
    const Canvas canvas(pixels, style.color);
    if (laidOut.isFitted) {
      cairo_move_to(canvas.Context(), x, y);
      pango_cairo_show_layout(canvas.Context(), laidOut.layout.get());
    } else {
      FillGlyphOutlines(canvas.Context(), laidOut.layout.get(), laidOut.scale, x, y, pixels.width,
                        pixels.height);
    }
  }

  RECT FindArea(const TextStyle& style, std::wstring_view text, double x, double y,
                const TextSurface& surface) PARCHLET_EXCLUDES(mutex) {
    MutexLock lock(mutex);
    return isClosed ? RECT{} : InkArea(LayOut(style, text), x, y, surface);
  }

 private:
  Text LayOut(const TextStyle& style, std::wstring_view text) PARCHLET_REQUIRES(mutex) {
    const double size = std::min(style.pixelSize, kLargest);
    const bool isFitted = size >= kSmallestFitted && size <= kLargestFitted;
    const double layoutSize = isFitted ? size : kLargestFitted;
    return {MakeLayout(isFitted ? fitted : outlined, style, text, layoutSize), size / layoutSize,
            isFitted};
  }

  static Layout MakeLayout(PangoContext* context, const TextStyle& style, std::wstring_view text,
                           double size) {
    const double units = std::min(kMinUnits + kMaxWidth / size, kMaxUnits);
    const std::string utf8 = EncodeUtf8(text.substr(0, static_cast<std::size_t>(units)));
    Layout layout(pango_layout_new(context));
    pango_layout_set_auto_dir(layout.get(), FALSE);
    pango_layout_set_text(layout.get(), utf8.data(), static_cast<int>(utf8.size()));
    PangoFontDescription* font = pango_font_description_new();
    pango_font_description_set_family(font, style.family.c_str());
    pango_font_description_set_weight(font, style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    return layout;
  }

  // Returns the box of the text's ink, smoothed edges included, clipped to the surface.
  static RECT InkArea(const Text& text, double x, double y, const TextSurface& surface) {
    PangoRectangle ink;
    pango_layout_get_pixel_extents(text.layout.get(), &ink, nullptr);
    if (ink.width <= 0 || ink.height <= 0) {
      return {};
    }
    const auto limit = [](double value, int most) {
      return static_cast<LONG>(std::clamp(value, 0.0, static_cast<double>(most)));
    };
    const double left = std::floor(x + ink.x * text.scale) - kFringe;
    const double top = std::floor(y + ink.y * text.scale) - kFringe;
    const double right = std::ceil(x + (ink.x + ink.width) * text.scale) + kFringe;
    const double bottom = std::ceil(y + (ink.y + ink.height) * text.scale) + kFringe;
    return {limit(left, surface.width), limit(top, surface.height), limit(right, surface.width),
            limit(bottom, surface.height)};
  }

  Mutex mutex;
  PangoFontMap* fonts PARCHLET_GUARDED_BY(mutex);
  PangoContext* fitted PARCHLET_GUARDED_BY(mutex);
  PangoContext* outlined PARCHLET_GUARDED_BY(mutex);
  bool isClosed PARCHLET_GUARDED_BY(mutex) = false;
};

// Frees the fonts when the library is unloaded.
struct CloseAtUnload {
  ~CloseAtUnload() { room.Close(); }
  TextRoom& room;
};

TextRoom& Room() {
  // Closed, but never destroyed: when the process ends, a refresh thread may outlive every static
  // object.
  static TextRoom& room = *new TextRoom;
  static const CloseAtUnload close{room};
  return room;
}

bool IsDrawable(const TextStyle& style, std::wstring_view text, double x, double y) {
  return style.pixelSize > 0 && std::isfinite(x) && std::isfinite(y) && !text.empty();
}

}  // namespace

RECT FindTextArea(const TextStyle& style, std::wstring_view text, double x, double y,
                  const TextSurface& surface) {
  return IsDrawable(style, text, x, y) ? Room().FindArea(style, text, x, y, surface) : RECT{};
}

void PaintText(const PixelView& pixels, const TextStyle& style, std::wstring_view text, double x,
               double y) {
  if (pixels.pixels != nullptr && IsDrawable(style, text, x, y)) {
    Room().Paint(pixels, style, text, x, y);
  }
}
