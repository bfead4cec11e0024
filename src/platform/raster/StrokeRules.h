// The rules of a stroke that all stages agree on, scalar or vector: pens, mitres, and how far ink
// reaches from the points of a line.
//
// A joint's turn is the angle between its two segments: 0 where the stroke goes straight on. Code
// keeps it as 1 + cos(turn), which runs from 2 (straight on) to 0 (straight back).
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/raster/Geometry.h"

namespace raster {

// Pens outside this range look like the nearest one within it.
inline constexpr float kThinnestPen = 1;
inline constexpr float kWidestPen = 30;

// NaN counts as the thinnest pen.
inline float ClampPenWidth(float penWidth) {
  return std::isnan(penWidth) ? kThinnestPen : std::clamp(penWidth, kThinnestPen, kWidestPen);
}

// From this half width on, no pixel reaches past both edges of a stroke.
inline constexpr float kThickHalfWidth = 0.75F;

// A mitre's tip lies at most this many half widths from its joint; past that the joint is bevelled.
inline constexpr float kMitreLimit = 10;
// The same as 1 + cos(turn) = 2 cos^2(turn / 2), where the tip lies 1 / cos(turn / 2) half widths
// from the joint.
inline constexpr float kMitreLimitTurn = 2 / (kMitreLimit * kMitreLimit);

// 1 + cos(turn) of the sharpest turn that a seam may divide: a right angle, where the seam's inner
// corner lies a half width back along either segment. Boxes stay small.
inline constexpr float kSharpTurn = 1;

// How far outside its ideal edge a piece may tint a pixel: distance from edge to pixel centre.
inline constexpr float kFringe = 0.8F;
// The fringe in whole pixels, with room for rounding.
inline constexpr int kFringePixels = 2;

// How many pixels ink may reach past the box of a line's points. Without a sharp turn, no mitre is
// longer than 1.5 half widths.
inline int InkMargin(float penWidth, bool hasSharpTurn) {
  const float reach = hasSharpTurn ? kMitreLimit : 1.5F;
  return static_cast<int>(std::ceil(penWidth / 2 * reach)) + kFringePixels;
}

// The same for an ellipse in `box`. Where the outline bends tighter than the pen is wide, its
// joints may be as sharp as any.
inline int EllipseMargin(const PixelRect& box, float penWidth) {
  const double wide = static_cast<double>(std::max(box.Width(), box.Height())) / 2;
  const double narrow = static_cast<double>(std::min(box.Width(), box.Height())) / 2;
  return InkMargin(penWidth, narrow * narrow < 2 * penWidth * wide);
}

// Strokes are cut to the surface and this many pixels around it, the guard band. Nothing outside
// can tint the surface, not even the longest mitre of the widest pen.
inline constexpr int kGuardBand = 512;
static_assert(kGuardBand > 2 * kMitreLimit * kWidestPen / 2);

inline PixelRect GuardBand(const PixelRect& bounds) {
  return {bounds.left - kGuardBand, bounds.top - kGuardBand, bounds.right + kGuardBand,
          bounds.bottom + kGuardBand};
}

// Whether a point lies within the rectangle or on its far edges.
template <class T>
bool IsWithin(const PixelRect& rect, T x, T y) {
  return x >= rect.left && x <= rect.right && y >= rect.top && y <= rect.bottom;
}

// A long line is looked at in parts of this many segments.
inline constexpr std::size_t kPartSegments = 16;

}  // namespace raster
