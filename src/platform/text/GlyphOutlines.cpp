#include "platform/text/GlyphOutlines.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace {

// Cairo's coordinates end at 2^23. An outline that reaches further shows no detail on any surface.
constexpr double kFarthest = 1 << 22;

struct DestroyPath {
  void operator()(cairo_path_t* path) const { cairo_path_destroy(path); }
};
using Path = std::unique_ptr<cairo_path_t, DestroyPath>;

// The layout's outlines in its own units, as doubles.
Path CopyOutlines(PangoLayout* layout) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
  cairo_t* context = cairo_create(surface);
  pango_cairo_layout_path(context, layout);
  Path path(cairo_copy_path(context));
  cairo_destroy(context);
  cairo_surface_destroy(surface);
  return path;
}

struct Point {
  double x;
  double y;
};

// From the layout's units to the surface's.
struct Placement {
  double scale;
  double x;
  double y;

  Point Apply(const cairo_path_data_t& data) const {
    return {x + data.point.x * scale, y + data.point.y * scale};
  }
};

// One closed outline: the elements first .. last-1 of a path.
struct Contour {
  const cairo_path_data_t* first;
  const cairo_path_data_t* last;

  bool IsWithinReach(const Placement& place, int width, int height) const;
  void Append(cairo_t* context, const Placement& place) const;
};

bool Contour::IsWithinReach(const Placement& place, int width, int height) const {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  Point low = {kInfinity, kInfinity};
  Point high = {-kInfinity, -kInfinity};
  for (const auto* element = first; element < last; element += element->header.length) {
    for (int i = 1; i < element->header.length; ++i) {
      const Point point = place.Apply(element[i]);
      low = {std::min(low.x, point.x), std::min(low.y, point.y)};
      high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
  }
  const bool isShown = high.x > 0 && high.y > 0 && low.x < width && low.y < height;
  return isShown && std::min(low.x, low.y) > -kFarthest && std::max(high.x, high.y) < kFarthest;
}

void Contour::Append(cairo_t* context, const Placement& place) const {
  for (const auto* element = first; element < last; element += element->header.length) {
    std::array<Point, 3> points{};
    for (int i = 1; i < element->header.length; ++i) {
      points[static_cast<std::size_t>(i - 1)] = place.Apply(element[i]);
    }
    switch (element->header.type) {
      case CAIRO_PATH_MOVE_TO:
        cairo_move_to(context, points[0].x, points[0].y);
        break;
      case CAIRO_PATH_LINE_TO:
        cairo_line_to(context, points[0].x, points[0].y);
        break;
      case CAIRO_PATH_CURVE_TO:
        cairo_curve_to(context, points[0].x, points[0].y, points[1].x, points[1].y, points[2].x,
                       points[2].y);
        break;
      case CAIRO_PATH_CLOSE_PATH:
        break;  // filling closes every contour
    }
  }
}

}  // namespace

void FillGlyphOutlines(cairo_t* context, PangoLayout* layout, double scale, double x, double y,
                       int width, int height) {
  const Path path = CopyOutlines(layout);
  const Placement place = {scale, x, y};
  const cairo_path_data_t* end = path->data + path->num_data;
  for (const cairo_path_data_t* first = path->data; first < end;) {
    const cairo_path_data_t* last = first + first->header.length;
    while (last < end && last->header.type != CAIRO_PATH_MOVE_TO) {
      last += last->header.length;
    }
    const Contour contour = {first, last};
    if (contour.IsWithinReach(place, width, height)) {
      contour.Append(context, place);
    }
    first = last;
  }
  cairo_fill(context);
}
