#include <algorithm>
#include <array>
#include <stdexcept>

#include <gif_lib.h>

#include "ImageFiles.h"

namespace {

void Check(int result) {
  if (result == GIF_ERROR) {
    throw std::runtime_error("the picture cannot be written as GIF");
  }
}

int Append(GifFileType* gif, const GifByteType* bytes, int size) {
  auto& out = *static_cast<Bytes*>(gif->UserData);
  const auto* first = reinterpret_cast<const std::byte*>(bytes);
  out.insert(out.end(), first, first + size);
  return size;
}

// The order in which a file stores its rows.
std::vector<int> RowOrder(const GifFile& file) {
  static constexpr std::array<std::array<int, 2>, 4> kPasses = {{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
  std::vector<int> order;
  for (int y = 0; !file.interlaced && y < file.height; ++y) {
    order.push_back(y);
  }
  for (const auto& [start, step] : kPasses) {
    for (int y = start; file.interlaced && y < file.height; y += step) {
      order.push_back(y);
    }
  }
  return order;
}

void PutFrame(GifFileType* gif, const GifFile& file, const Samples& indexes, ColorMapObject* map) {
  Check(EGifPutImageDesc(gif, file.left, file.top, file.width, file.height, file.interlaced,
                         file.localPalette ? map : nullptr));
  for (const int y : RowOrder(file)) {
    Samples row(file.width);
    std::copy_n(indexes.begin() + Product(y, file.width), file.width, row.begin());
    Check(EGifPutLine(gif, row.data(), file.width));
  }
}

}  // namespace

Bytes MakeGif(const GifFile& file) {
  Bytes bytes;
  GifFileType* gif = EGifOpen(&bytes, Append, nullptr);
  EGifSetGifVersion(gif, true);
  std::vector<GifColorType> colors(file.palette.size());
  std::transform(file.palette.begin(), file.palette.end(), colors.begin(),
                 [](const FileColor& color) {
                   return GifColorType{color.red, color.green, color.blue};
                 });
  ColorMapObject* map = GifMakeMapObject(static_cast<int>(colors.size()), colors.data());
  Check(EGifPutScreenDesc(gif, file.screenWidth, file.screenHeight, 8, 0,
                          file.localPalette ? nullptr : map));
  if (file.transparent >= 0) {
    const std::array<GifByteType, 4> control = {1, 0, 0,
                                                static_cast<GifByteType>(file.transparent)};
    Check(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(control.size()),
                           control.data()));
  }
  PutFrame(gif, file, file.indexes, map);
  if (file.secondFrame) {
    PutFrame(gif, file, Samples(file.indexes.size(), 0), map);
  }
  GifFreeMapObject(map);
  Check(EGifCloseFile(gif, nullptr));
  return bytes;
}
