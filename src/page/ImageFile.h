#pragma once

#include <string>

#include "platform/Platform.h"

// The MIME type that goes with a path's extension, compared exactly: ".jpg", ".bmp", or PNG for any
// other and for none.
std::wstring GetImageMimeType(const std::wstring& path);

// Writes the identifier of the first encoder of that MIME type; false when there is none.
bool GetEncoderClsid(const std::wstring& mimeType, CLSID* clsid);
