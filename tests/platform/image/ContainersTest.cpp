// What the readers that Windows' decoders rely on tell of a file, beside the decoders of this
// system.
#include <gtest/gtest.h>

#include <filesystem>

#include "ImageFiles.h"
#include "platform/image/GifFrame.h"
#include "platform/image/JpegSize.h"
#include "platform/image/Picture.h"
#include "platform/image/PngParts.h"

namespace {

using Size = std::pair<int, int>;

Size SizeInFile(const std::string& format, std::span<const std::byte> bytes) {
  if (format == "png") {
    const auto parts = ReadPngParts(bytes);
    return parts ? Size(parts->width, parts->height) : Size();
  }
  if (format == "gif") {
    const auto frame = ReadGifFrame(bytes);
    return frame ? Size(frame->screenWidth, frame->screenHeight) : Size();
  }
  const auto size = ReadJpegSize(bytes);
  return size ? Size(size->width, size->height) : Size();
}

TEST(Containers, WhateverIsDecodedHasItsSizeInTheFileAndACutFileHasNone) {
  for (const std::string format : {"png", "gif", "jpeg"}) {
    for (const auto& entry : std::filesystem::directory_iterator(PARCHLET_CORPUS "/" + format)) {
      const Bytes bytes = ReadWholeFile(entry.path());
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto cut = std::span(bytes).first(i);
        const Picture rest = DecodePicture(cut);
        EXPECT_EQ(SizeInFile(format, cut), Size(rest.width, rest.height))
            << entry.path() << " cut to " << i;
        for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
          Bytes changed = bytes;
          changed[i] ^= static_cast<std::byte>(change);
          const Picture picture = DecodePicture(changed);
          EXPECT_TRUE(picture.width == 0 ||
                      SizeInFile(format, changed) == Size(picture.width, picture.height))
              << entry.path() << " changed at " << i << " by " << change;
        }
      }
    }
  }
}

}  // namespace
