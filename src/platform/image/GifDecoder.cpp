#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include <gif_lib.h>

#include "platform/image/Decoders.h"
#include "platform/image/Limits.h"
#include "platform/image/PixelMath.h"

namespace {

constexpr int kInterlacePasses = 4;
constexpr std::array<int, kInterlacePasses> kPassStart = {0, 4, 2, 1};
constexpr std::array<int, kInterlacePasses> kPassStep = {8, 8, 4, 2};

struct CloseGif {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};
using Gif = std::unique_ptr<GifFileType, CloseGif>;

int ReadBytes(GifFileType* gif, GifByteType* destination, int size) {
  auto& rest = *static_cast<std::span<const std::byte>*>(gif->UserData);
  const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(std::max(size, 0)));
  std::copy_n(reinterpret_cast<const GifByteType*>(rest.data()), count, destination);
  rest = rest.subspan(count);
  return static_cast<int>(count);
}

// Reads one extension; the one that describes the next frame sets `transparent` to the index of the
// colour that is not drawn.
bool ReadExtension(GifFileType* gif, int& transparent) {
  int code = 0;
  GifByteType* block = nullptr;
  if (DGifGetExtension(gif, &code, &block) == GIF_ERROR) {
    return false;
  }
  while (block != nullptr) {
    GraphicsControlBlock control;
    if (code == GRAPHICS_EXT_FUNC_CODE &&
        DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
      transparent = control.TransparentColor;
    }
    if (DGifGetExtensionNext(gif, &block) == GIF_ERROR) {
      return false;
    }
  }
  return true;
}

// Moves to the first frame's pixels. Returns false if the file has none.
bool FindFrame(GifFileType* gif, int& transparent) {
  for (;;) {
    GifRecordType record = UNDEFINED_RECORD_TYPE;
    if (DGifGetRecordType(gif, &record) == GIF_ERROR) {
      return false;
    }
    if (record == IMAGE_DESC_RECORD_TYPE) {
      return DGifGetImageDesc(gif) == GIF_OK;
    }
    if (record != EXTENSION_RECORD_TYPE || !ReadExtension(gif, transparent)) {
      return false;
    }
  }
}

// The colour of each index; indexes past the file's colours are transparent.
using Palette = std::array<std::uint32_t, 256>;

bool ReadPalette(const GifFileType& gif, int transparent, Palette& palette) {
  const ColorMapObject* map = gif.Image.ColorMap != nullptr ? gif.Image.ColorMap : gif.SColorMap;
  if (map == nullptr) {
    return false;
  }
  const std::size_t count = std::min(static_cast<std::size_t>(map->ColorCount), palette.size());
  palette.fill(0);
  for (std::size_t i = 0; i < count; ++i) {
    const GifColorType& color = map->Colors[i];
    palette[i] = PackPixel(255, color.Red, color.Green, color.Blue);
  }
  if (transparent >= 0) {
    palette[static_cast<std::size_t>(transparent) % palette.size()] = 0;
  }
  return true;
}

// Decodes the frame's next row, which is row `y` of the frame. Pixels past the screen are dropped.
bool ReadRow(GifFileType* gif, const Palette& palette, int y, std::vector<GifPixelType>& row,
             Picture& picture) {
  const GifImageDesc& frame = gif->Image;
  if (DGifGetLine(gif, row.data(), frame.Width) == GIF_ERROR) {
    return false;
  }
  const int screenY = frame.Top + y;
  const int columns = std::min(frame.Width, picture.width - frame.Left);
  if (screenY < picture.height && columns > 0) {
    const std::size_t start = static_cast<std::size_t>(screenY) * picture.width + frame.Left;
    std::transform(row.begin(), row.begin() + columns, picture.pixels.begin() + start,
                   [&palette](GifPixelType index) { return palette[index]; });
  }
  return true;
}

bool ReadFrame(GifFileType* gif, const Palette& palette, Picture& picture) {
  std::vector<GifPixelType> row(static_cast<std::size_t>(gif->Image.Width));
  const int passes = gif->Image.Interlace ? kInterlacePasses : 1;
  for (int pass = 0; pass < passes; ++pass) {
    const int step = passes == 1 ? 1 : kPassStep[pass];
    for (int y = passes == 1 ? 0 : kPassStart[pass]; y < gif->Image.Height; y += step) {
      if (!ReadRow(gif, palette, y, row, picture)) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace

Picture DecodeGif(std::span<const std::byte> bytes) {
  const Gif gif(DGifOpen(&bytes, ReadBytes, nullptr));
  if (gif == nullptr || !IsPictureSizeAllowed(gif->SWidth, gif->SHeight)) {
    return {};
  }
  int transparent = NO_TRANSPARENT_COLOR;
  Palette palette;
  if (!FindFrame(gif.get(), transparent) || !ReadPalette(*gif, transparent, palette) ||
      !IsPictureSizeAllowed(gif->Image.Width, gif->Image.Height)) {
    return {};
  }
  Picture picture{PictureFormat::kGif, gif->SWidth, gif->SHeight,
                  std::vector<std::uint32_t>(static_cast<std::size_t>(gif->SWidth) * gif->SHeight)};
  return ReadFrame(gif.get(), palette, picture) ? picture : Picture{};
}
