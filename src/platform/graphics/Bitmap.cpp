#include "platform/graphics/Bitmap.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/gdi/DevicePixels.h"
#include "platform/image/Picture.h"
#include "platform/text/Paths.h"

namespace parchlet::graphics {

namespace {

struct Encoder {
  ImageCodecInfo info;
  PictureEncoder encoder;
};

constexpr CLSID EncoderId(std::uint32_t first) {
  return {first, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
}

constexpr std::array<Encoder, 3> kEncoders = {{
    {{EncoderId(0x557cf400), L"image/bmp"}, PictureEncoder::kBmp},
    {{EncoderId(0x557cf401), L"image/jpeg"}, PictureEncoder::kJpeg},
    {{EncoderId(0x557cf406), L"image/png"}, PictureEncoder::kPng},
}};

constexpr UINT kDescriptionsSize = kEncoders.size() * sizeof(ImageCodecInfo);

::Picture CopyPixels(HBITMAP bitmap) {
  BitmapCopy copy = CopyBitmap(bitmap);
  return {PictureFormat::kUnknown, copy.width, copy.height, std::move(copy.pixels)};
}

}  // namespace

Bitmap::Bitmap(HBITMAP bitmap, HPALETTE /*palette*/)
    : Image(std::make_shared<const ::Picture>(CopyPixels(bitmap))) {}

Status GetImageEncodersSize(UINT* count, UINT* size) {
  *count = kEncoders.size();
  *size = kDescriptionsSize;
  return Ok;
}

Status GetImageEncoders(UINT count, UINT size, ImageCodecInfo* encoders) {
  if (count != kEncoders.size() || size != kDescriptionsSize || encoders == nullptr) {
    return InvalidParameter;
  }
  std::transform(kEncoders.begin(), kEncoders.end(), encoders,
                 [](const Encoder& encoder) { return encoder.info; });
  return Ok;
}

Status Image::Save(const wchar_t* path, const CLSID* encoder,
                   const EncoderParameters* /*parameters*/) {
  const auto known = std::find_if(kEncoders.begin(), kEncoders.end(), [=](const Encoder& each) {
    return encoder != nullptr && each.info.Clsid == *encoder;
  });
  if (path == nullptr || picture->width == 0 || known == kEncoders.end()) {
    lastStatus = InvalidParameter;
    return InvalidParameter;
  }
  const PictureView view = {picture->pixels.data(), picture->width, picture->height,
                            static_cast<std::ptrdiff_t>(picture->width) * 4};
  const Status status = ::SavePicture(view, known->encoder, NativePath(path)) ? Ok : Win32Error;
  lastStatus = status != Ok ? status : lastStatus;
  return status;
}

}  // namespace parchlet::graphics
