// The classes that the engine draws with, as much of each as it calls. Each keeps the status of its
// last failed call; nothing throws but std::bad_alloc.
//
// Pixel rules: integer coordinates of a stroke name pixel centres; a filled rectangle (x, y, w, h)
// covers exactly the pixels x .. x+w-1, y .. y+h-1. Flat caps, mitred joins with limit 10 (bevelled
// past it), coverage anti-aliasing, source-over. A stroke all of whose points fall on one pixel is
// a dot: a disc of the pen's width. Every coordinate, size and count is legal input.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/System.h"

struct Picture;

namespace parchlet::graphics {

using ARGB = std::uint32_t;
using REAL = float;

enum Status {
  Ok = 0,
  GenericError = 1,
  InvalidParameter = 2,
  OutOfMemory = 3,
  Win32Error = 7,
  FontFamilyNotFound = 14
};
enum Unit { UnitWorld = 0, UnitPixel = 2 };
enum SmoothingMode { SmoothingModeAntiAlias = 4 };
enum FlushIntention { FlushIntentionFlush = 0, FlushIntentionSync = 1 };

class Color {
 public:
  explicit Color(ARGB argb) : argb(argb) {}
  ARGB GetValue() const { return argb; }

 private:
  ARGB argb;
};

class Point {
 public:
  Point() = default;
  Point(INT x, INT y) : X(x), Y(y) {}
  INT X = 0;
  INT Y = 0;
};

struct Rect {
  Rect(INT x, INT y, INT width, INT height) : X(x), Y(y), Width(width), Height(height) {}
  INT X, Y, Width, Height;
};

struct RectF {
  RectF(REAL x, REAL y, REAL width, REAL height) : X(x), Y(y), Width(width), Height(height) {}
  REAL X, Y, Width, Height;
};

class Pen {
 public:
  explicit Pen(const Color& color, REAL width = 1.0F) : color(color), width(width) {}
  ARGB Argb() const { return color.GetValue(); }
  REAL Width() const { return width; }

 private:
  Color color;
  REAL width;
};

class SolidBrush {
 public:
  explicit SolidBrush(const Color& color) : color(color) {}
  ARGB Argb() const { return color.GetValue(); }

 private:
  Color color;
};

class EncoderParameters;

// Would be asked whether to cancel a thumbnail in progress; never called.
using GetThumbnailImageAbort = BOOL (*)(void* data);
class Font;
class StringFormat;

// A picture loaded from a file or a stream. One that could not be loaded has a failed status and
// the size 0 x 0, and draws nothing.
class Image {
 public:
  explicit Image(const wchar_t* path);
  // Reads the stream from its present position to its end; keeps no reference.
  explicit Image(IStream* stream);
  ~Image();
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  UINT GetWidth();
  UINT GetHeight();
  // Writes the identifier of the format that the picture was stored in.
  Status GetRawFormat(GUID* format);
  // Returns a new image of that size, for the caller to delete; null unless the size is the image's
  // own. It is a copy that shares the pixels, which never change. `abort` and `data` are null.
  Image* GetThumbnailImage(UINT width, UINT height, GetThumbnailImageAbort abort, void* data);
  // Writes the image to a file with the encoder of that identifier; see GetImageEncoders. A failure
  // leaves an existing file as it was and nothing else behind. `parameters` is null.
  Status Save(const wchar_t* path, const GUID* encoder,
              const EncoderParameters* parameters = nullptr);
  Status GetLastStatus();

  const ::Picture& Pixels() const { return *picture; }
  std::shared_ptr<const ::Picture> SharedPixels() const { return picture; }

 protected:
  explicit Image(std::shared_ptr<const ::Picture> picture);

 private:
  std::shared_ptr<const ::Picture> picture;
  Status lastStatus = Ok;
};

// Draws on the bitmap selected into a device context. The bitmap must outlive it. Drawing reaches
// the bitmap's pixels with a Flush, not before.
class Graphics {
 public:
  explicit Graphics(HDC dc);
  ~Graphics();
  Graphics(const Graphics&) = delete;
  Graphics& operator=(const Graphics&) = delete;

  Status SetSmoothingMode(SmoothingMode mode);
  Status Clear(const Color& color);
  Status DrawLine(const Pen* pen, INT x1, INT y1, INT x2, INT y2);
  Status DrawLines(const Pen* pen, const Point* points, INT count);
  Status DrawPolygon(const Pen* pen, const Point* points, INT count);
  Status DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height);
  Status DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height);
  Status FillRectangle(const SolidBrush* brush, INT x, INT y, INT width, INT height);
  // Stretches the source rectangle, in pixels, into `destination`.
  Status DrawImage(Image* image, const Rect& destination, INT sourceX, INT sourceY, INT sourceWidth,
                   INT sourceHeight, Unit unit);
  // Draws zero-terminated UTF-16 text from `area`'s top left corner. `length` is -1 and the area's
  // extent 0 x 0: the text is neither wrapped nor clipped. Returns InvalidParameter and draws
  // nothing if the font is not available.
  Status DrawString(const wchar_t* text, INT length, const Font* font, const RectF& area,
                    const StringFormat* format, const SolidBrush* brush);
  // Completes all drawing before it returns, with either intention.
  void Flush(FlushIntention intention = FlushIntentionFlush);
  // Returns the status of the last failed call and resets it to Ok.
  Status GetLastStatus();

 private:
  class Painter;

  Status Keep(Status status);
  Status StrokePoints(const Pen* pen, const Point* points, INT count, bool closed);

  std::unique_ptr<Painter> painter;
  Status lastStatus = Ok;
};

}  // namespace parchlet::graphics
