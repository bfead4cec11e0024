// A bitmap in memory and what draws on it.
#pragma once

#include "platform/Platform.h"
#include "support/Frame.h"

struct DrawnBitmap {
  DrawnBitmap(int width, int height)
      : bitmap{width, height, AllocatePixels(static_cast<std::size_t>(width) * height)},
        context{{}, &bitmap, {}},
        graphics(&context) {}

  Frame Show() {
    graphics.Flush();
    const std::uint32_t* first = bitmap.pixels.get();
    return Frame({bitmap.width,
                  bitmap.height,
                  {first, first + std::ptrdiff_t{bitmap.width} * bitmap.height}});
  }

  PixelSection bitmap;
  DeviceContext context;
  Gdiplus::Graphics graphics;
};
