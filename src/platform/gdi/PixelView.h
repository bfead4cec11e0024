// Pixels in memory, whoever owns them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

// A view of pixels: premultiplied 0xAARRGGBB, rows top-down, no gap between rows.
struct PixelView {
  std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;

  std::ptrdiff_t StrideBytes() const { return static_cast<std::ptrdiff_t>(width) * 4; }
};

// Pixels start on a cache line, so that the painter's vectors cross as few lines as they can.
inline constexpr std::align_val_t kPixelAlignment{64};
struct FreePixels {
  void operator()(std::uint32_t* pixels) const { operator delete[](pixels, kPixelAlignment); }
};
using PixelMemory = std::unique_ptr<std::uint32_t[], FreePixels>;

// Returns zeroed pixels; null if memory runs out.
PixelMemory AllocatePixels(std::size_t count);
