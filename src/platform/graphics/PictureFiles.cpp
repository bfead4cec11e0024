#include "platform/PictureFiles.h"

std::unique_ptr<Gdiplus::Image> LoadPictureFile(const std::wstring& path) {
  return std::make_unique<Gdiplus::Image>(path.c_str());
}

bool SaveBitmap(HBITMAP bitmap, int width, int height, const std::wstring& path,
                const CLSID& encoder) {
  if (width < 1 || height < 1) {
    return false;
  }
  Gdiplus::Bitmap picture(bitmap, nullptr);
  // A copy at full size, so that encoding does not depend on the section.
  const std::unique_ptr<Gdiplus::Image> copy(picture.GetThumbnailImage(
      static_cast<UINT>(width), static_cast<UINT>(height), nullptr, nullptr));
  return copy != nullptr && copy->Save(path.c_str(), &encoder, nullptr) == Gdiplus::Ok;
}
