// What a frame is made of: one drawing call each, its points kept beside the list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/graphics/raster/Geometry.h"
#include "platform/image/Picture.h"

namespace canvas {

enum class Shape : std::uint8_t { kPolyline, kPolygon, kEllipse, kFill, kPicture };

struct Box {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;

  friend bool operator==(const Box&, const Box&) = default;
};

struct Command {
  Shape shape = Shape::kPolyline;
  std::uint32_t argb = 0;  // not premultiplied
  float penWidth = 1;
  Box box;                     // of everything but lines: where it is drawn
  std::size_t firstPoint = 0;  // of lines: their points in the frame's list
  std::size_t pointCount = 0;
  std::size_t firstPart = 0;  // and their parts
  std::size_t partCount = 0;
  bool isNear = false;  // the parts tell where its ink is
  Box part;             // of a picture: what of it is drawn
  std::shared_ptr<const Picture> picture;
  raster::PixelRect reach;  // no pixel outside is touched
};

}  // namespace canvas
