// Pictures of the painter's that come from files and go to files.
#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"

// Loads the picture of a regular file, which is closed again when this returns. The image of
// anything else has no size. Throws std::bad_alloc.
std::unique_ptr<Gdiplus::Image> LoadPictureFile(const std::wstring& path);

// Encodes the bitmap, which has that size and may be selected into a context, into the file; alpha
// is kept as far as the format has it. A file that stands there is replaced whole or not at all.
// False for an empty size, or when the picture cannot be made or written.
bool SaveBitmap(HBITMAP bitmap, int width, int height, const std::wstring& path,
                const CLSID& encoder);
