#include <csetjmp>

#include <png.h>

#include "platform/image/Encoders.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr std::size_t kChannels = 4;
constexpr int kBitsPerChannel = 8;

void Fail(png_structp png, png_const_charp /*message*/) {
  png_longjmp(png, 1);
}

void Ignore(png_structp /*png*/, png_const_charp /*message*/) {}

void WriteBytes(png_structp png, png_bytep bytes, png_size_t size) {
  if (!static_cast<ReplacingFile*>(png_get_io_ptr(png))->Write(bytes, size)) {
    png_error(png, "");
  }
}

void Flush(png_structp /*png*/) {}

// Owns libpng's state and one row of the file.
struct Writer {
  explicit Writer(int width) : row(static_cast<std::size_t>(width) * kChannels) {
    png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore);
    info = png == nullptr ? nullptr : png_create_info_struct(png);
  }
  ~Writer() { png_destroy_write_struct(&png, &info); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  std::vector<png_byte> row;
  png_structp png = nullptr;
  png_infop info = nullptr;
};

void ConvertRow(const PictureView& view, int y, png_byte* row) {
  for (int x = 0; x < view.width; ++x, row += kChannels) {
    const StraightColor color = Unpremultiply(PixelAt(view, x, y));
    row[0] = color.red;
    row[1] = color.green;
    row[2] = color.blue;
    row[3] = color.alpha;
  }
}

// A jump out of libpng lands here; nothing with a destructor lives in this frame or below it.
bool WritePng(Writer& writer, ReplacingFile& file, const PictureView& view) {
  if (setjmp(png_jmpbuf(writer.png)) != 0) {
    return false;
  }
  png_set_write_fn(writer.png, &file, WriteBytes, Flush);
  png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(view.width),
               static_cast<png_uint_32>(view.height), kBitsPerChannel, PNG_COLOR_TYPE_RGB_ALPHA,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(writer.png, writer.info);
  for (int y = 0; y < view.height; ++y) {
    ConvertRow(view, y, writer.row.data());
    png_write_row(writer.png, writer.row.data());
  }
  png_write_end(writer.png, nullptr);
  return true;
}

}  // namespace

bool EncodePng(const PictureView& view, ReplacingFile& file) {
  Writer writer(view.width);
  return writer.info != nullptr && WritePng(writer, file, view);
}
