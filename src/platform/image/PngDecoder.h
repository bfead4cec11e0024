#pragma once

#include <cstddef>
#include <span>

#include "platform/image/Picture.h"

// Decodes a PNG file of any colour type, depth and interlacing. A picture of size 0 x 0 when it is
// damaged, cut or over the limits. Silent.
Picture DecodePng(std::span<const std::byte> bytes);
