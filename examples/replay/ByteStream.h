// ByteStream.h - the bytes of a picture as the stream that an annotation loads it from.
#pragma once

#include <parchlet/Platform.h>

#include "PictureFile.h"

namespace replay {

// Makes a stream over the bytes, which it keeps for as long as it lives. The caller owns the one
// reference.
IStream* MakeByteStream(PictureBytes bytes);

}  // namespace replay
