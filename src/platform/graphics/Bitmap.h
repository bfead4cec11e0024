// Pictures made of pixels in memory, and the encoders that write pictures to files.
#pragma once

#include "platform/graphics/Graphics.h"

namespace parchlet::graphics {

// A picture made of a pixel section. It holds a copy of the pixels, alpha included.
class Bitmap : public Image {
 public:
  // `palette` is null. InvalidParameter for a section without pixels.
  Bitmap(HBITMAP bitmap, HPALETTE palette);
};

// The description of an encoder.
struct ImageCodecInfo {
  CLSID Clsid;
  const wchar_t* MimeType;  // static
};

// Writes how many encoders there are and how many bytes their descriptions take.
Status GetImageEncodersSize(UINT* count, UINT* size);
// Writes the descriptions; `count` and `size` as GetImageEncodersSize writes them.
Status GetImageEncoders(UINT count, UINT size, ImageCodecInfo* encoders);

}  // namespace parchlet::graphics
