#include <array>
#include <vector>

#include "platform/image/Decoders.h"
#include "platform/image/JpegError.h"
#include "platform/image/Limits.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr int kMaxChannels = 4;

struct ScanMonitor {
  jpeg_progress_mgr base;
  std::uint64_t pixels;
};

void Fail(j_decompress_ptr codec) {
  codec->err->error_exit(reinterpret_cast<j_common_ptr>(codec));
}

void CheckScans(j_common_ptr codec) {
  const auto* decoder = reinterpret_cast<j_decompress_ptr>(codec);
  const auto* monitor = reinterpret_cast<const ScanMonitor*>(codec->progress);
  const auto scans = static_cast<std::uint64_t>(decoder->input_scan_number);
  if (scans > kMaxJpegScans || scans * monitor->pixels > kMaxScannedPixels) {
    codec->err->error_exit(codec);
  }
}

// The whole file is in memory: if libjpeg asks for more, the file was cut.
boolean FailAtEnd(j_decompress_ptr codec) {
  Fail(codec);
  return FALSE;
}

void Skip(j_decompress_ptr codec, long count) {
  if (count <= 0) {
    return;
  }
  if (static_cast<std::size_t>(count) > codec->src->bytes_in_buffer) {
    Fail(codec);
  }
  codec->src->next_input_byte += count;
  codec->src->bytes_in_buffer -= static_cast<std::size_t>(count);
}

struct Reader {
  explicit Reader(std::span<const std::byte> bytes) {
    codec.err = InitJpegErrors(errors);
    source.init_source = [](j_decompress_ptr) {};
    source.fill_input_buffer = FailAtEnd;
    source.skip_input_data = Skip;
    source.resync_to_restart = jpeg_resync_to_restart;
    source.term_source = [](j_decompress_ptr) {};
    source.next_input_byte = reinterpret_cast<const JOCTET*>(bytes.data());
    source.bytes_in_buffer = bytes.size();
    monitor.base.progress_monitor = CheckScans;
  }
  ~Reader() { jpeg_destroy_decompress(&codec); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  jpeg_decompress_struct codec{};
  JpegErrorManager errors{};
  jpeg_source_mgr source{};
  ScanMonitor monitor{};
};

bool ReadHeader(Reader& reader) {
  if (setjmp(reader.errors.jump) != 0) {
    return false;
  }
  jpeg_create_decompress(&reader.codec);
  reader.codec.mem->max_memory_to_use = kMaxPictureBytes;
  reader.codec.src = &reader.source;
  jpeg_read_header(&reader.codec, TRUE);
  return true;
}

bool Start(Reader& reader) {
  if (setjmp(reader.errors.jump) != 0) {
    return false;
  }
  const bool isPrint =
      reader.codec.jpeg_color_space == JCS_CMYK || reader.codec.jpeg_color_space == JCS_YCCK;
  reader.codec.out_color_space = isPrint ? JCS_CMYK : JCS_RGB;
  reader.monitor.pixels = std::uint64_t{reader.codec.image_width} * reader.codec.image_height;
  reader.codec.progress = &reader.monitor.base;
  jpeg_start_decompress(&reader.codec);
  return true;
}

bool ReadRow(Reader& reader, JSAMPROW row) {
  if (setjmp(reader.errors.jump) != 0) {
    return false;
  }
  return jpeg_read_scanlines(&reader.codec, &row, 1) == 1;
}

bool Finish(Reader& reader) {
  if (setjmp(reader.errors.jump) != 0) {
    return false;
  }
  return jpeg_finish_decompress(&reader.codec) == TRUE;
}

void ConvertColors(const JSAMPLE* row, std::span<std::uint32_t> pixels) {
  for (std::uint32_t& pixel : pixels) {
    pixel = PackPixel(255, row[0], row[1], row[2]);
    row += 3;
  }
}

// Files with the marker of the program that introduced inks store them inverted: 255 is no ink.
void ConvertInks(const JSAMPLE* row, bool inverted, std::span<std::uint32_t> pixels) {
  const std::uint8_t flip = inverted ? 255 : 0;
  for (std::uint32_t& pixel : pixels) {
    const auto ink = [row, flip](int i) { return static_cast<std::uint8_t>(row[i] ^ flip); };
    pixel = PrintInks(ink(0), ink(1), ink(2), ink(3));
    row += 4;
  }
}

bool ReadPixels(Reader& reader, Picture& picture) {
  const auto width = static_cast<std::size_t>(picture.width);
  std::vector<JSAMPLE> row(width * kMaxChannels);
  for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
    if (!ReadRow(reader, row.data())) {
      return false;
    }
    const std::span<std::uint32_t> pixels(picture.pixels.data() + y * width, width);
    if (reader.codec.out_color_space == JCS_CMYK) {
      ConvertInks(row.data(), reader.codec.saw_Adobe_marker == TRUE, pixels);
    } else {
      ConvertColors(row.data(), pixels);
    }
  }
  return true;
}

}  // namespace

Picture DecodeJpeg(std::span<const std::byte> bytes) {
  Reader reader(bytes);
  if (!ReadHeader(reader) ||
      !IsPictureSizeAllowed(reader.codec.image_width, reader.codec.image_height) ||
      !Start(reader)) {
    return {};
  }
  const std::size_t width = reader.codec.output_width;
  const std::size_t height = reader.codec.output_height;
  Picture picture{PictureFormat::kJpeg, static_cast<int>(width), static_cast<int>(height),
                  std::vector<std::uint32_t>(width * height)};
  return ReadPixels(reader, picture) && Finish(reader) ? picture : Picture{};
}
