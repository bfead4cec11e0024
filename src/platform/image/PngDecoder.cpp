#include <csetjmp>
#include <cstdlib>
#include <cstring>

#include <png.h>

#include "platform/image/Decoders.h"
#include "platform/image/Limits.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr std::size_t kChannels = 4;
constexpr png_alloc_size_t kMaxChunkBytes = 8U << 20;
// More than a row of the widest picture and more than a chunk. libpng only warns of a chunk past
// its limit, and asks for as much memory as the chunk claims to be long.
constexpr png_alloc_size_t kMaxAllocation = 16U << 20;
// Deflate packs at most 258 bytes into 2 bits.
constexpr std::uint64_t kMaxInflation = 1032;

void Fail(png_structp png, png_const_charp /*message*/) {
  png_longjmp(png, 1);
}

void Ignore(png_structp /*png*/, png_const_charp /*message*/) {}

png_voidp Allocate(png_structp /*png*/, png_alloc_size_t size) {
  return size <= kMaxAllocation ? std::malloc(size) : nullptr;
}

void Release(png_structp /*png*/, png_voidp memory) {
  std::free(memory);
}

void ReadBytes(png_structp png, png_bytep destination, png_size_t size) {
  auto& rest = *static_cast<std::span<const std::byte>*>(png_get_io_ptr(png));
  if (size > rest.size()) {
    png_error(png, "");
  }
  std::memcpy(destination, rest.data(), size);
  rest = rest.subspan(size);
}

// Owns libpng's state. The functions below that call setjmp keep no object with a destructor and
// change no local variable after it, so a jump out of libpng skips nothing.
struct Reader {
  explicit Reader(std::span<const std::byte> bytes) : rest(bytes) {
    png = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore, nullptr, Allocate,
                                   Release);
    info = png == nullptr ? nullptr : png_create_info_struct(png);
  }
  ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  std::span<const std::byte> rest;
  png_structp png = nullptr;
  png_infop info = nullptr;
};

bool ReadHeader(Reader& reader) {
  if (setjmp(png_jmpbuf(reader.png)) != 0) {
    return false;
  }
  png_set_read_fn(reader.png, &reader.rest, ReadBytes);
  png_set_user_limits(reader.png, kMaxPictureSide, kMaxPictureSide);
  png_set_chunk_malloc_max(reader.png, kMaxChunkBytes);
  png_set_chunk_cache_max(reader.png, 1);  // texts and the like are passed over, not unpacked
  png_read_info(reader.png, reader.info);
  return true;
}

// Asks for 8 bits of red, green, blue and alpha, whatever the file holds.
bool PrepareRows(Reader& reader) {
  if (setjmp(png_jmpbuf(reader.png)) != 0) {
    return false;
  }
  png_set_scale_16(reader.png);
  png_set_expand(reader.png);
  png_set_gray_to_rgb(reader.png);
  png_set_add_alpha(reader.png, 0xFF, PNG_FILLER_AFTER);
  png_set_interlace_handling(reader.png);
  png_read_update_info(reader.png, reader.info);
  return true;
}

bool ReadRows(Reader& reader, png_bytepp rows) {
  if (setjmp(png_jmpbuf(reader.png)) != 0) {
    return false;
  }
  png_read_image(reader.png, rows);
  png_read_end(reader.png, nullptr);
  return true;
}

// Returns false for a header that promises more pixels than the file's bytes can hold, so that no
// memory is spent on them.
bool IsSizePlausible(const Reader& reader, std::size_t fileSize) {
  const std::uint64_t width = png_get_image_width(reader.png, reader.info);
  const std::uint64_t height = png_get_image_height(reader.png, reader.info);
  return IsPictureSizeAllowed(width, height) &&
         png_get_rowbytes(reader.png, reader.info) * height / kMaxInflation <= fileSize;
}

// Converts libpng's channels, four bytes a pixel, to premultiplied pixels, in place.
void ConvertInPlace(std::vector<std::uint32_t>& pixels) {
  for (std::uint32_t& pixel : pixels) {
    std::uint8_t channels[kChannels];
    std::memcpy(channels, &pixel, kChannels);
    pixel = Premultiply({channels[0], channels[1], channels[2], channels[3]});
  }
}

}  // namespace

Picture DecodePng(std::span<const std::byte> bytes) {
  Reader reader(bytes);
  if (reader.info == nullptr || !ReadHeader(reader) || !IsSizePlausible(reader, bytes.size()) ||
      !PrepareRows(reader)) {
    return {};
  }
  const std::size_t width = png_get_image_width(reader.png, reader.info);
  const std::size_t height = png_get_image_height(reader.png, reader.info);
  if (png_get_rowbytes(reader.png, reader.info) != width * kChannels) {
    return {};
  }
  Picture picture{PictureFormat::kPng, static_cast<int>(width), static_cast<int>(height),
                  std::vector<std::uint32_t>(width * height)};
  std::vector<png_bytep> rows(height);
  for (std::size_t y = 0; y < height; ++y) {
    rows[y] = reinterpret_cast<png_bytep>(picture.pixels.data() + y * width);
  }
  if (!ReadRows(reader, rows.data())) {
    return {};
  }
  ConvertInPlace(picture.pixels);
  return picture;
}
