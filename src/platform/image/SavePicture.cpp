#include "platform/image/Encoders.h"

namespace {

bool Encode(const PictureView& view, PictureEncoder encoder, ReplacingFile& file) {
  switch (encoder) {
    case PictureEncoder::kPng:
      return EncodePng(view, file);
    case PictureEncoder::kJpeg:
      return EncodeJpeg(view, file);
    case PictureEncoder::kBmp:
      break;
  }
  return EncodeBmp(view, file);
}

}  // namespace

bool SavePicture(const PictureView& view, PictureEncoder encoder, const std::string& path) {
  if (view.pixels == nullptr || view.width < 1 || view.height < 1) {
    return false;
  }
  ReplacingFile file(path);
  return file.IsOpen() && Encode(view, encoder, file) && file.Commit();
}
