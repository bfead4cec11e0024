#include "CairoRival.h"

#include <cstring>
#include <numbers>

namespace {

// An integer coordinate names a pixel's centre.
constexpr double kCentre = 0.5;

void SetColor(cairo_t* cairo, std::uint32_t argb) {
  constexpr double kMax = 255.0;
  cairo_set_source_rgba(cairo, (argb >> 16U & 0xFFU) / kMax, (argb >> 8U & 0xFFU) / kMax,
                        (argb & 0xFFU) / kMax, (argb >> 24U) / kMax);
}

void AddEllipse(cairo_t* cairo, POINT a, POINT b) {
  cairo_save(cairo);
  cairo_translate(cairo, (a.x + b.x) / 2.0 + kCentre, (a.y + b.y) / 2.0 + kCentre);
  cairo_scale(cairo, (b.x - a.x) / 2.0, (b.y - a.y) / 2.0);
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
  cairo_close_path(cairo);
  cairo_restore(cairo);
}

void AddTriangle(cairo_t* cairo, int apexX, POINT a, POINT b) {
  cairo_move_to(cairo, apexX + kCentre, a.y + kCentre);
  cairo_line_to(cairo, b.x + kCentre, b.y + kCentre);
  cairo_line_to(cairo, a.x + kCentre, b.y + kCentre);
  cairo_close_path(cairo);
}

void AddShape(cairo_t* cairo, const BenchMark& mark) {
  const POINT a = mark.points.front();
  const POINT b = mark.points.back();
  switch (mark.kind) {
    case AnnotationSubTypeEllipse:
      AddEllipse(cairo, a, b);
      break;
    case AnnotationSubTypeRectangle:
      cairo_rectangle(cairo, a.x + kCentre, a.y + kCentre, b.x - a.x, b.y - a.y);
      break;
    case AnnotationSubTypeTriangle:
      AddTriangle(cairo, (a.x + b.x) / 2, a, b);
      break;
    case AnnotationSubTypeRightTriangle:
      AddTriangle(cairo, a.x, a, b);
      break;
    default:
      for (const POINT& point : mark.points) {
        cairo_line_to(cairo, point.x + kCentre, point.y + kCentre);
      }
  }
}

}  // namespace

CairoRival::CairoRival(const Workload& workload)
    : workload(workload),
      surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, workload.width, workload.height)),
      cairo(cairo_create(surface)) {
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_MITER);
  cairo_set_miter_limit(cairo, 10.0);
}

CairoRival::~CairoRival() {
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}

void CairoRival::Draw() {
  cairo_set_source_rgb(cairo, 1, 1, 1);
  cairo_paint(cairo);
  for (const BenchMark& mark : workload.marks) {
    Draw(mark);
  }
}

std::vector<std::uint32_t> CairoRival::CopyPixels() const {
  cairo_surface_flush(surface);
  const std::size_t rowBytes = static_cast<std::size_t>(workload.width) * sizeof(std::uint32_t);
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(workload.width) * workload.height);
  for (int y = 0; y < workload.height; ++y) {
    std::memcpy(pixels.data() + static_cast<std::ptrdiff_t>(y) * workload.width,
                cairo_image_surface_get_data(surface) +
                    static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface),
                rowBytes);
  }
  return pixels;
}

void CairoRival::DrawPicture(const BenchMark& mark) {
  const Picture& picture = *mark.picture;
  const POINT from = mark.points.front();
  const POINT to = mark.points.back();
  // Cairo takes no constant pixels, but does not write those of a source.
  auto* const pixels =
      reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(picture.pixels.data()));
  cairo_surface_t* const source = cairo_image_surface_create_for_data(
      pixels, CAIRO_FORMAT_ARGB32, picture.width, picture.height, picture.width * 4);
  cairo_save(cairo);
  cairo_translate(cairo, from.x, from.y);
  cairo_rectangle(cairo, 0, 0, to.x - from.x, to.y - from.y);
  cairo_scale(cairo, static_cast<double>(to.x - from.x) / picture.width,
              static_cast<double>(to.y - from.y) / picture.height);
  cairo_set_source_surface(cairo, source, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
  cairo_fill(cairo);
  cairo_restore(cairo);
  cairo_surface_destroy(source);
}

void CairoRival::Draw(const BenchMark& mark) {
  if (mark.picture != nullptr) {
    DrawPicture(mark);
    return;
  }
  SetColor(cairo, mark.color);
  cairo_set_line_width(cairo, mark.width);
  AddShape(cairo, mark);
  cairo_stroke(cairo);
}
