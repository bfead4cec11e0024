// The decoders by the system's imaging component. It is lenient with files that are cut, and
// unpacks what it is shown; so what a file promises is read before, and what no pixel needs is left
// out of what it is shown.
#include <algorithm>
#include <cstring>

#include "platform/image/Decoders.h"
#include "platform/image/GifFrame.h"
#include "platform/image/JpegSize.h"
#include "platform/image/PixelMath.h"
#include "platform/image/PngParts.h"
#include "platform/image/Wic.h"

namespace {

constexpr std::size_t kMaxBandBytes = std::size_t{16} << 20;

// One file's first frame in the component's hands. The bytes outlive it.
class Frame {
 public:
  // Opens nothing unless the frame has that size.
  Frame(const GUID& container, std::span<const std::byte> bytes, int width, int height)
      : width(static_cast<UINT>(width)), height(static_cast<UINT>(height)) {
    isOpen = wic.IsReady() && bytes.size() <= MAXDWORD &&
             SUCCEEDED(wic.Factory()->CreateStream(stream.Out())) &&
             SUCCEEDED(stream->InitializeFromMemory(
                 reinterpret_cast<BYTE*>(const_cast<std::byte*>(bytes.data())),  // only read
                 static_cast<DWORD>(bytes.size()))) &&
             SUCCEEDED(wic.Factory()->CreateDecoder(container, nullptr, decoder.Out())) &&
             SUCCEEDED(decoder->Initialize(stream.get(), WICDecodeMetadataCacheOnDemand)) &&
             SUCCEEDED(decoder->GetFrame(0, frame.Out())) &&
             SUCCEEDED(frame->GetPixelFormat(&format)) && HasSize();
  }

  bool IsOpen() const { return isOpen; }
  // The file's own format or, after Convert, the one asked for.
  const GUID& Format() const { return format; }

  bool Convert(const GUID& wanted) {
    if (format == wanted) {
      return true;
    }
    format = wanted;
    return SUCCEEDED(wic.Factory()->CreateFormatConverter(converter.Out())) &&
           SUCCEEDED(converter->Initialize(frame.get(), wanted, WICBitmapDitherTypeNone, nullptr, 0,
                                           WICBitmapPaletteTypeCustom));
  }

  // Copies `count` rows of the format's pixels, the first of them row `first`, without gaps.
  bool CopyRows(UINT first, UINT count, UINT bytesPerPixel, void* to) const {
    const WICRect rows = {0, static_cast<INT>(first), static_cast<INT>(width),
                          static_cast<INT>(count)};
    IWICBitmapSource* source = frame.get();
    if (converter.get() != nullptr) {
      source = converter.get();
    }
    const UINT stride = width * bytesPerPixel;
    return SUCCEEDED(source->CopyPixels(&rows, stride, stride * count, static_cast<BYTE*>(to)));
  }

 private:
  bool HasSize() const {
    UINT foundWidth = 0;
    UINT foundHeight = 0;
    return SUCCEEDED(frame->GetSize(&foundWidth, &foundHeight)) && foundWidth == width &&
           foundHeight == height;
  }

