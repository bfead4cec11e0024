#include "CairoPainter.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include <cairo.h>

namespace workloads {
namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

Surface Wrap(std::uint32_t* pixels, int width, int height) {
  return {cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels),
                                              CAIRO_FORMAT_ARGB32, width, height, width * 4),
          cairo_surface_destroy};
}

void SetColor(cairo_t* cairo, std::uint32_t argb) {
  const auto channel = [&](int shift) { return (argb >> shift & 0xFF) / 255.0; };
  cairo_set_source_rgba(cairo, channel(16), channel(8), channel(0), channel(24));
}

struct Box {
  double x, y, width, height;
};

Box BoxOf(const Mark& mark) {
  const auto [x0, x1] = std::minmax(mark.points[0].x, mark.points[1].x);
  const auto [y0, y1] = std::minmax(mark.points[0].y, mark.points[1].y);
  return {static_cast<double>(x0), static_cast<double>(y0), static_cast<double>(x1 - x0),
          static_cast<double>(y1 - y0)};
}

void AddOutline(cairo_t* cairo, const Mark& mark) {
  const Box box = BoxOf(mark);
  if (mark.kind == Kind::kPath) {
    for (const Spot& spot : mark.points) {
      cairo_line_to(cairo, spot.x + 0.5, spot.y + 0.5);
    }
  } else if (mark.kind == Kind::kRectangle) {
    cairo_rectangle(cairo, box.x + 0.5, box.y + 0.5, box.width, box.height);
  } else {
    cairo_matrix_t before;
    cairo_get_matrix(cairo, &before);
    cairo_translate(cairo, box.x + 0.5 + box.width / 2, box.y + 0.5 + box.height / 2);
    cairo_scale(cairo, box.width / 2, box.height / 2);
    cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(cairo);
    cairo_set_matrix(cairo, &before);
  }
}

void PaintPicture(cairo_t* cairo, const Mark& mark, cairo_surface_t* picture) {
  const Box box = BoxOf(mark);
  cairo_save(cairo);
  cairo_translate(cairo, box.x, box.y);
  cairo_scale(cairo, box.width / cairo_image_surface_get_width(picture),
              box.height / cairo_image_surface_get_height(picture));
  cairo_set_source_surface(cairo, picture, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_BILINEAR);
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
  cairo_rectangle(cairo, 0, 0, cairo_image_surface_get_width(picture),
                  cairo_image_surface_get_height(picture));
  cairo_fill(cairo);
  cairo_restore(cairo);
}

}  // namespace

void PaintWithCairo(const Page& page, std::uint32_t* pixels) {
  static std::vector<std::uint32_t> picturePixels = SamplePicture(400, 300);
  const Surface picture = Wrap(picturePixels.data(), 400, 300);
  const Surface target = Wrap(pixels, page.width, page.height);
  const Context context{cairo_create(target.get()), cairo_destroy};
  cairo_t* cairo = context.get();
  cairo_set_source_rgb(cairo, 1, 1, 1);
  cairo_paint(cairo);
  cairo_set_miter_limit(cairo, 10);
  for (const Mark& mark : page.marks) {
    if (mark.kind == Kind::kPicture) {
      PaintPicture(cairo, mark, picture.get());
      continue;
    }
    SetColor(cairo, mark.argb);
    cairo_set_line_width(cairo, mark.width);
    AddOutline(cairo, mark);
    cairo_stroke(cairo);
  }
}

}  // namespace workloads
