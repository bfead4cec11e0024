#include <array>
#include <vector>

#include "platform/image/Encoders.h"
#include "platform/image/JpegError.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr int kQuality = 90;
constexpr int kChannels = 3;
constexpr std::size_t kBlockSize = 16384;

// Stands where libjpeg expects its destination manager.
struct Destination {
  jpeg_destination_mgr base;
  ReplacingFile* file;
  std::array<JOCTET, kBlockSize> block;
};

void WriteBlock(j_compress_ptr codec, std::size_t size) {
  auto* destination = reinterpret_cast<Destination*>(codec->dest);
  if (!destination->file->Write(destination->block.data(), size)) {
    codec->err->error_exit(reinterpret_cast<j_common_ptr>(codec));
  }
  destination->base.next_output_byte = destination->block.data();
  destination->base.free_in_buffer = destination->block.size();
}

boolean WriteFullBlock(j_compress_ptr codec) {
  WriteBlock(codec, kBlockSize);
  return TRUE;
}

void WriteRest(j_compress_ptr codec) {
  WriteBlock(codec, kBlockSize - codec->dest->free_in_buffer);
}

struct Writer {
  Writer(ReplacingFile& file, int width) : row(static_cast<std::size_t>(width) * kChannels) {
    codec.err = InitJpegErrors(errors);
    destination.base.init_destination = [](j_compress_ptr) {};
    destination.base.empty_output_buffer = WriteFullBlock;
    destination.base.term_destination = WriteRest;
    destination.base.next_output_byte = destination.block.data();
    destination.base.free_in_buffer = destination.block.size();
    destination.file = &file;
  }
  ~Writer() { jpeg_destroy_compress(&codec); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  std::vector<JSAMPLE> row;
  jpeg_compress_struct codec{};
  JpegErrorManager errors{};
  Destination destination{};
};

JSAMPROW ConvertRow(const PictureView& view, int y, std::vector<JSAMPLE>& row) {
  JSAMPLE* sample = row.data();
  for (int x = 0; x < view.width; ++x) {
    const StraightColor color = ComposeOverWhite(PixelAt(view, x, y));
    *sample++ = color.red;
    *sample++ = color.green;
    *sample++ = color.blue;
  }
  return row.data();
}

bool WriteJpeg(Writer& writer, const PictureView& view) {
  if (setjmp(writer.errors.jump) != 0) {
    return false;
  }
  jpeg_create_compress(&writer.codec);
  writer.codec.dest = &writer.destination.base;
  writer.codec.image_width = static_cast<JDIMENSION>(view.width);
  writer.codec.image_height = static_cast<JDIMENSION>(view.height);
  writer.codec.input_components = kChannels;
  writer.codec.in_color_space = JCS_RGB;
  jpeg_set_defaults(&writer.codec);
  jpeg_set_quality(&writer.codec, kQuality, TRUE);
  jpeg_start_compress(&writer.codec, TRUE);
  while (writer.codec.next_scanline < writer.codec.image_height) {
    JSAMPROW row = ConvertRow(view, static_cast<int>(writer.codec.next_scanline), writer.row);
    jpeg_write_scanlines(&writer.codec, &row, 1);
  }
  jpeg_finish_compress(&writer.codec);
  return true;
}

}  // namespace

bool EncodeJpeg(const PictureView& view, ReplacingFile& file) {
  Writer writer(file, view.width);
  return WriteJpeg(writer, view);
}
