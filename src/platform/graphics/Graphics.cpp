#include "platform/graphics/Graphics.h"

#include <span>
#include <type_traits>

#include "platform/graphics/Painter.h"
#include "platform/image/Picture.h"

namespace parchlet::graphics {

namespace {

using raster::PixelRect;

std::span<const raster::GridPoint> AsGridPoints(const Point* points, INT count) {
  static_assert(sizeof(Point) == sizeof(raster::GridPoint) && std::is_standard_layout_v<Point>);
  return {reinterpret_cast<const raster::GridPoint*>(points), static_cast<std::size_t>(count)};
}

}  // namespace

Graphics::Graphics(HDC dc) {
  const DevicePixels pixels(dc);
  if (pixels.View().pixels != nullptr) {
    painter = std::make_unique<Painter>(pixels);
  } else {
    lastStatus = InvalidParameter;
  }
}

Graphics::~Graphics() = default;

Status Graphics::Keep(Status status) {
  if (status != Ok) {
    lastStatus = status;
  }
  return status;
}

Status Graphics::GetLastStatus() {
  const Status status = lastStatus;
  lastStatus = Ok;
  return status;
}

Status Graphics::SetSmoothingMode(SmoothingMode mode) {
  return Keep(painter != nullptr && mode == SmoothingModeAntiAlias ? Ok : InvalidParameter);
}

Status Graphics::Clear(const Color& color) {
  if (painter == nullptr) {
    return Keep(InvalidParameter);
  }
  painter->Commands().Clear(color.GetValue());
  return Ok;
}

Status Graphics::DrawLine(const Pen* pen, INT x1, INT y1, INT x2, INT y2) {
  const Point ends[] = {{x1, y1}, {x2, y2}};
  return DrawLines(pen, ends, 2);
}

Status Graphics::DrawLines(const Pen* pen, const Point* points, INT count) {
  return StrokePoints(pen, points, count, false);
}

Status Graphics::DrawPolygon(const Pen* pen, const Point* points, INT count) {
  return StrokePoints(pen, points, count, true);
}

Status Graphics::StrokePoints(const Pen* pen, const Point* points, INT count, bool closed) {
  if (painter == nullptr || pen == nullptr || points == nullptr || count < 2) {
    return Keep(InvalidParameter);
  }
  painter->Commands().Stroke(AsGridPoints(points, count), closed, pen->Width(), pen->Argb());
  return Ok;
}

Status Graphics::DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height) {
  if (painter == nullptr || pen == nullptr || width < 0 || height < 0) {
    return Keep(InvalidParameter);
  }
  const PixelRect box = PixelRect::OfSize(x, y, width, height);
  const Point corners[] = {{x, y}, {box.right, y}, {box.right, box.bottom}, {x, box.bottom}};
  // Without an extent it is a line, not a line there and back.
  const bool flat = width == 0 || height == 0;
  return flat ? DrawLine(pen, x, y, box.right, box.bottom) : StrokePoints(pen, corners, 4, true);
}

Status Graphics::DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height) {
  if (painter == nullptr || pen == nullptr || width < 0 || height < 0) {
    return Keep(InvalidParameter);
  }
  painter->Commands().StrokeEllipse(PixelRect::OfSize(x, y, width, height), pen->Width(),
                                    pen->Argb());
  return Ok;
}

Status Graphics::FillRectangle(const SolidBrush* brush, INT x, INT y, INT width, INT height) {
  if (painter == nullptr || brush == nullptr) {
    return Keep(InvalidParameter);
  }
  painter->Commands().Fill(PixelRect::OfSize(x, y, width, height), brush->Argb());
  return Ok;
}

Status Graphics::DrawImage(Image* image, const Rect& destination, INT sourceX, INT sourceY,
                           INT sourceWidth, INT sourceHeight, Unit unit) {
  if (painter == nullptr || image == nullptr || unit != UnitPixel || image->Pixels().width == 0) {
    return Keep(InvalidParameter);
  }
  painter->DrawPicture(
      image->SharedPixels(), PixelRect::OfSize(sourceX, sourceY, sourceWidth, sourceHeight),
      PixelRect::OfSize(destination.X, destination.Y, destination.Width, destination.Height));
  return Ok;
}

void Graphics::Flush(FlushIntention /*intention*/) {
  if (painter != nullptr) {
    painter->Flush();
  }
}

}  // namespace parchlet::graphics
