// The decoders behind DecodePicture, one for each format. Each returns a picture of 0 x 0 pixels if
// the file is damaged, cut or over the limits, which are checked before anything is decoded. They
// print nothing and keep no state.
#pragma once

#include <cstddef>
#include <span>

#include "platform/image/Picture.h"

// Every colour type, depth and interlacing.
Picture DecodePng(std::span<const std::byte> bytes);
// Greyscale, colour and the four-channel kinds of print; sequential and progressive.
Picture DecodeJpeg(std::span<const std::byte> bytes);
// The first frame, placed on the file's screen; what no frame covers is transparent.
Picture DecodeGif(std::span<const std::byte> bytes);
// 1 to 32 bits a pixel, run-length packed or not, bottom-up and top-down.
Picture DecodeBmp(std::span<const std::byte> bytes);
