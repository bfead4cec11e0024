// Device contexts and the pixel sections selected into them.
#pragma once

#include <cstdint>
#include <vector>

#include <parchlet/Platform.h>

#include "platform/gdi/PixelView.h"

inline constexpr DWORD BI_RGB = 0;
inline constexpr UINT DIB_RGB_COLORS = 0;

struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth;
  LONG biHeight;
  WORD biPlanes;
  WORD biBitCount;
  DWORD biCompression;
  DWORD biSizeImage;
  LONG biXPelsPerMeter;
  LONG biYPelsPerMeter;
  DWORD biClrUsed;
  DWORD biClrImportant;
};

struct RGBQUAD {
  BYTE rgbBlue;
  BYTE rgbGreen;
  BYTE rgbRed;
  BYTE rgbReserved;
};

struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};

// A pixel section. The maker deletes it with DeleteObject, not while it is selected.
struct PixelSection {
  int width = 0;
  int height = 0;
  PixelMemory pixels;
  std::uint64_t serial = 0;        // no other section has it
  std::uint64_t version = 0;       // grows whenever pixels change
  std::vector<RECT> changed = {};  // these may differ from the version before

  // Starts a new version. Whoever writes pixels lists the areas in `changed`.
  void BeginChange() {
    ++version;
    changed.clear();
  }
};
using HBITMAP = PixelSection*;
using HGDIOBJ = void*;
using HPALETTE = struct PaletteHandle*;

// A device context. A memory context draws on the bitmap selected into it. A window's context only
// proves that the window exists. A display's context is a source for BitBlt.
struct DeviceContext {
  PixelSection initial;  // a memory context's first selection, which has no pixels
  HBITMAP selected = nullptr;
  RECT displayArea = {};  // a display's place on the screen; empty for the other contexts
};
using HDC = DeviceContext*;

// Returns whether surfaces and frames may have this size: 1 to 32767 pixels a side, at most 1 GiB.
bool IsUsableSize(std::int64_t width, std::int64_t height);

// Returns a new memory context; null for a null `dc`. The caller ends it with DeleteDC.
HDC CreateCompatibleDC(HDC dc);
BOOL DeleteDC(HDC dc);

// Selects a bitmap and returns the one selected before.
HGDIOBJ SelectObject(HDC dc, HGDIOBJ bitmap);
BOOL DeleteObject(HGDIOBJ bitmap);

// Makes a zeroed section, 32 bits a pixel, top-down, and stores its memory in `*bits`. Returns
// null, with null bits, for any other format, for a size that is not usable, and if memory runs
// out. `section` is null and `offset` 0.
HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, void* section,
                         DWORD offset);

// Makes a zeroed bitmap, 32 bits a pixel. Returns null for a null `dc`, for a size that is not
// usable, and if memory runs out.
HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height);

// Returns the pixels that drawing on `dc` writes; an empty view for a context without pixels.
PixelView GetPixels(HDC dc);
