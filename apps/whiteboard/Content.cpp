#include "whiteboard/Content.h"

#include <cairo.h>
#include <algorithm>
#include <cstdlib>

#include "common/Input.h"

namespace whiteboard {

namespace {

cairo_surface_t* SurfaceOn(const std::uint32_t* pixels, int width, int height) {
  // Cairo takes both the source and the target through a non-const pointer.
  auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(pixels));
  return cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, width, height, width * 4);
}

int HexDigit(char letter) {
  const std::string digits = "0123456789abcdef";
  const std::size_t at =
      digits.find(static_cast<char>(letter >= 'A' && letter <= 'F' ? letter - 'A' + 'a' : letter));
  return at == std::string::npos ? -1 : static_cast<int>(at);
}

std::string WithoutPercents(const std::string& text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int high = text[at] == '%' && at + 2 < text.size() ? HexDigit(text[at + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[at + 2]) : -1;
    if (low >= 0) {
      plain += static_cast<char>(high * 16 + low);
      at += 2;
    } else {
      plain += text[at];
    }
  }
  return plain;
}

}  // namespace

std::shared_ptr<const parchlet::Picture> LoadContent(const std::string& path) {
  return std::make_shared<const parchlet::Picture>(
      apps::DecodeFileBytes(apps::ReadFileBytes(path), path));
}

parchlet::Picture Render(const parchlet::Picture* content, int width, int height) {
  parchlet::Picture raster{width, height, {}};
  raster.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), kPaper);
  if (content == nullptr) {
    return raster;
  }
  cairo_surface_t* source = SurfaceOn(content->pixels.data(), content->width, content->height);
  cairo_surface_t* target = SurfaceOn(raster.pixels.data(), width, height);
  cairo_t* painter = cairo_create(target);
  cairo_scale(painter, static_cast<double>(width) / content->width,
              static_cast<double>(height) / content->height);
  cairo_set_source_surface(painter, source, 0, 0);
  // Without padding the picture would fade out along its edges.
  cairo_pattern_set_extend(cairo_get_source(painter), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(painter), CAIRO_FILTER_GOOD);
  cairo_paint(painter);
  cairo_destroy(painter);
  cairo_surface_destroy(target);
  cairo_surface_destroy(source);
  return raster;
}

std::string CleanPath(const std::string& text) {
  const auto isOuter = [](char letter) {
    return letter == ' ' || letter == '\'' || letter == '"' || letter == '\r' || letter == '\n';
  };
  const auto first = std::find_if_not(text.begin(), text.end(), isOuter);
  const auto last = std::find_if_not(text.rbegin(), text.rend(), isOuter).base();
  std::string path = first < last ? std::string(first, last) : std::string();
  const std::string scheme = "file://";
  if (path.starts_with(scheme)) {
    const std::size_t slash = path.find('/', scheme.size());
    return slash == std::string::npos ? std::string() : WithoutPercents(path.substr(slash));
  }
  const char* home = std::getenv("HOME");
  if (path.starts_with("~/") && home != nullptr) {
    path.replace(0, 1, home);
  }
  return path;
}

}  // namespace whiteboard
