#pragma once

#include <cstddef>
#include <span>

#include "platform/image/BmpHeader.h"
#include "platform/image/Picture.h"

// Unpacks the run-length packed pixels `packed` into `picture`, which has its full size. Pixels
// that no run covers stay as they are; runs past an edge are cut. Returns false if the end mark
// is missing.
bool UnpackBmpRuns(const BmpHeader& header, std::span<const std::byte> packed, Picture& picture);
