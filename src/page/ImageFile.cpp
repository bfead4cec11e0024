#include "page/ImageFile.h"

#include <vector>

std::wstring GetImageMimeType(const std::wstring& path) {
  const std::size_t dot = path.rfind(L'.');
  const std::wstring extension = dot == std::wstring::npos ? std::wstring() : path.substr(dot);
  if (extension == L".jpg") {
    return L"image/jpeg";
  }
  return extension == L".bmp" ? L"image/bmp" : L"image/png";
}

bool GetEncoderClsid(const std::wstring& mimeType, CLSID* clsid) {
  UINT count = 0;
  UINT size = 0;
  Gdiplus::GetImageEncodersSize(&count, &size);
  // The descriptions stand at the front of the block; what they point at may follow them.
  std::vector<Gdiplus::ImageCodecInfo> encoders(size / sizeof(Gdiplus::ImageCodecInfo) + 1);
  Gdiplus::GetImageEncoders(count, size, encoders.data());
  for (UINT i = 0; i < count; ++i) {
    if (mimeType == encoders[i].MimeType) {
      *clsid = encoders[i].Clsid;
      return true;
    }
  }
  return false;
}
