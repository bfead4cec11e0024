#include "page/DibSection.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

DibSection::~DibSection() {
  Release();
}

int DibSection::Create(HDC dc, int width, int height, int bitsPerPixel, bool bottomUp) {
  if (width < 1 || bitsPerPixel < 1) {
    return 0;
  }
  Release();
  BITMAPINFOHEADER& info = header.bmiHeader;
  info.biSize = sizeof(BITMAPINFOHEADER);
  info.biWidth = width;
  const int rows = -std::abs(std::max(height, -INT32_MAX));  // the lowest number has no opposite
  info.biHeight = bottomUp ? -rows : rows;
  info.biPlanes = 1;
  info.biBitCount = static_cast<WORD>(bitsPerPixel);
  info.biCompression = BI_RGB;
  bitmap = CreateDIBSection(dc, &header, DIB_RGB_COLORS, &bits, nullptr, 0);
  return bitmap != nullptr ? 1 : 0;
}

void DibSection::Release() {
  header = BITMAPINFO{};
  if (bitmap != nullptr) {
    DeleteObject(bitmap);
  }
  bitmap = nullptr;
  bits = nullptr;
}

void DibSection::Swap(DibSection& other) {
  std::swap(header, other.header);
  std::swap(bitmap, other.bitmap);
  std::swap(bits, other.bits);
}

int DibSection::GetWidth() const {
  return header.bmiHeader.biWidth;
}

int DibSection::GetHeight() const {
  return std::abs(header.bmiHeader.biHeight);
}