  Wic wic;
  ComPointer<IWICStream> stream;
  ComPointer<IWICBitmapDecoder> decoder;
  ComPointer<IWICBitmapFrameDecode> frame;
  ComPointer<IWICFormatConverter> converter;
  UINT width;
  UINT height;
  GUID format{};
  bool isOpen = false;
};

Picture MakePicture(PictureFormat format, int width, int height) {
  return {format, width, height,
          std::vector<std::uint32_t>(static_cast<std::size_t>(width) *
                                     static_cast<std::size_t>(height))};
}

// Fills the picture with the frame's pixels of 4 bytes, as they are.
bool CopyWords(const Frame& frame, Picture& picture) {
  return frame.CopyRows(0, static_cast<UINT>(picture.height), 4, picture.pixels.data());
}

// A channel of `depth` bits, 8 at most, as 8 bits.
std::uint32_t Widen(std::uint32_t sample, int depth) {
  return sample * 255 / ((1U << depth) - 1);
}

bool ReadPng8(Frame& frame, const PngParts& parts, Picture& picture) {
  if (!frame.Convert(GUID_WICPixelFormat32bppBGRA) || !CopyWords(frame, picture)) {
    return false;
  }
  for (std::uint32_t& pixel : picture.pixels) {
    const auto channel = [pixel](int shift) { return static_cast<std::uint8_t>(pixel >> shift); };
    pixel = Premultiply({channel(16), channel(8), channel(0), channel(24)});
  }
  if (parts.transparent) {
    const auto& key = *parts.transparent;
    std::replace(picture.pixels.begin(), picture.pixels.end(),
                 PackPixel(255, Widen(key[0], parts.depth), Widen(key[1], parts.depth),
                           Widen(key[2], parts.depth)),
                 0U);
  }
  return true;
}

// Pixels of 16 bits a channel: grey, or red, green and blue, or those and alpha.
std::uint32_t Convert16(const std::uint16_t* samples, std::size_t channels, const PngParts& parts) {
  const std::size_t step = channels == 1 ? 0 : 1;
  const std::uint16_t red = samples[0];
  const std::uint16_t green = samples[step];
  const std::uint16_t blue = samples[2 * step];
  if (parts.transparent && *parts.transparent == std::array<std::uint32_t, 3>{red, green, blue}) {
    return 0;
  }
  const auto nearest = [](std::uint32_t sample) {
    return static_cast<std::uint8_t>((sample * 255 + 32767) / 65535);
  };
  const std::uint8_t alpha = channels == 4 ? nearest(samples[3]) : std::uint8_t{255};
  return Premultiply({nearest(red), nearest(green), nearest(blue), alpha});
}

// The component's own conversions from 16 bits may cut where the nearest value is wanted.
bool ReadPng16(Frame& frame, const PngParts& parts, Picture& picture) {
  std::size_t channels = 4;
  if (frame.Format() == GUID_WICPixelFormat16bppGray) {
    channels = 1;
  } else if (frame.Format() == GUID_WICPixelFormat48bppRGB) {
    channels = 3;
  } else if (!frame.Convert(GUID_WICPixelFormat64bppRGBA)) {
    return false;
  }
  const auto width = static_cast<std::size_t>(picture.width);
  const auto height = static_cast<std::size_t>(picture.height);
  const std::size_t rowSamples = width * channels;
  const std::size_t rows = std::clamp(kMaxBandBytes / (rowSamples * 2), std::size_t{1}, height);
  std::vector<std::uint16_t> band(rows * rowSamples);
  for (std::size_t y = 0; y < height; y += rows) {
    const std::size_t count = std::min(rows, height - y);
    if (!frame.CopyRows(static_cast<UINT>(y), static_cast<UINT>(count),
                        static_cast<UINT>(2 * channels), band.data())) {
      return false;
    }
    for (std::size_t i = 0; i < count * width; ++i) {
      picture.pixels[y * width + i] = Convert16(band.data() + i * channels, channels, parts);
    }
  }
  return true;
}

bool ReadInks(const Frame& frame, Picture& picture) {
  if (!CopyWords(frame, picture)) {
    return false;
  }
  for (std::uint32_t& pixel : picture.pixels) {
    std::uint8_t inks[4];
    std::memcpy(inks, &pixel, sizeof inks);
    pixel = PrintInks(inks[0], inks[1], inks[2], inks[3]);
  }
  return true;
}

// The part of the frame that lies on the screen.
void PlaceFrame(const GifFrame& gif, const std::vector<std::uint8_t>& indexes, Picture& picture) {
  const int columns = std::min(gif.width, gif.screenWidth - gif.left);
  const int rows = std::min(gif.height, gif.screenHeight - gif.top);
  for (int y = 0; y < rows; ++y) {
    const std::size_t from = static_cast<std::size_t>(y) * static_cast<std::size_t>(gif.width);
    const std::size_t to =
        static_cast<std::size_t>(gif.top + y) * static_cast<std::size_t>(gif.screenWidth) +
        static_cast<std::size_t>(gif.left);
    for (std::size_t x = 0; static_cast<int>(x) < columns; ++x) {
      picture.pixels[to + x] = gif.palette[indexes[from + x]];
    }
  }
}

}  // namespace

Picture DecodePng(std::span<const std::byte> bytes) {
  const auto parts = ReadPngParts(bytes);
  if (!parts) {
    return {};
  }
  Frame frame(GUID_ContainerFormatPng, parts->reduced, parts->width, parts->height);
  if (!frame.IsOpen()) {
    return {};
  }
  Picture picture = MakePicture(PictureFormat::kPng, parts->width, parts->height);
  const auto read = parts->depth == 16 ? ReadPng16 : ReadPng8;
  return read(frame, *parts, picture) ? picture : Picture{};
}

Picture DecodeJpeg(std::span<const std::byte> bytes) {
  const auto size = ReadJpegSize(bytes);
  if (!size) {
    return {};
  }
  Frame frame(GUID_ContainerFormatJpeg, bytes, size->width, size->height);
  if (!frame.IsOpen()) {
    return {};
  }
  Picture picture = MakePicture(PictureFormat::kJpeg, size->width, size->height);
  if (frame.Format() == GUID_WICPixelFormat32bppCMYK) {
    return ReadInks(frame, picture) ? picture : Picture{};
  }
  if (!frame.Convert(GUID_WICPixelFormat32bppBGRA) || !CopyWords(frame, picture)) {
    return {};
  }
  for (std::uint32_t& pixel : picture.pixels) {
    pixel |= PackPixel(255, 0, 0, 0);
  }
  return picture;
}

Picture DecodeGif(std::span<const std::byte> bytes) {
  const auto gif = ReadGifFrame(bytes);
  if (!gif) {
    return {};
  }
  Frame frame(GUID_ContainerFormatGif, gif->alone, gif->width, gif->height);
  if (!frame.IsOpen() || !frame.Convert(GUID_WICPixelFormat8bppIndexed)) {
    return {};
  }
  std::vector<std::uint8_t> indexes(static_cast<std::size_t>(gif->width) *
                                    static_cast<std::size_t>(gif->height));
  if (!frame.CopyRows(0, static_cast<UINT>(gif->height), 1, indexes.data())) {
    return {};
  }
  Picture picture = MakePicture(PictureFormat::kGif, gif->screenWidth, gif->screenHeight);
  PlaceFrame(*gif, indexes, picture);
  return picture;
}
