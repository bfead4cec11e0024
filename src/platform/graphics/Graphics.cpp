#include "platform/graphics/Graphics.h"

#include "platform/graphics/Painter.h"
#include "platform/image/Picture.h"

namespace Gdiplus {

Graphics::Graphics(HDC dc) : painter(std::make_unique<Painter>(GetPixels(dc))) {
  if (!painter->IsUsable()) {
    painter.reset();
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
  painter->Clear(color.GetValue());
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
  Outline& outline = painter->BeginStroke(pen->Width());
  for (INT i = 0; i < count; ++i) {
    outline.Add({static_cast<double>(points[i].X), static_cast<double>(points[i].Y)});
  }
  return Keep(painter->Stroke(pen->Argb(), pen->Width(), closed));
}

Status Graphics::DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height) {
  if (painter == nullptr || pen == nullptr || width < 0 || height < 0) {
    return Keep(InvalidParameter);
  }
  const double left = x;
  const double top = y;
  const double right = left + width;
  const double bottom = top + height;
  Outline& outline = painter->BeginStroke(pen->Width());
  outline.Add({left, top});
  outline.Add({right, top});
  outline.Add({right, bottom});
  outline.Add({left, bottom});
  return Keep(painter->Stroke(pen->Argb(), pen->Width(), true));
}

Status Graphics::DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height) {
  if (painter == nullptr || pen == nullptr || width < 0 || height < 0) {
    return Keep(InvalidParameter);
  }
  const double radiusX = width / 2.0;
  const double radiusY = height / 2.0;
  painter->BeginStroke(pen->Width()).AddEllipse({x + radiusX, y + radiusY}, radiusX, radiusY);
  return Keep(painter->Stroke(pen->Argb(), pen->Width(), true));
}

Status Graphics::FillRectangle(const SolidBrush* brush, INT x, INT y, INT width, INT height) {
  if (painter == nullptr || brush == nullptr) {
    return Keep(InvalidParameter);
  }
  return Keep(painter->FillRectangle(brush->Argb(), Rect(x, y, width, height)));
}

Status Graphics::DrawImage(Image* image, const Rect& destination, INT sourceX, INT sourceY,
                           INT sourceWidth, INT sourceHeight, Unit unit) {
  if (painter == nullptr || image == nullptr || unit != UnitPixel || image->Pixels().width == 0) {
    return Keep(InvalidParameter);
  }
  painter->DrawPicture(image->Pixels(), Rect(sourceX, sourceY, sourceWidth, sourceHeight),
                       destination);
  return Ok;
}

}  // namespace Gdiplus
