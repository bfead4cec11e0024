#pragma once

#include <string>

#include "platform/Platform.h"

// The MIME type that goes with a path's extension, compared exactly: ".jpg", ".bmp", or PNG for any
// other and for none.
std::wstring GetImageMimeType(const std::wstring& path);

// Writes the identifier of the first encoder of that MIME type; false when there is none.
bool GetEncoderClsid(const std::wstring& mimeType, CLSID* clsid);

// Encodes the bitmap, which has that size, into the file. False for an empty size, or when the
// picture cannot be made or written.
bool SaveBitmap(HBITMAP bitmap, int width, int height, const std::wstring& path,
                const CLSID& encoder);
