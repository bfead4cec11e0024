#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <jpeglib.h>

#include "ImageFiles.h"

namespace {

constexpr int kCoefficients = 64;

[[noreturn]] void Throw(j_common_ptr /*codec*/) {
  throw std::runtime_error("the picture cannot be written as JPEG");
}

// One scan for the mean, then for each coefficient one scan and `refinements` more precise ones.
std::vector<jpeg_scan_info> MakeScans(int refinements) {
  std::vector<jpeg_scan_info> scans = {{1, {0, 0, 0, 0}, 0, 0, 0, 0}};
  for (int coefficient = 1; coefficient < kCoefficients; ++coefficient) {
    int previous = 0;
    for (int left = refinements; left >= 0; --left) {
      scans.push_back({1, {0, 0, 0, 0}, coefficient, coefficient, previous, left});
      previous = left;
    }
  }
  return scans;
}

J_COLOR_SPACE ColorSpace(int components) {
  switch (components) {
    case 1:
      return JCS_GRAYSCALE;
    case 3:
      return JCS_RGB;
    default:
      return JCS_CMYK;
  }
}

void SetUp(jpeg_compress_struct& codec, const JpegFile& file) {
  codec.image_width = static_cast<JDIMENSION>(file.width);
  codec.image_height = static_cast<JDIMENSION>(file.height);
  codec.input_components = file.components;
  codec.in_color_space = ColorSpace(file.components);
  jpeg_set_defaults(&codec);
  if (file.components == 4) {
    jpeg_set_colorspace(&codec, file.printed ? JCS_YCCK : JCS_CMYK);
    codec.write_Adobe_marker = file.printed ? TRUE : FALSE;
  }
  jpeg_set_quality(&codec, 100, TRUE);
  for (int i = 0; i < file.components; ++i) {
    codec.comp_info[i].h_samp_factor = 1;
    codec.comp_info[i].v_samp_factor = 1;
  }
  if (file.progressive) {
    jpeg_simple_progression(&codec);
  }
}

}  // namespace

Bytes MakeJpeg(const JpegFile& file) {
  jpeg_compress_struct codec{};
  jpeg_error_mgr errors{};
  codec.err = jpeg_std_error(&errors);
  errors.error_exit = Throw;
  jpeg_create_compress(&codec);
  unsigned char* memory = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&codec, &memory, &size);
  SetUp(codec, file);
  const auto scans = MakeScans(file.refinements);
  if (file.progressive && file.components == 1) {
    codec.scan_info = scans.data();
    codec.num_scans = static_cast<int>(scans.size());
  }
  jpeg_start_compress(&codec, TRUE);
  Samples samples = file.samples;
  const std::size_t stride = Product(file.width, file.components);
  while (codec.next_scanline < codec.image_height) {
    JSAMPROW row = samples.data() + codec.next_scanline * stride;
    jpeg_write_scanlines(&codec, &row, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  const auto* first = reinterpret_cast<const std::byte*>(memory);
  Bytes bytes(first, first + size);
  std::free(memory);
  return bytes;
}
