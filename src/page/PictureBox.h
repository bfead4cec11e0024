#pragma once

#include <cstdint>

// Where a picture lies on a page, in surface pixels.
struct PictureBox {
  std::int32_t x;
  std::int32_t y;
  std::int32_t width;
  std::int32_t height;
};
