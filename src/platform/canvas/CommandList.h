// The drawing calls of a frame, recorded, and what was measured of each.
//
// A frame usually starts like the one before it. The commands of that frame stay in place behind
// the recorded ones until they are overwritten: a call that is equal to the next of them takes it
// over with all that was measured of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/canvas/LinePart.h"
#include "platform/raster/Geometry.h"

namespace canvas {

enum class Shape : std::uint8_t { kPolyline, kPolygon, kEllipse, kFill, kPicture };

// A picture and who keeps its pixels alive. They never change: the same owner means the same
// pixels.
struct SharedPicture {
  std::shared_ptr<const void> owner;
  raster::PixelSource view;
};

struct Style {
  Shape shape = Shape::kPolyline;
  std::uint32_t argb = 0;  // not premultiplied; 0 for pictures
  float penWidth = 1;      // 1 for what is not stroked

  friend bool operator==(const Style&, const Style&) = default;
};

// One recorded call. What the next frame compares comes first.
struct Command {
  Style style;
  raster::PixelRect box;     // of everything but lines: where it is drawn
  raster::PixelRect source;  // of a picture: what of it is drawn
  SharedPicture picture;
  std::size_t pointCount = 0;  // of lines
  std::size_t firstPoint = 0;  // in the list
  std::size_t firstPart = 0;
  std::size_t partCount = 0;
  bool isNear = false;       // the line lies within the guard band, so that the parts hold its ink
  raster::PixelRect bounds;  // no pixel outside is touched
};

// Owned by one Canvas. Memory is kept from frame to frame. When it runs out, std::bad_alloc; the
// list is then a frame without that command, and does not count as a repetition.
class CommandList {
 public:
  // For a surface of that size.
  CommandList(int width, int height) : page{0, 0, width, height} {}

  // Starts the frame over: it begins with all pixels set to that colour.
  void Clear(std::uint32_t argb);
  void Stroke(std::span<const raster::GridPoint> line, bool closed, float penWidth,
              std::uint32_t argb);
  void StrokeEllipse(const raster::PixelRect& box, float penWidth, std::uint32_t argb);
  void Fill(const raster::PixelRect& rect, std::uint32_t argb);
  // Stretches `source`, a rectangle of the picture, into `destination`. Draws nothing if it reaches
  // over the picture's edge.
  void DrawPicture(const SharedPicture& picture, const raster::PixelRect& source,
                   const raster::PixelRect& destination);

  // Ends the frame: the next call starts another one, which lies on top of it unless it is a Clear.
  // Returns false if the frame had ended already.
  bool End();

  // Whether the frame is the one that is shown, command by command; the clear colour may differ.
  bool RepeatsShown() const { return repeatsShown; }
  // Tells the list whether the surface shows its frame. One without a Clear is never repeated.
  void SetShown(bool isShown) { repeatsShown = isShown && isCleared; }

  bool IsCleared() const { return isCleared; }
  std::uint32_t ClearColor() const { return clearColor; }
  std::span<const Command> Commands() const { return {commands.data(), used}; }
  std::span<const raster::GridPoint> PointsOf(const Command& command) const {
    return {points.data() + command.firstPoint, command.pointCount};
  }
  // What each part of a line may touch, and the hash of what it looks like.
  std::span<const raster::PixelRect> PartBoundsOf(const Command& command) const {
    return {partBounds.data() + command.firstPart, command.partCount};
  }
  std::span<const std::uint64_t> PartHashesOf(const Command& command) const {
    return {partHashes.data() + command.firstPart, command.partCount};
  }

 private:
  void Rewind();
  void BeginCommand();
  const Command* NextOld(const Style& style) const;
  void DropRest();
  void Advance();
  void AddBox(const Style& style, const raster::PixelRect& box);
  raster::PixelRect BoundsOf(const raster::PixelRect& edges, int margin) const;
  void MeasureLine(Command& command);

  raster::PixelRect page;
  // The recorded commands are the first `used` ones, with the first `usedPoints` points and
  // `usedParts` parts; those of the frame before follow.
  std::vector<Command> commands;
  std::vector<raster::GridPoint> points;
  std::vector<raster::PixelRect> partBounds;
  std::vector<std::uint64_t> partHashes;
  std::size_t used = 0;
  std::size_t usedPoints = 0;
  std::size_t usedParts = 0;
  std::vector<LinePart> lineParts;  // of the line that is being measured
  // The pictures of the frames since the last Clear but one: they live on while this frame is
  // recorded, so that a new picture never has the address of one that is shown.
  std::vector<std::shared_ptr<const void>> pictures;
  std::uint32_t clearColor = 0;
  bool isCleared = false;     // the frame starts from a Clear
  bool hasEnded = false;      // the next command starts a new frame
  bool repeatsShown = false;  // all commands, used or not, are the frame that is shown
};

}  // namespace canvas
