// Stretching a picture onto a surface.
#pragma once

#include "platform/gdi/Gdi.h"
#include "platform/image/Picture.h"

// Pixels left .. right-1, top .. bottom-1.
struct PixelArea {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  bool IsEmpty() const { return left >= right || top >= bottom; }
};

struct PixelBox {
  int x;
  int y;
  int width;
  int height;
};

// The part of a box that lies on the surface; empty for a box without an extent.
PixelArea ClipToSurface(int x, int y, int width, int height, const PixelView& surface);

// Blends the part `source` of the picture, stretched bilinearly into `destination`, over the pixels
// of `shown`, which lies on the surface and within the destination. Nothing for a part that is
// empty or reaches over the picture's edge.
void StretchPicture(const Picture& picture, const PixelBox& source, const PixelBox& destination,
                    const PixelArea& shown, const PixelView& surface);
