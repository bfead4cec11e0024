#include <algorithm>
#include <stdexcept>

#include <png.h>

#include "ImageFiles.h"

namespace {

void Append(png_structp png, png_bytep bytes, png_size_t size) {
  auto& out = *static_cast<Bytes*>(png_get_io_ptr(png));
  const auto* first = reinterpret_cast<const std::byte*>(bytes);
  out.insert(out.end(), first, first + size);
}

void Flush(png_structp /*png*/) {}

[[noreturn]] void Throw(png_structp /*png*/, png_const_charp message) {
  throw std::runtime_error(message);
}

void SetColors(png_structp png, png_infop info, const PngFile& file) {
  if (!file.palette.empty()) {
    std::vector<png_color> palette(file.palette.size());
    std::transform(file.palette.begin(), file.palette.end(), palette.begin(),
                   [](const FileColor& color) {
                     return png_color{color.red, color.green, color.blue};
                   });
    png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
  }
  if (!file.paletteAlpha.empty()) {
    png_set_tRNS(png, info, file.paletteAlpha.data(), static_cast<int>(file.paletteAlpha.size()),
                 nullptr);
  }
  if (file.transparentColor) {
    const auto& values = *file.transparentColor;
    png_color_16 color{};
    color.gray = values[0];
    color.red = values[0];
    color.green = values[values.size() / 2];
    color.blue = values.back();
    png_set_tRNS(png, info, nullptr, 0, &color);
  }
}

}  // namespace

Bytes MakePng(const PngFile& file) {
  Bytes bytes;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Throw, Throw);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &bytes, Append, Flush);
  png_set_IHDR(png, info, static_cast<png_uint_32>(file.width),
               static_cast<png_uint_32>(file.height), file.bitDepth, file.colorType,
               file.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  SetColors(png, info, file);
  png_write_info(png, info);
  Samples rows = file.rows;
  const std::size_t stride = png_get_rowbytes(png, info);
  std::vector<png_bytep> pointers(static_cast<std::size_t>(file.height));
  for (int y = 0; y < file.height; ++y) {
    pointers[y] = rows.data() + static_cast<std::size_t>(y) * stride;
  }
  png_write_image(png, pointers.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return bytes;
}
